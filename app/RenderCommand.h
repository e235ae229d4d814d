// SPDX-License-Identifier: Apache-2.0
#ifndef APP_RENDERCOMMAND_H_
#define APP_RENDERCOMMAND_H_

#include <CLI/CLI.hpp>
#include <memory>
#include <string>

#include "app/Command.h"
#include "app/JavaMachine.h"
#include "chart/ViZEditor.h"

namespace chartbridge {

class DumpFolder;
class InputFile;
class JavaFailure;
class OutputFile;
class TemplateFile;

/// `chartbridge render`: a chart and its data become a picture.
class RenderCommand : public Command {
 public:
  /// Adds the subcommand to `app`. Both must live until the command line has been parsed and run.
  explicit RenderCommand(CLI::App& app);
  ~RenderCommand() override;

  bool IsChosen() const override { return _command->parsed(); }
  void Run() override;
  bool IsVerbose() const override { return _java.verbose; }

 private:
  void CheckUsage() const;
  ViZEditor::IMAGE_TYPE Format() const;
  void Load();
  void Render(const OutputFile& output) const;
  std::string ChartText(JNIEnv* env, const DumpFolder& dumps) const;
  bool RenderToFile(const std::string& chart, const OutputFile& output) const;
  bool RenderToMemory(const std::string& chart, std::string& picture) const;
  std::string Culprit(const JavaFailure& failure, const std::string& reason) const;
  [[noreturn]] void FailWithReason(JNIEnv* env, const DumpFolder& dumps) const;
  [[noreturn]] void FailTemplated(const JavaFailure& failure) const;

  CLI::App* _command;
  std::string _chart;
  std::string _data;
  std::string _template;
  std::string _output;
  std::string _type;
  double _size = 100;
  std::string _locale;
  std::string _textsFile;
  std::string _style;
  std::string _styleFile;
  bool _map = false;
  JavaOptions _java;

  std::unique_ptr<InputFile> _chartFile;
  std::unique_ptr<InputFile> _dataFile;
  std::unique_ptr<TemplateFile> _templateFile;
  std::string _texts;
  std::string _styleText;
};

}  // namespace chartbridge

#endif  // APP_RENDERCOMMAND_H_
