// SPDX-License-Identifier: Apache-2.0
#ifndef APP_CONVERTCOMMAND_H_
#define APP_CONVERTCOMMAND_H_

#include <CLI/CLI.hpp>
#include <string>

#include "app/Command.h"
#include "app/JavaMachine.h"

namespace chartbridge {

/// `chartbridge convert gpl` and `chartbridge convert upgrade`: other forms of a chart become
/// current chart XML.
class ConvertCommand : public Command {
 public:
  /// Adds the subcommands to `app`. Both must live until the command line has been parsed and run.
  explicit ConvertCommand(CLI::App& app);

  bool IsChosen() const override { return _command->parsed(); }
  void Run() override;
  bool IsVerbose() const override { return _java.verbose; }

 private:
  void AddArguments(CLI::App& conversion);
  bool Convert(const std::string& input, std::string& xml) const;

  CLI::App* _command;
  CLI::App* _fromGraphLanguage;
  CLI::App* _upgrade;
  std::string _input;
  std::string _output = "-";
  JavaOptions _java;
};

}  // namespace chartbridge

#endif  // APP_CONVERTCOMMAND_H_
