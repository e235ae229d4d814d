// SPDX-License-Identifier: Apache-2.0
#ifndef APP_CONVERTCHARTCOMMAND_H_
#define APP_CONVERTCHARTCOMMAND_H_

#include <CLI/CLI.hpp>
#include <string>

#include "app/Command.h"
#include "app/JavaMachine.h"

class VizConverter;

namespace chartbridge {

/// What the conversions of chart texts into current chart XML have in common.
class ConvertChartCommand : public Command {
 public:
  bool IsChosen() const override { return _command->parsed(); }
  void Run() override;
  bool IsVerbose() const override { return _java.verbose; }

 protected:
  /// Adds the command to `group`, which must live until the command line has been parsed and run.
  ConvertChartCommand(CLI::App& group, const std::string& name, const std::string& description);

  void SetExamples(const std::string& examples) { _command->footer("Examples:\n" + examples); }

 private:
  /// The one call that makes the difference; false on failure.
  virtual bool Convert(VizConverter& converter, const std::string& input,
                       std::string& xml) const = 0;

  CLI::App* _command;
  std::string _input;
  std::string _output = "-";
  JavaOptions _java;
};

}  // namespace chartbridge

#endif  // APP_CONVERTCHARTCOMMAND_H_
