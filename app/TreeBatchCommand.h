// SPDX-License-Identifier: Apache-2.0
#ifndef APP_TREEBATCHCOMMAND_H_
#define APP_TREEBATCHCOMMAND_H_

#include <CLI/CLI.hpp>
#include <string>

#include "app/TreeOptions.h"
#include "tree/TreeEditor.h"

namespace chartbridge {

/// `chartbridge tree batch`: a tree model becomes a set of pictures.
class TreeBatchCommand {
 public:
  /// Adds the subcommand to `tree`. Both must live until the command line has been parsed and run.
  explicit TreeBatchCommand(CLI::App& tree);

  TreeBatchCommand(const TreeBatchCommand&) = delete;
  TreeBatchCommand& operator=(const TreeBatchCommand&) = delete;

  /// Whether the command line asks for this command.
  bool IsChosen() const { return _command->parsed(); }
  /// Does it. Throws `Failure` and `UsageError`.
  void Run();
  bool IsVerbose() const { return _options.java.verbose; }

 private:
  void CheckUsage() const;
  TreeEditor::IMAGE_TYPE Format() const;

  CLI::App* _command;
  TreeOptions _options;
  std::string _folder;
  std::string _type = "png";
  std::string _styleFile;
  std::string _samples;
  std::string _name;
};

}  // namespace chartbridge

#endif  // APP_TREEBATCHCOMMAND_H_
