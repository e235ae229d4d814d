// SPDX-License-Identifier: Apache-2.0
#ifndef APP_COMMANDGROUP_H_
#define APP_COMMANDGROUP_H_

#include <CLI/CLI.hpp>
#include <memory>
#include <string>
#include <vector>

#include "app/Command.h"

namespace chartbridge {

/// Commands under one name, such as `chartbridge tree`. One of them must be asked for.
class CommandGroup : public Command {
 public:
  bool IsChosen() const override { return _command->parsed(); }
  void Run() override { Chosen().Run(); }
  bool IsVerbose() const override { return Chosen().IsVerbose(); }

 protected:
  /// Adds the group to `app`, which must live until the command line has been parsed and run.
  CommandGroup(CLI::App& app, const std::string& name, const std::string& description)
      : _command(app.add_subcommand(name, description)) {
    _command->require_subcommand(1);
  }

  /// Adds the command `Member`, which is constructed with the group's part of the command line.
  template <typename Member>
  void Add() {
    _members.push_back(std::make_unique<Member>(*_command));
  }

  void SetExamples(const std::string& examples) { _command->footer("Examples:\n" + examples); }

 private:
  Command& Chosen() const {
    for (const auto& member : _members) {
      if (member->IsChosen()) return *member;
    }
    throw CLI::RequiredError(_command->get_name() + ": a subcommand is required");
  }

  CLI::App* _command;
  std::vector<std::unique_ptr<Command>> _members;
};

}  // namespace chartbridge

#endif  // APP_COMMANDGROUP_H_
