// SPDX-License-Identifier: Apache-2.0
#include "app/TreeCommand.h"

#include "app/TreeBatchCommand.h"
#include "app/TreeRenderCommand.h"
#include "app/TreeShowCommand.h"
#include "app/TreeSizeCommand.h"

namespace chartbridge {

TreeCommand::TreeCommand(CLI::App& app)
    : CommandGroup(app, "tree", "Draw, measure and show decision trees (PMML)") {
  Add<TreeRenderCommand>();
  Add<TreeSizeCommand>();
  Add<TreeBatchCommand>();
  Add<TreeShowCommand>();
  SetExamples(
      "  chartbridge tree render iris.pmml -o iris.svg\n"
      "  chartbridge tree size iris.pmml --depth 2\n"
      "  chartbridge tree batch forest.pmml -o trees\n"
      "  chartbridge tree show iris.pmml");
}

}  // namespace chartbridge
