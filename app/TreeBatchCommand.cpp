// SPDX-License-Identifier: Apache-2.0
#include "app/TreeBatchCommand.h"

#include <vector>

#include "app/DumpFolder.h"
#include "app/Failure.h"
#include "app/InputFile.h"
#include "app/JavaFailure.h"
#include "app/OutputFile.h"
#include "app/PictureFormat.h"
#include "app/StandardInput.h"
#include "app/TreeDocuments.h"
#include "app/TreeImagerSession.h"
#include "app/WorkingFolder.h"
#include "host/LocalFrame.h"

namespace chartbridge {

TreeBatchCommand::TreeBatchCommand(CLI::App& tree)
    : _command(tree.add_subcommand("batch",
                                   "Draw a tree model as a set of pictures: the overview, "
                                   "and each tree or top-level branch")) {
  AddTreeModel(*_command, _options);
  _command
      ->add_option("-o,--output", _folder, "The folder for the pictures; made when it is not there")
      ->type_name("FOLDER")
      ->required();
  _command->add_option("-t,--type", _type, "The format: " + FormatNames())
      ->type_name("FORMAT")
      ->capture_default_str();
  _command
      ->add_option("--samples", _samples,
                   "Records whose ways through the trees are shown, a CSV "
                   "file in UTF-8; - is standard input")
      ->type_name("FILE");
  _command
      ->add_option("--name", _name,
                   "The title, and with its letters and digits the beginning of the file names; "
                   "the model's own name when not given")
      ->type_name("TEXT");
  _command->add_option("--style-file", _styleFile, "A style document that changes single settings")
      ->type_name("FILE");
  AddTreeOptions(*_command, _options);
  _command->footer(
      "Examples:\n"
      "  chartbridge tree batch forest.pmml -o trees\n"
      "  chartbridge tree batch iris.pmml -o trees --name \"Iris 2024\" --type svg\n"
      "  chartbridge tree batch iris.pmml -o trees --samples flowers.csv --depth 3");
}

void TreeBatchCommand::CheckUsage() const {
  CheckTreeOptions(_options);
  CheckStandardInput({_options.model, _options.display, _samples, _styleFile});
  // The list of files comes back in a way that ends the process on a JVM without the guard.
  if (!_options.java.guard) throw UsageError("--no-guard: tree batch does not work without it");
  if (IsStandardStream(_folder)) throw UsageError("-o must name a folder");
  Format();
  WorkingFolder::Check(_folder);
}

TreeEditor::IMAGE_TYPE TreeBatchCommand::Format() const {
  // Every editor numbers the formats alike.
  return static_cast<TreeEditor::IMAGE_TYPE>(FormatOfOption(_type));
}

void TreeBatchCommand::Run() {
  CheckUsage();
  const OutputFile list("-", false);
  TreeDocuments documents(_options);
  documents.ReadSamples(_samples);
  documents.ReadStyle(_styleFile);

  const DumpFolder dumps;
  const JavaMachine java(_options.java);
  const TreeImagerSession imager(java.Env());
  JavaFailure::ThrowIfNotStarted(dumps.NewRecords());

  const LocalFrame frame;
  // The depth is in the display data, where 0 can also take their limit away.
  std::vector<std::string> files;
  if (!TreeEditor::GetInstance()->RenderModelToFileHeadless(documents.Model(), documents.Display(),
                                                            documents.Style(), documents.Samples(),
                                                            _name, _folder, Format(), 0, files)) {
    documents.FailWithReason(dumps, _folder);
  }
  std::string lines;
  for (const std::string& file : files) lines += file + "\n";
  list.Write(lines);
}

}  // namespace chartbridge
