// SPDX-License-Identifier: Apache-2.0
#ifndef APP_TREECOMMAND_H_
#define APP_TREECOMMAND_H_

#include <CLI/CLI.hpp>

#include "app/TreeBatchCommand.h"
#include "app/TreeRenderCommand.h"
#include "app/TreeShowCommand.h"
#include "app/TreeSizeCommand.h"

namespace chartbridge {

/// `chartbridge tree`: the commands for tree models.
class TreeCommand {
 public:
  /// Adds the subcommand to `app`. Both must live until the command line has been parsed and run.
  explicit TreeCommand(CLI::App& app);

  TreeCommand(const TreeCommand&) = delete;
  TreeCommand& operator=(const TreeCommand&) = delete;

  /// Whether the command line asks for one of these commands.
  bool IsChosen() const { return _command->parsed(); }
  /// Does it. Throws `Failure` and `UsageError`.
  void Run();
  bool IsVerbose() const;

 private:
  CLI::App* _command;
  TreeRenderCommand _render;
  TreeSizeCommand _size;
  TreeBatchCommand _batch;
  TreeShowCommand _show;
};

}  // namespace chartbridge

#endif  // APP_TREECOMMAND_H_
