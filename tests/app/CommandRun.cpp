// SPDX-License-Identifier: Apache-2.0
#include "tests/app/CommandRun.h"

#include "tests/app/StartedProgram.h"

namespace chartbridge {

const std::string kUnset = "\x01unset";

RunResult RunProgram(const std::vector<std::string>& arguments, const RunSettings& settings) {
  return StartedProgram(arguments, settings).Result();
}

RunResult RunCommand(const std::vector<std::string>& arguments, const RunSettings& settings) {
  std::vector<std::string> all = {CHARTBRIDGE_COMMAND};
  all.insert(all.end(), arguments.begin(), arguments.end());
  return RunProgram(all, settings);
}

}  // namespace chartbridge
