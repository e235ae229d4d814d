// SPDX-License-Identifier: Apache-2.0
#ifndef APP_DOCUMENTCHECKCOMMAND_H_
#define APP_DOCUMENTCHECKCOMMAND_H_

#include <CLI/CLI.hpp>
#include <string>

#include "app/Command.h"
#include "app/JavaMachine.h"

namespace chartbridge {

class DocumentSession;

/// `chartbridge document check`: whether a document can be exported.
class DocumentCheckCommand : public Command {
 public:
  /// Adds the subcommand to `document`. Both must live until the command line has been parsed and
  /// run.
  explicit DocumentCheckCommand(CLI::App& document);

  bool IsChosen() const override { return _command->parsed(); }
  void Run() override;
  bool IsVerbose() const override { return _java.verbose; }

 private:
  std::string Findings(DocumentSession& session) const;

  CLI::App* _command;
  std::string _input;
  JavaOptions _java;
};

}  // namespace chartbridge

#endif  // APP_DOCUMENTCHECKCOMMAND_H_
