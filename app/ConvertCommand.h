// SPDX-License-Identifier: Apache-2.0
#ifndef APP_CONVERTCOMMAND_H_
#define APP_CONVERTCOMMAND_H_

#include <CLI/CLI.hpp>

#include "app/CommandGroup.h"

namespace chartbridge {

/// `chartbridge convert`: one form of a chart or picture becomes another.
class ConvertCommand : public CommandGroup {
 public:
  /// Adds the subcommands to `app`, which must live until the command line has been parsed and run.
  explicit ConvertCommand(CLI::App& app);
};

}  // namespace chartbridge

#endif  // APP_CONVERTCOMMAND_H_
