// SPDX-License-Identifier: Apache-2.0
#ifndef GUARD_GUARDOPTIONS_H_
#define GUARD_GUARDOPTIONS_H_

#include <string>
#include <vector>

namespace chartbridge {

/// What a host asked of the guard.
struct GuardOptions {
  bool report = false;
  /// Where the report goes; empty is standard error.
  std::string reportFile;
  bool log = false;
  /// Options that do not exist, as they were written.
  std::vector<std::string> unknown;
};

/// Reads a comma-separated list of options. Null and empty are no options.
GuardOptions ParseGuardOptions(const char* text);

}  // namespace chartbridge

#endif  // GUARD_GUARDOPTIONS_H_
