// SPDX-License-Identifier: Apache-2.0
#include "app/ConvertCommand.h"

#include "app/CommonOptions.h"
#include "app/DumpFolder.h"
#include "app/Failure.h"
#include "app/InputFile.h"
#include "app/JavaFailure.h"
#include "app/NativeText.h"
#include "app/OutputFile.h"
#include "convert/VizConverter.h"
#include "host/LocalFrame.h"

namespace chartbridge {

namespace {

/// Starts the converter for the scope, outside of every local frame: its Java object must outlive
/// them.
class ConverterSession {
 public:
  explicit ConverterSession(JNIEnv* env) { VizConverter::GetInstance()->StartConverter(env); }
  ~ConverterSession() { VizConverter::GetInstance()->Stop(); }

  ConverterSession(const ConverterSession&) = delete;
  ConverterSession& operator=(const ConverterSession&) = delete;
};

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

ConvertCommand::ConvertCommand(CLI::App& app)
    : _command(app.add_subcommand("convert", "Turn other forms of a chart into chart XML")),
      _fromGraphLanguage(_command->add_subcommand("gpl", "Turn graph language into chart XML")),
      _upgrade(_command->add_subcommand("upgrade",
                                        "Turn chart XML of an older version into the current one; "
                                        "a current document stays as it is")) {
  _command->require_subcommand(1);
  _command->footer(
      "Examples:\n"
      "  chartbridge convert gpl sales.gpl -o sales.xml\n"
      "  chartbridge convert upgrade old.xml -o new.xml");
  AddArguments(*_fromGraphLanguage);
  _fromGraphLanguage->footer(
      "Examples:\n"
      "  chartbridge convert gpl sales.gpl -o sales.xml\n"
      "  chartbridge convert gpl - < sales.gpl");
  AddArguments(*_upgrade);
  _upgrade->footer(
      "Examples:\n"
      "  chartbridge convert upgrade old.xml -o new.xml\n"
      "  chartbridge convert upgrade chart.xml -o chart.xml");
}

void ConvertCommand::AddArguments(CLI::App& conversion) {
  conversion.add_option("input", _input, "The document; - is standard input")
      ->type_name("INPUT")
      ->required();
  conversion.add_option("-o,--output", _output, "The chart XML; - is standard output")
      ->type_name("FILE")
      ->capture_default_str();
  AddJavaOptions(conversion, _java);
}

void ConvertCommand::Run() {
  const OutputFile output(_output, false);
  const InputFile input(_input);

  const DumpFolder dumps;
  const JavaMachine java(_java);
  const ConverterSession converter(java.Env());
  JavaFailure::ThrowIfNotStarted(dumps.NewRecords());

  const LocalFrame frame;
  std::string xml;
  if (!Convert(input.Text(), xml)) {
    FailWithReason(dumps, input.Name(), VizConverter::GetInstance()->GetErrorMessage());
  }
  output.Write(xml);
}

bool ConvertCommand::Convert(const std::string& input, std::string& xml) const {
  VizConverter* converter = VizConverter::GetInstance();
  if (_upgrade->parsed()) return converter->UpgradeXML(input, xml);
  return converter->GPLtoXML(input, xml);
}

}  // namespace chartbridge
