// SPDX-License-Identifier: Apache-2.0
#include "host/GivenOptions.h"

#include <algorithm>
#include <cstdlib>

#include "host/OptionText.h"

namespace chartbridge {

GivenOptions::GivenOptions(const JvmSettings& settings) : _firm(settings.options) {
  const char* byUser = std::getenv("TESK_JVM_OPTIONS");
  _areReadable = byUser == nullptr || SplitOptions(byUser, _firm);
  const std::vector<std::string> library = DefaultJvmOptions();
  for (const std::string& option : settings.defaultOptions) {
    const bool isLibrarys = std::find(library.begin(), library.end(), option) != library.end();
    (isLibrarys ? _libraryDefaults : _hostDefaults).push_back(option);
  }
}

std::vector<std::string> GivenOptions::All() const {
  std::vector<std::string> all = _hostDefaults;
  all.insert(all.end(), _firm.begin(), _firm.end());
  return all;
}

}  // namespace chartbridge
