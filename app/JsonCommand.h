// SPDX-License-Identifier: Apache-2.0
#ifndef APP_JSONCOMMAND_H_
#define APP_JSONCOMMAND_H_

#include <CLI/CLI.hpp>
#include <string>

#include "app/ChartJsonExport.h"
#include "app/Command.h"
#include "app/JavaMachine.h"

namespace chartbridge {

class OutputFile;

/// `chartbridge json`: a chart becomes Vega-Lite JSON, plain, interactive or as a template.
class JsonCommand : public Command {
 public:
  /// Adds the subcommand to `app`. Both must live until the command line has been parsed and run.
  explicit JsonCommand(CLI::App& app);

  bool IsChosen() const override { return _command->parsed(); }
  void Run() override;
  bool IsVerbose() const override { return _java.verbose; }

 private:
  void CheckUsage() const;
  void CheckDataFile(const OutputFile& chart) const;

  CLI::App* _command;
  std::string _output;
  ChartJsonSettings _settings;
  JavaOptions _java;
};

}  // namespace chartbridge

#endif  // APP_JSONCOMMAND_H_
