// SPDX-License-Identifier: Apache-2.0
#include "app/TreeRenderCommand.h"

#include "app/DumpFolder.h"
#include "app/JavaFailure.h"
#include "app/OutputFile.h"
#include "app/PictureFormat.h"
#include "app/StandardInput.h"
#include "app/TreeDocuments.h"
#include "app/TreeImagerSession.h"
#include "host/LocalFrame.h"

namespace chartbridge {

TreeRenderCommand::TreeRenderCommand(CLI::App& tree)
    : _command(tree.add_subcommand("render", "Draw a tree model, or the overview of an ensemble")) {
  AddTreeModel(*_command, _options);
  _command
      ->add_option(
          "-o,--output", _output,
          "The picture; its ending says the format (" + FormatNames() + "); - is standard output")
      ->type_name("FILE")
      ->required();
  _command
      ->add_option("-t,--type", _type,
                   "The format, whatever the ending says; for standard output png when not given")
      ->type_name("FORMAT");
  AddTreeOptions(*_command, _options);
  _command->footer(
      "Examples:\n"
      "  chartbridge tree render iris.pmml -o iris.svg\n"
      "  chartbridge tree render iris.pmml -o iris.png --depth 2 --left-to-right\n"
      "  chartbridge tree render iris.pmml -o iris.pdf --display iris-display.xml\n"
      "  zcat iris.pmml.gz | chartbridge tree render - -o - --type svg > iris.svg");
}

void TreeRenderCommand::Run() {
  CheckTreeOptions(_options);
  CheckStandardInput({_options.model, _options.display});
  Format();
  const OutputFile output(_output, true);
  const TreeDocuments documents(_options);

  const DumpFolder dumps;
  const JavaMachine java(_options.java);
  const TreeImagerSession imager(java.Env());
  JavaFailure::ThrowIfNotStarted(dumps.NewRecords());

  const LocalFrame frame;
  if (output.IsReplaceable()) {
    if (!RenderToFile(documents, output)) documents.FailWithReason(dumps, output.Name());
    return;
  }
  std::string picture;
  if (!RenderToMemory(documents, picture)) documents.FailWithReason(dumps, output.Name());
  output.Write(picture);
}

TreeEditor::IMAGE_TYPE TreeRenderCommand::Format() const {
  // Every editor numbers the formats alike.
  return static_cast<TreeEditor::IMAGE_TYPE>(FormatOfOutput(_output, _type));
}

bool TreeRenderCommand::RenderToFile(const TreeDocuments& documents,
                                     const OutputFile& output) const {
  // The direction is in the display data; the flag would say the same once more.
  return TreeEditor::GetInstance()->RenderToFileHeadless(documents.Model(), documents.Display(),
                                                         output.Target(), Format(), false);
}

bool TreeRenderCommand::RenderToMemory(const TreeDocuments& documents, std::string& picture) const {
  unsigned int size = 0;
  return TreeEditor::GetInstance()->RenderImageToMemoryHeadless(
      documents.Model(), documents.Display(), "", size, Format(), false, picture);
}

}  // namespace chartbridge
