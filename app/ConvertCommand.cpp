// SPDX-License-Identifier: Apache-2.0
#include "app/ConvertCommand.h"

#include "app/ConvertGplCommand.h"
#include "app/ConvertImageCommand.h"
#include "app/ConvertStyleCommand.h"
#include "app/ConvertTemplateCommand.h"
#include "app/ConvertUpgradeCommand.h"

namespace chartbridge {

ConvertCommand::ConvertCommand(CLI::App& app)
    : CommandGroup(app, "convert", "Turn one form of a chart or picture into another") {
  Add<ConvertGplCommand>();
  Add<ConvertUpgradeCommand>();
  Add<ConvertStyleCommand>();
  Add<ConvertTemplateCommand>();
  Add<ConvertImageCommand>();
  SetExamples(
      "  chartbridge convert gpl sales.gpl -o sales.xml\n"
      "  chartbridge convert upgrade old.xml -o new.xml\n"
      "  chartbridge convert style sales.xml --sheet dark.xsl -o dark.xml\n"
      "  chartbridge convert template compare.json --set measure=sales -o chart.xml\n"
      "  chartbridge convert image sales.svg -o sales.png");
}

}  // namespace chartbridge
