// SPDX-License-Identifier: Apache-2.0
#ifndef APP_TREESHOWCOMMAND_H_
#define APP_TREESHOWCOMMAND_H_

#include <CLI/CLI.hpp>
#include <string>

#include "app/Command.h"
#include "app/TreeOptions.h"

namespace chartbridge {

/// `chartbridge tree show`: a tree model in a window, until the window is closed.
class TreeShowCommand : public Command {
 public:
  /// Adds the subcommand to `tree`. Both must live until the command line has been parsed and run.
  explicit TreeShowCommand(CLI::App& tree);

  bool IsChosen() const override { return _command->parsed(); }
  void Run() override;
  bool IsVerbose() const override { return _options.java.verbose; }

 private:
  CLI::App* _command;
  TreeOptions _options;
  std::string _geometry;
  std::string _saveDisplay;
};

}  // namespace chartbridge

#endif  // APP_TREESHOWCOMMAND_H_
