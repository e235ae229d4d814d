// SPDX-License-Identifier: Apache-2.0
#ifndef APP_STANDARDINPUT_H_
#define APP_STANDARDINPUT_H_

#include <string>
#include <vector>

namespace chartbridge {

/// Throws `UsageError` when more than one of the inputs is standard input: it can be read once.
void CheckStandardInput(const std::vector<std::string>& paths);

}  // namespace chartbridge

#endif  // APP_STANDARDINPUT_H_
