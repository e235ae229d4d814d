// SPDX-License-Identifier: Apache-2.0
#ifndef TESTS_INTEGRATION_PROCESSSTATE_H_
#define TESTS_INTEGRATION_PROCESSSTATE_H_

#include <map>
#include <string>
#include <vector>

namespace chartbridge {

/// What belongs to a process and its calling thread, and what a library in it could change, as
/// texts by name: every signal's action and flags, the thread's signal mask, its floating-point
/// controls, the locale, the environment, the descriptors, the working folder, the file mode mask,
/// the resource limits.
using ProcessState = std::map<std::string, std::string>;

/// The state now, of the calling thread.
ProcessState CaptureProcessState();

/// One line for each difference: "locale: de_DE.UTF-8 -> C", "descriptor 7: none -> /a/file".
std::vector<std::string> Differences(const ProcessState& before, const ProcessState& after);

/// One line for each thread of this process, other than the calling one, that would run a handler
/// of a signal that is sent to the whole process: "thread VM Thread takes 1 2 15".
std::vector<std::string> ThreadsThatTakeSignals();

}  // namespace chartbridge

#endif  // TESTS_INTEGRATION_PROCESSSTATE_H_
