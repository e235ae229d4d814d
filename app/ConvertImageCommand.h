// SPDX-License-Identifier: Apache-2.0
#ifndef APP_CONVERTIMAGECOMMAND_H_
#define APP_CONVERTIMAGECOMMAND_H_

#include <CLI/CLI.hpp>
#include <string>

#include "app/Command.h"
#include "app/JavaMachine.h"

namespace chartbridge {

class DumpFolder;
class InputFile;
class OutputFile;

/// `chartbridge convert image`: a picture becomes one of another format.
class ConvertImageCommand : public Command {
 public:
  /// Adds the command to `group`, which must live until the command line has been parsed and run.
  explicit ConvertImageCommand(CLI::App& group);

  bool IsChosen() const override { return _command->parsed(); }
  void Run() override;
  bool IsVerbose() const override { return _java.verbose; }

 private:
  void Convert(const InputFile& image, const std::string& path, const DumpFolder& dumps) const;

  CLI::App* _command;
  std::string _image;
  std::string _output;
  std::string _type;
  JavaOptions _java;
};

}  // namespace chartbridge

#endif  // APP_CONVERTIMAGECOMMAND_H_
