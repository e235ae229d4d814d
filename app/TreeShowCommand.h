// SPDX-License-Identifier: Apache-2.0
#ifndef APP_TREESHOWCOMMAND_H_
#define APP_TREESHOWCOMMAND_H_

#include <CLI/CLI.hpp>
#include <string>

#include "app/TreeOptions.h"

namespace chartbridge {

/// `chartbridge tree show`: a tree model in a window, until the window is closed.
class TreeShowCommand {
 public:
  /// Adds the subcommand to `tree`. Both must live until the command line has been parsed and run.
  explicit TreeShowCommand(CLI::App& tree);

  TreeShowCommand(const TreeShowCommand&) = delete;
  TreeShowCommand& operator=(const TreeShowCommand&) = delete;

  /// Whether the command line asks for this command.
  bool IsChosen() const { return _command->parsed(); }
  /// Does it. Throws `Failure` and `UsageError`.
  void Run();
  bool IsVerbose() const { return _options.java.verbose; }

 private:
  CLI::App* _command;
  TreeOptions _options;
  std::string _geometry;
  std::string _saveDisplay;
};

}  // namespace chartbridge

#endif  // APP_TREESHOWCOMMAND_H_
