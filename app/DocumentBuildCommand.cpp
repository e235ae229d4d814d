// SPDX-License-Identifier: Apache-2.0
#include "app/DocumentBuildCommand.h"

#include "app/CommonOptions.h"
#include "app/DocumentProgress.h"
#include "app/DocumentSession.h"
#include "app/OutputFile.h"
#include "app/ScratchFolder.h"

namespace chartbridge {

DocumentBuildCommand::DocumentBuildCommand(CLI::App& document)
    : _command(document.add_subcommand(
          "build", "Make one file of a document and the files that it refers to")) {
  _command->add_option("input", _input, "The document, as XML; - is standard input")
      ->type_name("INPUT")
      ->required();
  _command->add_option("-o,--output", _output, "The finished document; - is standard output")
      ->type_name("FILE")
      ->required();
  _command->add_flag("--plain", _plain, "Write plain XML, not compressed");
  _command->add_flag("--render", _pictures,
                     "Put pictures of the charts and trees into it, for readers that do not draw");
  AddJavaOptions(*_command, _java);
  _command->footer(
      "Examples:\n"
      "  chartbridge document build report.xml -o report.tdoc\n"
      "  chartbridge document build report.xml -o whole.xml --plain --render\n"
      "  make-report | chartbridge document build - -o report.tdoc");
}

void DocumentBuildCommand::Run() {
  const OutputFile output(_output, !_plain);
  const InputFile input(_input);

  DocumentSession session(_java);
  const DocumentProgress progress(output.Name());
  const std::string why = session.Load(input, _input);
  if (!why.empty()) session.FailWithReason();
  if (output.IsReplaceable()) {
    session.Write(output.Target(), _pictures, !_plain);
    return;
  }
  const ScratchFolder folder;
  session.Write(folder.File("document"), _pictures, !_plain);
  output.Write(InputFile(folder.File("document")).Text());
}

}  // namespace chartbridge
