// SPDX-License-Identifier: Apache-2.0
#include "app/TreeOptions.h"

#include "app/CommonOptions.h"
#include "app/Failure.h"

namespace chartbridge {

namespace {

constexpr int kMostDepth = 1000;

}  // namespace

void AddTreeModel(CLI::App& command, TreeOptions& options) {
  command
      .add_option("model", options.model,
                  "The model, PMML as it is or compressed with gzip; - is standard input")
      ->type_name("MODEL")
      ->required();
}

void AddTreeOptions(CLI::App& command, TreeOptions& options) {
  command
      .add_option("--display", options.display,
                  "Display data that say what is shown, and how; - is standard input")
      ->type_name("FILE");
  command
      .add_option("--depth", options.depth,
                  "How many levels below the root are shown, 0 for all; else what the display data "
                  "say")
      ->type_name("LEVELS");
  command.add_flag("--left-to-right", options.leftToRight,
                   "Let the tree grow to the right, whatever the display data say");
  AddJavaOptions(command, options.java);
}

void CheckTreeOptions(const TreeOptions& options) {
  if (options.depth && (*options.depth < 0 || *options.depth > kMostDepth)) {
    throw UsageError("--depth: must be from 0 to 1000 levels");
  }
}

}  // namespace chartbridge
