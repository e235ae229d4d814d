// SPDX-License-Identifier: Apache-2.0
#ifndef HOST_DEBUGTEXT_H_
#define HOST_DEBUGTEXT_H_

#include <string>

namespace chartbridge {

/// Writes a text to where `SetDebugOutput` says.
void WriteDebugText(const std::string& text);

}  // namespace chartbridge

#endif  // HOST_DEBUGTEXT_H_
