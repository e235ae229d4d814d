// SPDX-License-Identifier: Apache-2.0
#ifndef HOST_DEBUGOUTPUT_H_
#define HOST_DEBUGOUTPUT_H_

#include <functional>
#include <string>

namespace chartbridge {

/// Sends the texts of `ChartBase::printDebugInfo` to `output` (no line end), or to standard error
/// again when it is empty. `output` may be called on any thread that runs an operation, one call at
/// a time, and must not call back into this function.
void SetDebugOutput(std::function<void(const std::string&)> output);

}  // namespace chartbridge

#endif  // HOST_DEBUGOUTPUT_H_
