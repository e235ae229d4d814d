// SPDX-License-Identifier: Apache-2.0
#include "app/RenderCommand.h"

#include <limits>
#include <optional>

#include "app/CommonOptions.h"
#include "app/DumpFolder.h"
#include "app/Failure.h"
#include "app/InputFile.h"
#include "app/JavaFailure.h"
#include "app/OutputFile.h"
#include "app/PictureFormat.h"
#include "app/StandardInput.h"
#include "host/LocalFrame.h"

namespace chartbridge {

namespace {

// A direct buffer counts its bytes in a Java int.
constexpr std::size_t kLargestData = std::numeric_limits<jint>::max();

constexpr const char* kExamples =
    "Examples:\n"
    "  chartbridge render sales.gpl --data sales.csv -o sales.png\n"
    "  chartbridge render sales.gpl -d sales.csv -o sales.png --size 200 --locale de-DE\n"
    "  chartbridge render sales.gpl -d sales.csv -o sales.png --map\n"
    "  generate-data | chartbridge render sales.gpl -d - -o - --type svg > sales.svg";

std::string TextOf(const std::string& path) { return path.empty() ? "" : InputFile(path).Text(); }

/// Starts the editor for the scope, outside of every local frame: its Java object must outlive
/// them.
class EditorSession {
 public:
  explicit EditorSession(JNIEnv* env) { ViZEditor::GetInstance()->StartEditorHeadless(env); }
  ~EditorSession() { ViZEditor::GetInstance()->StopHeadless(); }

  EditorSession(const EditorSession&) = delete;
  EditorSession& operator=(const EditorSession&) = delete;
};

}  // namespace

RenderCommand::RenderCommand(CLI::App& app)
    : _command(app.add_subcommand("render", "Draw a chart from its description and its data")) {
  _command
      ->add_option("chart", _chart,
                   "The chart, in the graph language or as chart XML; - is standard input")
      ->type_name("CHART")
      ->required();
  _command->add_option("-d,--data", _data, "The data, a CSV file in UTF-8; - is standard input")
      ->type_name("FILE")
      ->required();
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
  _command->add_flag("-m,--map", _map,
                     "Also write an image map with a tooltip for each mark: beside sales.png, "
                     "sales.html and sales.json");
  AddJavaOptions(*_command, _java);
  _command->footer(kExamples);
}

void RenderCommand::Run() {
  CheckUsage();
  const OutputFile output(_output, true);
  if (_map && !output.IsReplaceable()) throw UsageError("--map writes files; -o must name one");
  const InputFile chart(_chart);
  const InputFile data(_data);
  if (data.Size() > kLargestData) {
    throw Failure(data.Name() + ": holds more than 2147483647 bytes, the most that Java can take");
  }
  _texts = TextOf(_textsFile);
  _styleText = TextOf(_styleFile);
  Render(chart, data, output);
}

void RenderCommand::CheckUsage() const {
  CheckStandardInput({_chart, _data, _textsFile, _styleFile});
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

void RenderCommand::Render(const InputFile& chart, const InputFile& data,
                           const OutputFile& output) const {
  const DumpFolder dumps;
  const JavaMachine java(_java);
  const EditorSession editor(java.Env());
  JavaFailure::ThrowIfNotStarted(dumps.NewRecords());

  const LocalFrame frame;
  if (output.IsReplaceable()) {
    if (!RenderToFile(chart, data, output)) FailWithReason(dumps, chart, data);
    return;
  }
  std::string picture;
  if (!RenderToMemory(chart, data, picture)) FailWithReason(dumps, chart, data);
  output.Write(picture);
}

bool RenderCommand::RenderToFile(const InputFile& chart, const InputFile& data,
                                 const OutputFile& output) const {
  // The flag asks for an image map without tooltips.
  return ViZEditor::GetInstance()->RenderToFileHeadless(chart.Text(), data.Data(), data.Size(),
                                                        output.Target(), Format(), _size, _texts,
                                                        _styleText, _locale, _style, false);
}

bool RenderCommand::RenderToMemory(const InputFile& chart, const InputFile& data,
                                   std::string& picture) const {
  std::string html;
  std::string json;
  return ViZEditor::GetInstance()->RenderImageToMemoryHeadless(
      chart.Text(), data.Data(), data.Size(), Format(), _size, picture, html, json, _texts,
      _styleText, _locale, _style, false);
}

std::string RenderCommand::Culprit(const JavaFailure& failure, const InputFile& chart,
                                   const InputFile& data) const {
  // Java got bytes and knows no file names; which of the inputs it was reading is in the stack.
  if (failure.PassedThrough("org.chartbridge.data.CsvReader.")) return data.Name();
  if (failure.PassedThrough("org.chartbridge.draw.Style.parse") && !_styleFile.empty()) {
    return _styleFile;
  }
  if (failure.PassedThrough("org.chartbridge.draw.Style.named") && !_style.empty()) {
    return "--style";
  }
  if (failure.PassedThrough("org.chartbridge.image.OutputFiles.")) return _output;
  if (failure.PassedThrough("com.tesk.charteditor.RenderOptions.locale")) return "--locale";
  if (failure.PassedThrough("com.tesk.charteditor.RenderOptions.messages")) return _textsFile;
  return chart.Name();
}

void RenderCommand::FailWithReason(const DumpFolder& dumps, const InputFile& chart,
                                   const InputFile& data) const {
  const auto failure = JavaFailure::First(dumps.NewRecords());
  if (!failure) throw Failure(chart.Name() + ": " + dumps.WhyEmpty());
  throw Failure(Culprit(*failure, chart, data) + ": " + failure->Reason(), failure->Stack());
}

}  // namespace chartbridge
