// SPDX-License-Identifier: Apache-2.0
#include "app/HistogramCommand.h"

#include <regex>
#include <sstream>
#include <vector>

#include "app/ChartEditorSession.h"
#include "app/CommonOptions.h"
#include "app/DumpFolder.h"
#include "app/Failure.h"
#include "app/HistogramFile.h"
#include "app/InputFile.h"
#include "app/JavaFailure.h"
#include "app/OutputFile.h"
#include "app/StandardInput.h"
#include "host/LocalFrame.h"

namespace chartbridge {

HistogramCommand::HistogramCommand(CLI::App& app)
    : _command(app.add_subcommand("histogram", "Put a histogram behind the elements of a chart")) {
  _command
      ->add_option("chart", _chart,
                   "The chart, in the graph language or as chart XML; - is standard input")
      ->type_name("CHART")
      ->required();
  _command
      ->add_option("--values", _values,
                   "Numbers to count, one a line, into bins of equal width with round edges; "
                   "- is standard input")
      ->type_name("FILE");
  _command
      ->add_option("--bins", _bins,
                   "Counted bins as JSON, {\"edges\": [0, 5, 10], \"heights\": [12, 7]}; "
                   "- is standard input")
      ->type_name("FILE");
  _command
      ->add_option("--count", _count,
                   "The number of bins for --values; as many as suit the values when not given")
      ->type_name("N");
  _command->add_option("--fill", _fill, "The colour, such as #0072b2; #999999 when not given")
      ->type_name("COLOR");
  _command->add_option("--opacity", _opacity, "From 0 (invisible) to 1; 0.5 when not given")
      ->type_name("PART");
  _command->add_option("-o,--output", _output, "The chart XML; - is standard output")
      ->type_name("FILE")
      ->capture_default_str();
  AddJavaOptions(*_command, _java);
  _command->footer(
      "Examples:\n"
      "  chartbridge histogram density.gpl --values waiting.txt -o chart.xml\n"
      "  chartbridge histogram density.gpl --values waiting.txt --count 20 --fill '#0072b2' "
      "-o chart.xml\n"
      "  chartbridge histogram density.gpl --bins counts.json -o chart.xml");
}

void HistogramCommand::Run() {
  CheckUsage();
  const OutputFile output(_output, false);
  const InputFile chart(_chart);
  const HistogramBins bins = Bins();

  const DumpFolder dumps;
  const JavaMachine java(_java);
  const ChartEditorSession editor(java.Env());
  JavaFailure::ThrowIfNotStarted(dumps.NewRecords());

  const LocalFrame frame;
  // Edges, then heights, as the chart editor takes them: this machine's own doubles.
  std::vector<double> numbers = bins.edges;
  numbers.insert(numbers.end(), bins.heights.begin(), bins.heights.end());
  const std::string xml = ViZEditor::GetInstance()->EmbedHistogramInGraph(
      chart.Text(), Look(), reinterpret_cast<unsigned char*>(numbers.data()),
      numbers.size() * sizeof(double), static_cast<unsigned int>(bins.heights.size()));
  if (xml.empty()) Fail(chart, dumps);
  output.Write(xml);
}

void HistogramCommand::CheckUsage() const {
  if (_values.empty() == _bins.empty()) {
    throw UsageError("either --values or --bins is required");
  }
  CheckStandardInput({_chart, _values, _bins});
  if (_count && _values.empty()) throw UsageError("--count goes with --values");
  if (_count && (*_count < 1 || *_count > kMostBins)) {
    throw UsageError("--count: must be from 1 to " + std::to_string(kMostBins));
  }
  static const std::regex color("#[0-9a-fA-F]{6}");
  if (!_fill.empty() && !std::regex_match(_fill, color)) {
    throw UsageError("--fill: \"" + _fill + "\" is not a colour such as #0072b2");
  }
  if (_opacity && !(*_opacity >= 0 && *_opacity <= 1)) {
    throw UsageError("--opacity: must be from 0 to 1");
  }
}

HistogramBins HistogramCommand::Bins() const {
  if (_values.empty()) return ReadBins(InputFile(_bins));
  const InputFile file(_values);
  const auto bins = CountIntoBins(ReadValues(file), _count);
  if (bins) return *bins;
  const std::string which =
      _count ? std::to_string(*_count) + " bins with round edges" : "round edges of bins";
  throw Failure(file.Name() +
                ": the numbers lie too close to the largest that there is, 1.8e308, for " + which);
}

std::string HistogramCommand::Look() const {
  std::ostringstream look;
  look.imbue(std::locale::classic());
  look << "<histogram xmlns=\"urn:chartbridge:chart:2\"";
  if (!_fill.empty()) look << " fill=\"" << _fill << '"';
  if (_opacity) look << " opacity=\"" << *_opacity << '"';
  look << "/>";
  return look.str();
}

void HistogramCommand::Fail(const InputFile& chart, const DumpFolder& dumps) const {
  const auto failure = JavaFailure::First(dumps.NewRecords());
  if (!failure) throw Failure(chart.Name() + ": " + dumps.WhyEmpty());
  const bool isNumbers = failure->PassedThrough("org.chartbridge.histogram.HistogramNumbers.");
  throw Failure((isNumbers ? BinsName() : chart.Name()) + ": " + failure->Reason(),
                failure->Stack());
}

}  // namespace chartbridge
