// SPDX-License-Identifier: Apache-2.0
#include "tests/integration/JavaHomes.h"

#include <cstdlib>
#include <filesystem>
#include <set>
#include <system_error>

namespace chartbridge {
namespace {

namespace fs = std::filesystem;

std::string Canonical(const fs::path& path) {
  std::error_code error;
  return fs::canonical(path, error).string();
}

}  // namespace

std::string DefaultJavaHome() {
  const char* home = std::getenv("JAVA_HOME");
  return Canonical(home == nullptr || *home == '\0' ? CHARTBRIDGE_TEST_JAVA_HOME : home);
}

std::string OtherJavaHome() {
  std::error_code error;
  std::set<std::string> homes;
  for (const auto& entry : fs::directory_iterator("/usr/lib/jvm", error)) {
    if (fs::exists(entry.path() / "lib/server/libjvm.so", error)) {
      homes.insert(Canonical(entry.path()));
    }
  }
  homes.erase(DefaultJavaHome());
  return homes.empty() ? std::string() : *homes.rbegin();
}

}  // namespace chartbridge
