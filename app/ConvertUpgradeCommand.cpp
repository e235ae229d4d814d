// SPDX-License-Identifier: Apache-2.0
#include "app/ConvertUpgradeCommand.h"

#include "convert/VizConverter.h"

namespace chartbridge {

ConvertUpgradeCommand::ConvertUpgradeCommand(CLI::App& group)
    : ConvertChartCommand(group, "upgrade",
                          "Turn chart XML of an older version into the current one; "
                          "a current document stays as it is") {
  SetExamples(
      "  chartbridge convert upgrade old.xml -o new.xml\n"
      "  chartbridge convert upgrade chart.xml -o chart.xml");
}

bool ConvertUpgradeCommand::Convert(VizConverter& converter, const std::string& input,
                                    std::string& xml) const {
  return converter.UpgradeXML(input, xml);
}

}  // namespace chartbridge
