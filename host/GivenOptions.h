// SPDX-License-Identifier: Apache-2.0
#ifndef HOST_GIVENOPTIONS_H_
#define HOST_GIVENOPTIONS_H_

#include <string>
#include <vector>

#include "host/JvmSettings.h"

namespace chartbridge {

/// The JVM options that the host and the user have given, for all who have to go by them.
class GivenOptions {
 public:
  explicit GivenOptions(const JvmSettings& settings);

  /// Whether TESK_JVM_OPTIONS can be read.
  bool AreReadable() const { return _areReadable; }

  /// Those that hold in any case: `JvmSettings::options`, then TESK_JVM_OPTIONS.
  const std::vector<std::string>& Firm() const { return _firm; }

  /// The members of `JvmSettings::defaultOptions` that are the library's.
  const std::vector<std::string>& LibraryDefaults() const { return _libraryDefaults; }
  /// The members that the host has added, which replace the library's.
  const std::vector<std::string>& HostDefaults() const { return _hostDefaults; }

  /// All that somebody else than the library has said: firm ones and the host's defaults.
  std::vector<std::string> All() const;

 private:
  bool _areReadable;
  std::vector<std::string> _firm;
  std::vector<std::string> _libraryDefaults;
  std::vector<std::string> _hostDefaults;
};

}  // namespace chartbridge

#endif  // HOST_GIVENOPTIONS_H_
