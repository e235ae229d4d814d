// SPDX-License-Identifier: Apache-2.0
#ifndef APP_TREERENDERCOMMAND_H_
#define APP_TREERENDERCOMMAND_H_

#include <CLI/CLI.hpp>
#include <string>

#include "app/TreeOptions.h"
#include "tree/TreeEditor.h"

namespace chartbridge {

class OutputFile;
class TreeDocuments;

/// `chartbridge tree render`: a tree model becomes a picture.
class TreeRenderCommand {
 public:
  /// Adds the subcommand to `tree`. Both must live until the command line has been parsed and run.
  explicit TreeRenderCommand(CLI::App& tree);

  TreeRenderCommand(const TreeRenderCommand&) = delete;
  TreeRenderCommand& operator=(const TreeRenderCommand&) = delete;

  /// Whether the command line asks for this command.
  bool IsChosen() const { return _command->parsed(); }
  /// Does it. Throws `Failure` and `UsageError`.
  void Run();
  bool IsVerbose() const { return _options.java.verbose; }

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
