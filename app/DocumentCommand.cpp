// SPDX-License-Identifier: Apache-2.0
#include "app/DocumentCommand.h"

#include "app/DocumentBuildCommand.h"
#include "app/DocumentCheckCommand.h"
#include "app/DocumentExportCommand.h"

namespace chartbridge {

DocumentCommand::DocumentCommand(CLI::App& app)
    : CommandGroup(app, "document", "Build, check and export documents with text, tables, charts") {
  Add<DocumentBuildCommand>();
  Add<DocumentExportCommand>();
  Add<DocumentCheckCommand>();
  SetExamples(
      "  chartbridge document build report.xml -o report.tdoc\n"
      "  chartbridge document export report.tdoc -o report.pdf\n"
      "  chartbridge document check report.xml");
}

}  // namespace chartbridge
