// SPDX-License-Identifier: Apache-2.0
#ifndef APP_CONVERTGPLCOMMAND_H_
#define APP_CONVERTGPLCOMMAND_H_

#include <CLI/CLI.hpp>
#include <string>

#include "app/ConvertChartCommand.h"

namespace chartbridge {

/// `chartbridge convert gpl`: graph language becomes chart XML.
class ConvertGplCommand : public ConvertChartCommand {
 public:
  explicit ConvertGplCommand(CLI::App& group);

 private:
  bool Convert(VizConverter& converter, const std::string& input, std::string& xml) const override;
};

}  // namespace chartbridge

#endif  // APP_CONVERTGPLCOMMAND_H_
