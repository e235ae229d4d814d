// SPDX-License-Identifier: Apache-2.0
#include "app/JsonCommand.h"

#include <filesystem>
#include <system_error>
#include <utility>
#include <vector>

#include "app/ChartJsonOptions.h"
#include "app/CommonOptions.h"
#include "app/Failure.h"
#include "app/OutputFile.h"

namespace chartbridge {

namespace {

constexpr const char* kExamples =
    "Examples:\n"
    "  chartbridge json sales.gpl --data sales.csv -o sales.vl.json\n"
    "  chartbridge json sales.gpl -d sales.csv -o sales.vl.json --interactive\n"
    "  chartbridge json quakes.gpl -d quakes.csv -o map.vl.json --interactive --geo coast.geojson\n"
    "  chartbridge json sales.gpl --template -o sales.template.vl.json";

/// The one path among all that lead to a file.
std::filesystem::path Normal(const std::string& path) {
  std::error_code error;
  const std::filesystem::path full = std::filesystem::absolute(path);
  const std::filesystem::path normal = std::filesystem::weakly_canonical(full, error);
  return error ? full.lexically_normal() : normal;
}

}  // namespace

JsonCommand::JsonCommand(CLI::App& app)
    : _command(app.add_subcommand("json", "Write a chart as Vega-Lite JSON")) {
  AddChartArgument(*_command, _settings);
  AddDataOption(*_command, _settings);
  _command->add_option("-o,--output", _output, "The chart JSON; - is standard output")
      ->type_name("FILE")
      ->required();
  _command->add_flag("--template", _settings.isTemplate,
                     "Leave the data out: a chart for whatever data a viewer fills in");
  _command->add_flag("-i,--interactive", _settings.interactive,
                     "With tooltips, selection, zoom, and map layers");
  AddInteractiveOptions(*_command, _settings);
  _command
      ->add_option("--data-file", _settings.dataFile,
                   "With --interactive: write the data there and let the chart refer to it")
      ->type_name("FILE");
  _command
      ->add_option("--charset", _settings.charset,
                   "The charset of the chart JSON, such as ISO-8859-1; UTF-8 when not given")
      ->type_name("NAME");
  AddTemplatesOption(*_command, _java);
  AddJavaOptions(*_command, _java);
  _command->footer(kExamples);
}

void JsonCommand::Run() {
  CheckUsage();
  const OutputFile output(_output, false);
  CheckDataFile(output);
  const ChartJsonExport chart(_settings);
  if (output.IsReplaceable()) {
    chart.WriteTo(output.Target(), output.Name(), _java);
    return;
  }
  output.Write(chart.Text(output.Name(), _java));
}

void JsonCommand::CheckDataFile(const OutputFile& chart) const {
  if (_settings.dataFile.empty()) return;
  if (!chart.IsReplaceable()) {
    throw UsageError("--data-file goes with a chart in a file; -o must name one");
  }
  const OutputFile data(_settings.dataFile, false);
  if (!data.IsReplaceable()) throw UsageError("--data-file must name a file");
  if (Normal(data.Target()) == Normal(chart.Target())) {
    throw UsageError("--data-file and -o name the same file");
  }
}

void JsonCommand::CheckUsage() const {
  CheckInputs(_settings);
  if (_settings.interactive) {
    if (_settings.isTemplate) {
      throw UsageError("--template and --interactive exclude each other");
    }
    return;
  }
  const std::vector<std::pair<const char*, bool>> interactiveOnly = {
      {"--geo", !_settings.maps.empty()},
      {"--options", !_settings.optionsFile.empty()},
      {"--projection", !_settings.projection.empty()},
      {"--data-file", !_settings.dataFile.empty()}};
  for (const auto& [option, given] : interactiveOnly) {
    if (given) throw UsageError(std::string(option) + " goes with --interactive");
  }
}

}  // namespace chartbridge
