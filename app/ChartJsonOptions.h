// SPDX-License-Identifier: Apache-2.0
#ifndef APP_CHARTJSONOPTIONS_H_
#define APP_CHARTJSONOPTIONS_H_

#include <CLI/CLI.hpp>

#include "app/ChartJsonExport.h"

namespace chartbridge {

// The options that commands have in common which export chart JSON.

/// Adds the chart.
void AddChartArgument(CLI::App& command, ChartJsonSettings& settings);

/// Adds --data.
void AddDataOption(CLI::App& command, ChartJsonSettings& settings);

/// Adds what interactive charts can have: --geo, --projection, --options, --renderer.
void AddInteractiveOptions(CLI::App& command, ChartJsonSettings& settings);

/// Throws `UsageError` when two inputs are standard input, or the renderer is none.
void CheckInputs(const ChartJsonSettings& settings);

}  // namespace chartbridge

#endif  // APP_CHARTJSONOPTIONS_H_
