// SPDX-License-Identifier: Apache-2.0
#include "app/RenderCommand.h"

#include <limits>
#include <optional>
#include <regex>

#include "app/ChartEditorSession.h"
#include "app/ChartXml.h"
#include "app/CommonOptions.h"
#include "app/CurrentChart.h"
#include "app/DumpFolder.h"
#include "app/Failure.h"
#include "app/InputFile.h"
#include "app/JavaFailure.h"
#include "app/MistakePlace.h"
#include "app/OutputFile.h"
#include "app/PictureFormat.h"
#include "app/StandardInput.h"
#include "app/TemplateFile.h"
#include "host/LocalFrame.h"

namespace chartbridge {

namespace {

// A direct buffer counts its bytes in a Java int.
constexpr std::size_t kLargestData = std::numeric_limits<jint>::max();

// Of charts that have their own.
constexpr unsigned char kNoData[] = {0};

constexpr const char* kExamples =
    "Examples:\n"
    "  chartbridge render sales.gpl --data sales.csv -o sales.png\n"
    "  chartbridge render sales.gpl -d sales.csv -o sales.png --size 200 --locale de-DE\n"
    "  chartbridge render sales.gpl -d sales.csv -o sales.png --map\n"
    "  chartbridge render sales.gpl -d sales.csv -o sales.png --template corporate.xml\n"
    "  generate-data | chartbridge render sales.gpl -d - -o - --type svg > sales.svg";

std::string TextOf(const std::string& path) { return path.empty() ? "" : InputFile(path).Text(); }

}  // namespace

RenderCommand::RenderCommand(CLI::App& app)
    : _command(app.add_subcommand("render", "Draw a chart from its description and its data")) {
  _command
      ->add_option("chart", _chart,
                   "The chart, in the graph language or as chart XML; - is standard input")
      ->type_name("CHART")
      ->required();
  _command
      ->add_option("-d,--data", _data,
                   "The data, a CSV file in UTF-8; not needed for a chart that has its own; "
                   "- is standard input")
      ->type_name("FILE");
  _command
      ->add_option(
          "-o,--output", _output,
          "The picture; its ending says the format (" + FormatNames() + "); - is standard output")
      ->type_name("FILE")
      ->required();
  _command
      ->add_option("-t,--type", _type,
                   "The format, whatever the ending says; for standard output png when not given")
      ->type_name("FORMAT");
  _command->add_option("-s,--size", _size, "The size in percent of the chart's own size")
      ->type_name("PERCENT")
      ->capture_default_str();
  _command
      ->add_option("-l,--locale", _locale,
                   "The language of numbers and dates, such as de-DE or fr; English when not given")
      ->type_name("TAG");
  _command
      ->add_option("--texts", _textsFile,
                   "A properties file in UTF-8 that replaces texts of the chart (text = new text)")
      ->type_name("FILE");
  _command->add_option("--style", _style, "The name of a built-in style, such as print or dark")
      ->type_name("NAME");
  _command->add_option("--style-file", _styleFile, "A style document that changes single settings")
      ->type_name("FILE");
  _command
      ->add_option("--template", _template,
                   "A chart template to apply, instead of one that the chart names")
      ->type_name("FILE");
  AddTemplatesOption(*_command, _java);
  _command->add_flag("-m,--map", _map,
                     "Also write an image map with a tooltip for each mark: beside sales.png, "
                     "sales.html and sales.json");
  AddJavaOptions(*_command, _java);
  _command->footer(kExamples);
}

RenderCommand::~RenderCommand() = default;

void RenderCommand::Run() {
  CheckUsage();
  const OutputFile output(_output, true);
  if (_map && !output.IsReplaceable()) throw UsageError("--map writes files; -o must name one");
  Load();
  Render(output);
}

void RenderCommand::Load() {
  _chartFile = std::make_unique<InputFile>(_chart);
  if (_data.empty() && !IsChartXml(_chartFile->Text())) {
    throw UsageError("--data is required: graph language holds no data");
  }
  if (!_data.empty()) _dataFile = std::make_unique<InputFile>(_data);
  if (_dataFile != nullptr && _dataFile->Size() > kLargestData) {
    throw Failure(_dataFile->Name() +
                  ": holds more than 2147483647 bytes, the most that Java can take");
  }
  if (!_template.empty()) _templateFile = std::make_unique<TemplateFile>(_template);
  _texts = TextOf(_textsFile);
  _styleText = TextOf(_styleFile);
}

void RenderCommand::CheckUsage() const {
  CheckStandardInput({_chart, _data, _template, _textsFile, _styleFile});
  if (!(_size > 0 && _size <= 10000)) {
    throw UsageError("--size: must be more than 0 and at most 10000 percent");
  }
  if (Format() == ViZEditor::IMAGE_MAP && FormatOfPath(_output) != ViZEditor::IMAGE_PNG) {
    throw UsageError("--map goes with a PNG picture; -o must name a file that ends in .png");
  }
}

ViZEditor::IMAGE_TYPE RenderCommand::Format() const {
  if (_map) {
    if (!_type.empty() && FormatOfName(_type) != ViZEditor::IMAGE_PNG) {
      throw UsageError("--map goes with a PNG picture, not with --type " + _type);
    }
    return ViZEditor::IMAGE_MAP;
  }
  return FormatOfOutput(_output, _type);
}

void RenderCommand::Render(const OutputFile& output) const {
  const DumpFolder dumps;
  const JavaMachine java(_java);
  const std::string chart = ChartText(java.Env(), dumps);
  const ChartEditorSession editor(java.Env());
  JavaFailure::ThrowIfNotStarted(dumps.NewRecords());

  const LocalFrame frame;
  if (output.IsReplaceable()) {
    if (!RenderToFile(chart, output)) FailWithReason(java.Env(), dumps);
    return;
  }
  std::string picture;
  if (!RenderToMemory(chart, picture)) FailWithReason(java.Env(), dumps);
  output.Write(picture);
}

std::string RenderCommand::ChartText(JNIEnv* env, const DumpFolder& dumps) const {
  if (_templateFile == nullptr) return _chartFile->Text();
  return _templateFile->ApplyTo(CurrentChart(*_chartFile, env, dumps), _chartFile->Name());
}

bool RenderCommand::RenderToFile(const std::string& chart, const OutputFile& output) const {
  // Java follows links too; the page and the marks lie beside the link and are called as it is.
  const std::string& path = _map ? _output : output.Target();
  // The flag asks for an image map without tooltips.
  return ViZEditor::GetInstance()->RenderToFileHeadless(
      chart, _dataFile ? _dataFile->Data() : kNoData, _dataFile ? _dataFile->Size() : 0, path,
      Format(), _size, _texts, _styleText, _locale, _style, false);
}

bool RenderCommand::RenderToMemory(const std::string& chart, std::string& picture) const {
  std::string html;
  std::string json;
  return ViZEditor::GetInstance()->RenderImageToMemoryHeadless(
      chart, _dataFile ? _dataFile->Data() : kNoData, _dataFile ? _dataFile->Size() : 0, Format(),
      _size, picture, html, json, _texts, _styleText, _locale, _style, false);
}

std::string RenderCommand::Culprit(const JavaFailure& failure, const std::string& reason) const {
  // Java got bytes and knows no file names; which of the inputs it was reading is in the stack.
  if (failure.PassedThrough("org.chartbridge.data.CsvReader.") && _dataFile) {
    return _dataFile->Name();
  }
  // The chart names a column that the data lack.
  if (failure.PassedThrough("org.chartbridge.data.ChartData.") && _dataFile && !HasPlace(reason)) {
    return _dataFile->Name();
  }
  if (failure.PassedThrough("org.chartbridge.draw.Style.parse") && !_styleFile.empty()) {
    return _styleFile;
  }
  if (failure.PassedThrough("org.chartbridge.draw.Style.named") && !_style.empty()) {
    return "--style";
  }
  if (failure.PassedThrough("org.chartbridge.image.OutputFiles.")) return _output;
  if (failure.PassedThrough("com.tesk.charteditor.RenderOptions.locale")) return "--locale";
  if (failure.PassedThrough("com.tesk.charteditor.RenderOptions.messages")) return _textsFile;
  return _chartFile->Name();
}

void RenderCommand::FailWithReason(JNIEnv* env, const DumpFolder& dumps) const {
  const auto failure = JavaFailure::First(dumps.NewRecords());
  if (!failure) throw Failure(_chartFile->Name() + ": " + dumps.WhyEmpty());
  const bool isChartRead = failure->PassedThrough("org.chartbridge.format.ChartReader.");
  if (_templateFile != nullptr && isChartRead) FailTemplated(*failure);
  std::string reason = failure->Reason();
  if (_templateFile != nullptr) {
    reason = WithOwnPlace(reason, *_chartFile, _dataFile.get(), env, dumps);
  }
  throw Failure(Culprit(*failure, reason) + ": " + reason, failure->Stack());
}

void RenderCommand::FailTemplated(const JavaFailure& failure) const {
  // Chart and template are right each by itself. The position is one in what came of them, which
  // nobody can look at.
  static const std::regex position("^line [0-9]+, column [0-9]+: ");
  throw Failure(_chartFile->Name() + " does not go together with " + _templateFile->Name() + ": " +
                    std::regex_replace(failure.Reason(), position, ""),
                failure.Stack());
}

}  // namespace chartbridge
