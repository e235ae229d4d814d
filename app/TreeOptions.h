// SPDX-License-Identifier: Apache-2.0
#ifndef APP_TREEOPTIONS_H_
#define APP_TREEOPTIONS_H_

#include <CLI/CLI.hpp>
#include <optional>
#include <string>

#include "app/JavaMachine.h"

namespace chartbridge {

/// What all commands for tree models are told on the command line.
struct TreeOptions {
  /// The PMML document; "-" is standard input.
  std::string model;
  /// The display data; "-" is standard input. Empty: none.
  std::string display;
  /// Levels below the root that are shown, 0 for all. None: what the display data say.
  std::optional<int> depth;
  /// Whether the tree grows to the right, whatever the display data say.
  bool leftToRight = false;
  JavaOptions java;
};

/// Adds the model to a command. It comes before all options, so that it is the first to be missed.
void AddTreeModel(CLI::App& command, TreeOptions& options);

/// Adds the options to a command.
void AddTreeOptions(CLI::App& command, TreeOptions& options);

/// Throws `UsageError` for a depth that no display data can have.
void CheckTreeOptions(const TreeOptions& options);

}  // namespace chartbridge

#endif  // APP_TREEOPTIONS_H_
