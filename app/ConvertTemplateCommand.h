// SPDX-License-Identifier: Apache-2.0
#ifndef APP_CONVERTTEMPLATECOMMAND_H_
#define APP_CONVERTTEMPLATECOMMAND_H_

#include <CLI/CLI.hpp>
#include <string>
#include <vector>

#include "app/Command.h"
#include "app/JavaMachine.h"

namespace chartbridge {

/// `chartbridge convert template`: a client template with values for its slots becomes chart XML.
class ConvertTemplateCommand : public Command {
 public:
  /// Adds the command to `group`, which must live until the command line has been parsed and run.
  explicit ConvertTemplateCommand(CLI::App& group);

  bool IsChosen() const override { return _command->parsed(); }
  void Run() override;
  bool IsVerbose() const override { return _java.verbose; }

 private:
  std::string Values() const;

  CLI::App* _command;
  std::string _template;
  std::vector<std::string> _settings;
  std::string _output = "-";
  JavaOptions _java;
};

}  // namespace chartbridge

#endif  // APP_CONVERTTEMPLATECOMMAND_H_
