// SPDX-License-Identifier: Apache-2.0
#include "app/ChartJsonOptions.h"

#include <string>
#include <vector>

#include "app/Failure.h"
#include "app/StandardInput.h"

namespace chartbridge {

void AddChartArgument(CLI::App& command, ChartJsonSettings& settings) {
  command
      .add_option("chart", settings.chart,
                  "The chart, in the graph language or as chart XML; - is standard input")
      ->type_name("CHART")
      ->required();
}

void AddDataOption(CLI::App& command, ChartJsonSettings& settings) {
  command
      .add_option("-d,--data", settings.data,
                  "The data, a CSV file in UTF-8; not needed for a chart that has its own; "
                  "- is standard input")
      ->type_name("FILE");
}

void AddInteractiveOptions(CLI::App& command, ChartJsonSettings& settings) {
  command
      .add_option("-g,--geo", settings.maps,
                  "GeoJSON documents, drawn as a map below the marks, in this order")
      ->type_name("FILE")
      ->expected(1, CLI::detail::expected_max_vector_size);
  command
      .add_option("--projection", settings.projection,
                  "The projection of the map, such as mercator or naturalEarth1")
      ->type_name("NAME");
  command
      .add_option("--options", settings.optionsFile,
                  "A JSON file that says which interaction the chart has")
      ->type_name("FILE");
  command
      .add_option("--renderer", settings.renderer,
                  "What viewers are asked to draw with: canvas or svg")
      ->type_name("NAME");
}

void CheckInputs(const ChartJsonSettings& settings) {
  std::vector<std::string> inputs = settings.maps;
  inputs.insert(inputs.end(), {settings.chart, settings.data, settings.optionsFile});
  CheckStandardInput(inputs);
  if (!settings.renderer.empty() && settings.renderer != "canvas" && settings.renderer != "svg") {
    throw UsageError("--renderer: \"" + settings.renderer + "\" is neither canvas nor svg");
  }
}

}  // namespace chartbridge
