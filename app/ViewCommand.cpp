// SPDX-License-Identifier: Apache-2.0
#include "app/ViewCommand.h"

#include "app/ChartJsonOptions.h"
#include "app/CommonOptions.h"
#include "app/Failure.h"
#include "app/OutputFile.h"
#include "app/ViewerPage.h"

namespace chartbridge {

namespace {

constexpr const char* kExamples =
    "Examples:\n"
    "  chartbridge view sales.gpl --data sales.csv -o sales.html\n"
    "  chartbridge view quakes.gpl -d quakes.csv -o map.html --geo coast.geojson";

}  // namespace

ViewCommand::ViewCommand(CLI::App& app)
    : _command(app.add_subcommand(
          "view", "Write a page with an interactive chart, which opens without a network")) {
  _settings.interactive = true;
  AddChartArgument(*_command, _settings);
  AddDataOption(*_command, _settings);
  _command->add_option("-o,--output", _output, "The page; - is standard output")
      ->type_name("FILE")
      ->required();
  _command
      ->add_option("--title", _title,
                   "The title of the page; the title of the chart when not given")
      ->type_name("TEXT");
  AddInteractiveOptions(*_command, _settings);
  AddTemplatesOption(*_command, _java);
  AddJavaOptions(*_command, _java);
  _command->footer(kExamples);
}

void ViewCommand::Run() {
  CheckInputs(_settings);
  const OutputFile output(_output, false);
  const ViewerPage page;
  const ChartJsonExport chart(_settings);
  output.Write(page.With(chart.Text(output.Name(), _java), _title));
}

}  // namespace chartbridge
