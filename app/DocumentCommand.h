// SPDX-License-Identifier: Apache-2.0
#ifndef APP_DOCUMENTCOMMAND_H_
#define APP_DOCUMENTCOMMAND_H_

#include <CLI/CLI.hpp>

#include "app/CommandGroup.h"

namespace chartbridge {

/// `chartbridge document`: the commands for output documents.
class DocumentCommand : public CommandGroup {
 public:
  /// Adds the subcommand to `app`. Both must live until the command line has been parsed and run.
  explicit DocumentCommand(CLI::App& app);
};

}  // namespace chartbridge

#endif  // APP_DOCUMENTCOMMAND_H_
