// SPDX-License-Identifier: Apache-2.0
#include "host/JvmLocator.h"

#include <glob.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <sstream>
#include <system_error>
#include <vector>

namespace chartbridge {
namespace {

namespace fs = std::filesystem;

constexpr char kLibrary[] = "lib/server/libjvm.so";
constexpr char kDefaultHome[] = "/usr/lib/jvm/default-java";
constexpr char kVersionedHomes[] = "/usr/lib/jvm/java-17-openjdk-*";

std::string Environment(const char* name) {
  const char* value = std::getenv(name);
  return value == nullptr ? std::string() : std::string(value);
}

// The library of a Java home, or "".
std::string LibraryOf(const fs::path& home) {
  std::error_code error;
  const fs::path library = home / kLibrary;
  return fs::is_regular_file(library, error) ? library.string() : std::string();
}

void Note(JvmLocation& location, const std::string& place, const std::string& why) {
  if (!location.tried.empty()) location.tried += ", ";
  location.tried += place + " (" + why + ")";
}

bool TryHome(JvmLocation& location, const std::string& place, const fs::path& home) {
  location.library = LibraryOf(home);
  Note(location, place, location.library.empty() ? home.string() + " has no " + kLibrary : "found");
  return !location.library.empty();
}

std::string JavaOnPath() {
  std::istringstream path(Environment("PATH"));
  for (std::string folder; std::getline(path, folder, ':');) {
    std::string command = (fs::path(folder.empty() ? "." : folder) / "java").string();
    if (access(command.c_str(), X_OK) == 0) return command;
  }
  return {};
}

bool TryPath(JvmLocation& location) {
  const std::string command = JavaOnPath();
  if (command.empty()) {
    Note(location, "java on PATH", "none");
    return false;
  }
  // The command is usually a link to a link to the real one, in the bin folder of its home.
  std::error_code error;
  const fs::path real = fs::canonical(command, error);
  if (error) {
    Note(location, "java on PATH", command + ": " + error.message());
    return false;
  }
  return TryHome(location, "java on PATH", real.parent_path().parent_path());
}

std::vector<std::string> VersionedHomes() {
  std::vector<std::string> homes;
  glob_t found{};
  if (glob(kVersionedHomes, 0, nullptr, &found) == 0) {
    homes.assign(found.gl_pathv, found.gl_pathv + found.gl_pathc);
  }
  globfree(&found);
  return homes;
}

bool TryDistribution(JvmLocation& location) {
  if (TryHome(location, "the distribution's default", kDefaultHome)) return true;
  const std::vector<std::string> homes = VersionedHomes();
  if (homes.empty()) Note(location, kVersionedHomes, "none");
  for (const std::string& home : homes) {
    if (TryHome(location, "the distribution's Java 17", home)) return true;
  }
  return false;
}

}  // namespace

JvmLocation LocateJvm(const std::string& home) {
  JvmLocation location;
  const std::string environmentHome = Environment("JAVA_HOME");
  if (!home.empty()) {
    TryHome(location, "the Java home of the settings", home);
  } else if (!environmentHome.empty()) {
    TryHome(location, "JAVA_HOME", environmentHome);
  } else if (!TryPath(location)) {
    TryDistribution(location);
  }
  return location;
}

}  // namespace chartbridge
