// SPDX-License-Identifier: Apache-2.0
#ifndef APP_TREEBATCHCOMMAND_H_
#define APP_TREEBATCHCOMMAND_H_

#include <CLI/CLI.hpp>
#include <string>

#include "app/Command.h"
#include "app/TreeOptions.h"
#include "tree/TreeEditor.h"

namespace chartbridge {

/// `chartbridge tree batch`: a tree model becomes a set of pictures.
class TreeBatchCommand : public Command {
 public:
  /// Adds the subcommand to `tree`. Both must live until the command line has been parsed and run.
  explicit TreeBatchCommand(CLI::App& tree);

  bool IsChosen() const override { return _command->parsed(); }
  void Run() override;
  bool IsVerbose() const override { return _options.java.verbose; }

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
