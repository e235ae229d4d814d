// SPDX-License-Identifier: Apache-2.0
#include "app/DocumentCheckCommand.h"

#include <cstddef>
#include <nlohmann/json.hpp>
#include <sstream>

#include "app/CommonOptions.h"
#include "app/DocumentProgress.h"
#include "app/DocumentSession.h"
#include "app/Failure.h"
#include "app/OutputFile.h"

namespace chartbridge {

DocumentCheckCommand::DocumentCheckCommand(CLI::App& document)
    : _command(document.add_subcommand("check", "See whether a document can be exported")) {
  _command->add_option("input", _input, "The document, built or as XML; - is standard input")
      ->type_name("INPUT")
      ->required();
  AddJavaOptions(*_command, _java);
  _command->footer(
      "Prints a line for each finding. The exit code is 1 when there is one, and 0, without a\n"
      "line, when every chart and tree of the document can be drawn.\n\n"
      "Examples:\n"
      "  chartbridge document check report.xml\n"
      "  chartbridge document check report.tdoc");
}

void DocumentCheckCommand::Run() {
  const OutputFile output("-", false);
  const InputFile input(_input);
  DocumentSession session(_java);
  std::string findings;
  {
    const DocumentProgress progress(input.Name());
    findings = session.Load(input, _input);
    if (findings.empty()) findings = Findings(session);
  }
  std::size_t count = 0;
  std::string lines;
  std::istringstream stream(findings);
  for (std::string line; std::getline(stream, line); ++count) {
    lines += input.Name() + ": " + line + "\n";
  }
  output.Write(lines);
  if (count > 0) {
    throw Failure(input.Name() + ": " + std::to_string(count) +
                  (count == 1 ? " finding" : " findings"));
  }
}

std::string DocumentCheckCommand::Findings(DocumentSession& session) const {
  const nlohmann::json request = {{"document", session.Name()}, {"to", "check"}};
  std::string findings =
      session.Export(request.dump(-1, ' ', true, nlohmann::json::error_handler_t::replace));
  // The first export of an exporter also looks good when Java threw something.
  if (findings.empty() && session.HasNewRecords()) session.FailWithReason();
  return findings;
}

}  // namespace chartbridge
