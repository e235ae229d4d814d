// SPDX-License-Identifier: Apache-2.0
#ifndef APP_TREERENDERCOMMAND_H_
#define APP_TREERENDERCOMMAND_H_

#include <CLI/CLI.hpp>
#include <string>

#include "app/Command.h"
#include "app/TreeOptions.h"
#include "tree/TreeEditor.h"

namespace chartbridge {

class OutputFile;
class TreeDocuments;

/// `chartbridge tree render`: a tree model becomes a picture.
class TreeRenderCommand : public Command {
 public:
  /// Adds the subcommand to `tree`. Both must live until the command line has been parsed and run.
  explicit TreeRenderCommand(CLI::App& tree);

  bool IsChosen() const override { return _command->parsed(); }
  void Run() override;
  bool IsVerbose() const override { return _options.java.verbose; }

 private:
  TreeEditor::IMAGE_TYPE Format() const;
  bool RenderToFile(const TreeDocuments& documents, const OutputFile& output) const;
  bool RenderToMemory(const TreeDocuments& documents, std::string& picture) const;

  CLI::App* _command;
  TreeOptions _options;
  std::string _output;
  std::string _type;
};

}  // namespace chartbridge

#endif  // APP_TREERENDERCOMMAND_H_
