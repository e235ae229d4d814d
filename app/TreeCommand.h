// SPDX-License-Identifier: Apache-2.0
#ifndef APP_TREECOMMAND_H_
#define APP_TREECOMMAND_H_

#include <CLI/CLI.hpp>

#include "app/CommandGroup.h"

namespace chartbridge {

/// `chartbridge tree`: the commands for tree models.
class TreeCommand : public CommandGroup {
 public:
  /// Adds the subcommands to `app`. Both must live until the command line has been parsed and run.
  explicit TreeCommand(CLI::App& app);
};

}  // namespace chartbridge

#endif  // APP_TREECOMMAND_H_
