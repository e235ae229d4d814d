// SPDX-License-Identifier: Apache-2.0
#ifndef APP_TREESIZECOMMAND_H_
#define APP_TREESIZECOMMAND_H_

#include <CLI/CLI.hpp>

#include "app/Command.h"
#include "app/TreeOptions.h"

namespace chartbridge {

/// `chartbridge tree size`: how large the picture of a tree model is.
class TreeSizeCommand : public Command {
 public:
  /// Adds the subcommand to `tree`. Both must live until the command line has been parsed and run.
  explicit TreeSizeCommand(CLI::App& tree);

  bool IsChosen() const override { return _command->parsed(); }
  void Run() override;
  bool IsVerbose() const override { return _options.java.verbose; }

 private:
  CLI::App* _command;
  TreeOptions _options;
};

}  // namespace chartbridge

#endif  // APP_TREESIZECOMMAND_H_
