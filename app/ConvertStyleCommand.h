// SPDX-License-Identifier: Apache-2.0
#ifndef APP_CONVERTSTYLECOMMAND_H_
#define APP_CONVERTSTYLECOMMAND_H_

#include <CLI/CLI.hpp>
#include <string>

#include "app/Command.h"
#include "app/JavaMachine.h"

namespace chartbridge {

/// `chartbridge convert style`: an XSLT style sheet turns a chart into another document.
class ConvertStyleCommand : public Command {
 public:
  /// Adds the command to `group`, which must live until the command line has been parsed and run.
  explicit ConvertStyleCommand(CLI::App& group);

  bool IsChosen() const override { return _command->parsed(); }
  void Run() override;
  bool IsVerbose() const override { return _java.verbose; }

 private:
  CLI::App* _command;
  std::string _chart;
  std::string _sheet;
  std::string _output = "-";
  JavaOptions _java;
};

}  // namespace chartbridge

#endif  // APP_CONVERTSTYLECOMMAND_H_
