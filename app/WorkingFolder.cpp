// SPDX-License-Identifier: Apache-2.0
#include "app/WorkingFolder.h"

#include <unistd.h>

#include <array>
#include <cerrno>
#include <climits>
#include <cstring>
#include <filesystem>

#include "app/Failure.h"

namespace chartbridge {

namespace {

// Why the command is elsewhere; empty when it is not.
std::string reason;

/// Why Java would not start here; empty when it would.
std::string WhyUnusable() {
  // As large as the one that Java reads the path into.
  std::array<char, PATH_MAX> path{};
  if (getcwd(path.data(), path.size()) != nullptr) return "";
  return errno == ENOENT ? "the working folder has been removed"
                         : "the path of the working folder is too long";
}

}  // namespace

WorkingFolder::WorkingFolder() {
  const std::string why = WhyUnusable();
  if (why.empty()) return;
  _instead.emplace();
  if (chdir(_instead->Path().c_str()) != 0) {
    throw Failure(_instead->Path() + ": " + std::strerror(errno));
  }
  reason = why;
}

WorkingFolder::~WorkingFolder() { reason.clear(); }

void WorkingFolder::Check(const std::string& path) {
  if (reason.empty() || std::filesystem::path(path).is_absolute()) return;
  throw Failure(path + ": " + reason + "; change to another, or give the full path");
}

}  // namespace chartbridge
