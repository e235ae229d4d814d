// SPDX-License-Identifier: Apache-2.0
#include "guard/GuardOptions.h"

#include <sstream>

namespace chartbridge {
namespace {

constexpr char kReportTo[] = "report=";
constexpr std::size_t kReportToLength = sizeof kReportTo - 1;

void ParseOption(const std::string& option, GuardOptions& options) {
  if (option == "report") {
    options.report = true;
  } else if (option.compare(0, kReportToLength, kReportTo) == 0 &&
             option.size() > kReportToLength) {
    options.report = true;
    options.reportFile = option.substr(kReportToLength);
  } else if (option == "log") {
    options.log = true;
  } else if (!option.empty()) {
    options.unknown.push_back(option);
  }
}

}  // namespace

GuardOptions ParseGuardOptions(const char* text) {
  GuardOptions options;
  if (text == nullptr) return options;
  std::istringstream list(text);
  for (std::string option; std::getline(list, option, ',');) ParseOption(option, options);
  return options;
}

}  // namespace chartbridge
