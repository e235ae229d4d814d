// SPDX-License-Identifier: Apache-2.0
#include "app/ConvertChartCommand.h"

#include "app/CommonOptions.h"
#include "app/ConverterSession.h"
#include "app/DumpFolder.h"
#include "app/Failure.h"
#include "app/InputFile.h"
#include "app/JavaFailure.h"
#include "app/NativeText.h"
#include "app/OutputFile.h"
#include "host/LocalFrame.h"

namespace chartbridge {

namespace {

/// Why the conversion failed: the converter's own message, or the Java exception that kept it from
/// having one.
[[noreturn]] void FailWithReason(const DumpFolder& dumps, const std::string& name,
                                 const std::string& message) {
  const auto failure = JavaFailure::First(dumps.NewRecords());
  const std::string stack = failure ? failure->Stack() : "";
  if (!message.empty()) throw Failure(name + ": " + OnOneLine(message), stack);
  if (failure) throw Failure(name + ": " + failure->Reason(), stack);
  throw Failure(name + ": " + dumps.WhyEmpty());
}

}  // namespace

ConvertChartCommand::ConvertChartCommand(CLI::App& group, const std::string& name,
                                         const std::string& description)
    : _command(group.add_subcommand(name, description)) {
  _command->add_option("input", _input, "The document; - is standard input")
      ->type_name("INPUT")
      ->required();
  _command->add_option("-o,--output", _output, "The chart XML; - is standard output")
      ->type_name("FILE")
      ->capture_default_str();
  AddJavaOptions(*_command, _java);
}

void ConvertChartCommand::Run() {
  const OutputFile output(_output, false);
  const InputFile input(_input);

  const DumpFolder dumps;
  const JavaMachine java(_java);
  const ConverterSession session(java.Env());
  JavaFailure::ThrowIfNotStarted(dumps.NewRecords());

  const LocalFrame frame;
  VizConverter& converter = *VizConverter::GetInstance();
  std::string xml;
  if (!Convert(converter, input.Text(), xml)) {
    FailWithReason(dumps, input.Name(), converter.GetErrorMessage());
  }
  output.Write(xml);
}

}  // namespace chartbridge
