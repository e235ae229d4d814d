// SPDX-License-Identifier: Apache-2.0
#ifndef APP_CONVERTUPGRADECOMMAND_H_
#define APP_CONVERTUPGRADECOMMAND_H_

#include <CLI/CLI.hpp>
#include <string>

#include "app/ConvertChartCommand.h"

namespace chartbridge {

/// `chartbridge convert upgrade`: chart XML of an older version becomes current.
class ConvertUpgradeCommand : public ConvertChartCommand {
 public:
  explicit ConvertUpgradeCommand(CLI::App& group);

 private:
  bool Convert(VizConverter& converter, const std::string& input, std::string& xml) const override;
};

}  // namespace chartbridge

#endif  // APP_CONVERTUPGRADECOMMAND_H_
