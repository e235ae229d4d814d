// SPDX-License-Identifier: Apache-2.0
#include "app/ConvertGplCommand.h"

#include "convert/VizConverter.h"

namespace chartbridge {

ConvertGplCommand::ConvertGplCommand(CLI::App& group)
    : ConvertChartCommand(group, "gpl", "Turn graph language into chart XML") {
  SetExamples(
      "  chartbridge convert gpl sales.gpl -o sales.xml\n"
      "  chartbridge convert gpl - < sales.gpl");
}

bool ConvertGplCommand::Convert(VizConverter& converter, const std::string& input,
                                std::string& xml) const {
  return converter.GPLtoXML(input, xml);
}

}  // namespace chartbridge
