// SPDX-License-Identifier: Apache-2.0
#include "app/ConvertStyleCommand.h"

#include "app/ChartEditorSession.h"
#include "app/CommonOptions.h"
#include "app/DumpFolder.h"
#include "app/Failure.h"
#include "app/InputFile.h"
#include "app/JavaFailure.h"
#include "app/OutputFile.h"
#include "app/StandardInput.h"
#include "host/LocalFrame.h"

namespace chartbridge {

namespace {

// How Java, which got bytes without names, calls the two in its messages.
constexpr const char* kDocument = "The document: ";
constexpr const char* kSheet = "The style sheet: ";

/// Puts the file's name where Java says which of the two it means.
std::string WithName(const std::string& reason, const InputFile& chart, const InputFile& sheet) {
  const std::string document = kDocument;
  const std::string styleSheet = kSheet;
  if (reason.rfind(document, 0) == 0) {
    return chart.Name() + ": " + reason.substr(document.size());
  }
  if (reason.rfind(styleSheet, 0) == 0) {
    return sheet.Name() + ": " + reason.substr(styleSheet.size());
  }
  return (reason.rfind("The document is", 0) == 0 ? chart : sheet).Name() + ": " + reason;
}

}  // namespace

ConvertStyleCommand::ConvertStyleCommand(CLI::App& group)
    : _command(group.add_subcommand(
          "style", "Apply an XSLT style sheet to a chart, for a variant of it or another form")) {
  _command
      ->add_option("chart", _chart,
                   "The chart, in the graph language or as chart XML; - is standard input")
      ->type_name("CHART")
      ->required();
  _command->add_option("--sheet", _sheet, "The style sheet, XSLT 1.0; - is standard input")
      ->type_name("FILE")
      ->required();
  _command
      ->add_option("-o,--output", _output, "What the style sheet puts out; - is standard output")
      ->type_name("FILE")
      ->capture_default_str();
  AddJavaOptions(*_command, _java);
  _command->footer(
      "Examples:\n"
      "  chartbridge convert style sales.gpl --sheet dark.xsl -o dark.xml\n"
      "  chartbridge convert style sales.xml --sheet describe.xsl -o sales.html");
}

void ConvertStyleCommand::Run() {
  CheckStandardInput({_chart, _sheet});
  const OutputFile output(_output, false);
  const InputFile chart(_chart);
  const InputFile sheet(_sheet);

  const DumpFolder dumps;
  const JavaMachine java(_java);
  const ChartEditorSession editor(java.Env());
  JavaFailure::ThrowIfNotStarted(dumps.NewRecords());

  const LocalFrame frame;
  std::string document = chart.Text();
  if (ViZEditor::GetInstance()->ApplyStyleSheet(document, sheet.Text())) {
    output.Write(document);
    return;
  }
  const auto failure = JavaFailure::First(dumps.NewRecords());
  if (!failure) throw Failure(sheet.Name() + ": the style sheet puts out nothing");
  throw Failure(WithName(failure->Reason(), chart, sheet), failure->Stack());
}

}  // namespace chartbridge
