// SPDX-License-Identifier: Apache-2.0
#ifndef APP_DOCTORCOMMAND_H_
#define APP_DOCTORCOMMAND_H_

#include <CLI/CLI.hpp>
#include <string>

#include "app/Command.h"
#include "app/DoctorFinding.h"
#include "app/DoctorReport.h"
#include "app/JavaMachine.h"

namespace chartbridge {

class DoctorContractCheck;
class DumpFolder;

/// `chartbridge doctor`: checks Java classes, the JVM and the machine before a host relies on them.
class DoctorCommand : public Command {
 public:
  /// Adds the subcommand to `app`. Both must live until the command line has been parsed and run.
  explicit DoctorCommand(CLI::App& app);

  bool IsChosen() const override { return _command->parsed(); }
  void Run() override;
  bool IsVerbose() const override { return false; }

 private:
  void CheckUsage() const;
  void ReadSamples();
  void Examine(DoctorReport& report) const;
  void ExamineMachine(const JavaMachine& java, const DumpFolder& dumps, DoctorReport& report) const;
  void DrawPictures(const JavaMachine& java, const DumpFolder& dumps,
                    const DoctorContractCheck& contract, DoctorReport& report) const;
  DoctorStatus Severity(bool isUsersOwnSample) const;
  DoctorStyle Style() const;

  CLI::App* _command;
  JavaOptions _java;
  bool _json = false;
  bool _quiet = false;
  std::string _chartFile;
  std::string _dataFile;
  std::string _modelFile;

  std::string _chart;
  std::string _data;
  std::string _model;
};

}  // namespace chartbridge

#endif  // APP_DOCTORCOMMAND_H_
