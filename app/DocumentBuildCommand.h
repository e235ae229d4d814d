// SPDX-License-Identifier: Apache-2.0
#ifndef APP_DOCUMENTBUILDCOMMAND_H_
#define APP_DOCUMENTBUILDCOMMAND_H_

#include <CLI/CLI.hpp>
#include <string>

#include "app/Command.h"
#include "app/JavaMachine.h"

namespace chartbridge {

/// `chartbridge document build`: a document and the files that it refers to become one file.
class DocumentBuildCommand : public Command {
 public:
  /// Adds the subcommand to `document`. Both must live until the command line has been parsed and
  /// run.
  explicit DocumentBuildCommand(CLI::App& document);

  bool IsChosen() const override { return _command->parsed(); }
  void Run() override;
  bool IsVerbose() const override { return _java.verbose; }

 private:
  CLI::App* _command;
  std::string _input;
  std::string _output;
  bool _plain = false;
  bool _pictures = false;
  JavaOptions _java;
};

}  // namespace chartbridge

#endif  // APP_DOCUMENTBUILDCOMMAND_H_
