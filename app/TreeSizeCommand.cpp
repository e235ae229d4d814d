// SPDX-License-Identifier: Apache-2.0
#include "app/TreeSizeCommand.h"

#include <string>

#include "app/DumpFolder.h"
#include "app/JavaFailure.h"
#include "app/OutputFile.h"
#include "app/StandardInput.h"
#include "app/TreeDocuments.h"
#include "app/TreeImagerSession.h"
#include "host/LocalFrame.h"

namespace chartbridge {

TreeSizeCommand::TreeSizeCommand(CLI::App& tree)
    : _command(tree.add_subcommand("size",
                                   "Print the width and the height, in pixels, that the "
                                   "picture of a tree model has")) {
  AddTreeModel(*_command, _options);
  AddTreeOptions(*_command, _options);
  _command->footer(
      "Examples:\n"
      "  chartbridge tree size iris.pmml\n"
      "  chartbridge tree size iris.pmml --depth 2 --left-to-right");
}

void TreeSizeCommand::Run() {
  CheckTreeOptions(_options);
  CheckStandardInput({_options.model, _options.display});
  const OutputFile output("-", false);
  const TreeDocuments documents(_options);

  const DumpFolder dumps;
  const JavaMachine java(_options.java);
  const TreeImagerSession imager(java.Env());
  JavaFailure::ThrowIfNotStarted(dumps.NewRecords());

  const LocalFrame frame;
  long width = 0;
  long height = 0;
  if (!TreeEditor::GetInstance()->CalculateSizeHeadless(documents.Model(), documents.Display(),
                                                        width, height)) {
    documents.FailWithReason(dumps, "");
  }
  output.Write(std::to_string(width) + " " + std::to_string(height) + "\n");
}

}  // namespace chartbridge
