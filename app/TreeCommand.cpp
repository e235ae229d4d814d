// SPDX-License-Identifier: Apache-2.0
#include "app/TreeCommand.h"

namespace chartbridge {

TreeCommand::TreeCommand(CLI::App& app)
    : _command(app.add_subcommand("tree", "Draw, measure and show decision trees (PMML)")),
      _render(*_command),
      _size(*_command),
      _batch(*_command),
      _show(*_command) {
  _command->require_subcommand(1);
  _command->footer(
      "Examples:\n"
      "  chartbridge tree render iris.pmml -o iris.svg\n"
      "  chartbridge tree size iris.pmml --depth 2\n"
      "  chartbridge tree batch forest.pmml -o trees\n"
      "  chartbridge tree show iris.pmml");
}

void TreeCommand::Run() {
  if (_render.IsChosen()) _render.Run();
  if (_size.IsChosen()) _size.Run();
  if (_batch.IsChosen()) _batch.Run();
  if (_show.IsChosen()) _show.Run();
}

bool TreeCommand::IsVerbose() const {
  return _render.IsVerbose() || _size.IsVerbose() || _batch.IsVerbose() || _show.IsVerbose();
}

}  // namespace chartbridge
