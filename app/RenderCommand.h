// SPDX-License-Identifier: Apache-2.0
#ifndef APP_RENDERCOMMAND_H_
#define APP_RENDERCOMMAND_H_

#include <CLI/CLI.hpp>
#include <string>

#include "app/Command.h"
#include "app/JavaMachine.h"
#include "chart/ViZEditor.h"

namespace chartbridge {

class DumpFolder;
class InputFile;
class JavaFailure;
class OutputFile;

/// `chartbridge render`: a chart and its data become a picture.
class RenderCommand : public Command {
 public:
  /// Adds the subcommand to `app`. Both must live until the command line has been parsed and run.
  explicit RenderCommand(CLI::App& app);

  bool IsChosen() const override { return _command->parsed(); }
  void Run() override;
  bool IsVerbose() const override { return _java.verbose; }

 private:
  void CheckUsage() const;
  ViZEditor::IMAGE_TYPE Format() const;
  void Render(const InputFile& chart, const InputFile& data, const OutputFile& output) const;
  bool RenderToFile(const InputFile& chart, const InputFile& data, const OutputFile& output) const;
  bool RenderToMemory(const InputFile& chart, const InputFile& data, std::string& picture) const;
  std::string Culprit(const JavaFailure& failure, const InputFile& chart,
                      const InputFile& data) const;
  [[noreturn]] void FailWithReason(const DumpFolder& dumps, const InputFile& chart,
                                   const InputFile& data) const;

  CLI::App* _command;
  std::string _chart;
  std::string _data;
  std::string _output;
  std::string _type;
  double _size = 100;
  std::string _locale;
  std::string _textsFile;
  std::string _style;
  std::string _styleFile;
  bool _map = false;
  JavaOptions _java;

  std::string _texts;
  std::string _styleText;
};

}  // namespace chartbridge

#endif  // APP_RENDERCOMMAND_H_
