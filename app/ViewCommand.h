// SPDX-License-Identifier: Apache-2.0
#ifndef APP_VIEWCOMMAND_H_
#define APP_VIEWCOMMAND_H_

#include <CLI/CLI.hpp>
#include <string>

#include "app/ChartJsonExport.h"
#include "app/Command.h"
#include "app/JavaMachine.h"

namespace chartbridge {

/// `chartbridge view`: a chart becomes one HTML page, with everything in it that it takes to look
/// at the chart and to explore it.
class ViewCommand : public Command {
 public:
  /// Adds the subcommand to `app`. Both must live until the command line has been parsed and run.
  explicit ViewCommand(CLI::App& app);

  bool IsChosen() const override { return _command->parsed(); }
  void Run() override;
  bool IsVerbose() const override { return _java.verbose; }

 private:
  CLI::App* _command;
  std::string _output;
  std::string _title;
  ChartJsonSettings _settings;
  JavaOptions _java;
};

}  // namespace chartbridge

#endif  // APP_VIEWCOMMAND_H_
