// SPDX-License-Identifier: Apache-2.0
#include "host/ArchivePlaces.h"

#include <stdlib.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <system_error>

namespace chartbridge {
namespace {

namespace fs = std::filesystem;

// Beside the jar; make-class-archive writes the latter two.
constexpr char kClassList[] = "chartbridge.classlist";
constexpr char kLibraries[] = "libraries.txt";
constexpr char kArchive[] = "chartbridge.jsa";
constexpr char kKey[] = "chartbridge.jsa.key";

std::string ContentOf(const fs::path& file) {
  std::ifstream stream(file, std::ios::binary);
  return {std::istreambuf_iterator<char>(stream), {}};
}

// FNV-1a: the name must be the same in every process, and std::hash promises no such thing.
std::string HashOf(const std::string& text) {
  std::uint64_t hash = 0xcbf29ce484222325;
  for (const char c : text) {
    hash ^= static_cast<unsigned char>(c);
    hash *= 0x100000001b3;
  }
  char digits[17];
  std::snprintf(digits, sizeof digits, "%016llx", static_cast<unsigned long long>(hash));
  return digits;
}

// An archive is code as much as a jar is: nobody else may have written it.
bool IsOwn(const std::string& path, mode_t kind) {
  struct stat status {};
  return lstat(path.c_str(), &status) == 0 && (status.st_mode & S_IFMT) == kind &&
         status.st_uid == geteuid() && (status.st_mode & (S_IWGRP | S_IWOTH)) == 0;
}

// Where the user's caches are. Empty for a process that runs with more rights than its user has.
fs::path CacheHome() {
  const char* cache = secure_getenv("XDG_CACHE_HOME");
  if (cache != nullptr && *cache == '/') return cache;
  const char* home = secure_getenv("HOME");
  if (home != nullptr && *home == '/') return fs::path(home) / ".cache";
  return {};
}

std::string CacheFolder() {
  const fs::path caches = CacheHome();
  return caches.empty() ? std::string() : (caches / "chartbridge").string();
}

bool OwnsFolder(const fs::path& folder) {
  struct stat status {};
  return stat(folder.c_str(), &status) == 0 && S_ISDIR(status.st_mode) &&
         status.st_uid == geteuid();
}

// Root with the HOME of another user would make folders there that the user cannot enter.
bool MakeCacheFolder() {
  const fs::path caches = CacheHome();
  std::error_code error;
  if (!OwnsFolder(fs::exists(caches, error) ? caches : caches.parent_path())) return false;
  mkdir(caches.c_str(), S_IRWXU);
  mkdir(CacheFolder().c_str(), S_IRWXU);
  return IsOwn(CacheFolder(), S_IFDIR);
}

}  // namespace

ArchivePlaces::ArchivePlaces(const std::string& jvmLibrary, const std::string& jar) {
  std::error_code error;
  const fs::path home = fs::path(jvmLibrary).parent_path().parent_path().parent_path();
  const fs::path real = fs::canonical(jar, error);
  if (error || !fs::exists(real.parent_path() / kClassList, error)) return;
  // What kind of JVM it is, and which build of it.
  _key = ContentOf(home / "release");
  if (_key.empty()) return;
  const fs::path folder = real.parent_path();
  Describe(real);
  std::ifstream libraries(folder / kLibraries);
  for (std::string library; std::getline(libraries, library);) Describe(library);
  _java = home / "bin/java";
  _jar = real;
  _classList = folder / kClassList;
  _beside = folder;
}

void ArchivePlaces::Describe(const std::string& file) {
  struct stat status {};
  if (stat(file.c_str(), &status) != 0) return;
  _key += file + " " + std::to_string(status.st_size) + " " +
          std::to_string(status.st_mtim.tv_sec) + "\n";
}

std::string ArchivePlaces::Find() const {
  if (_jar.empty()) return {};
  const std::string beside = _beside + "/" + kArchive;
  if (access(beside.c_str(), R_OK) == 0 && ContentOf(fs::path(_beside) / kKey) == _key) {
    return beside;
  }
  const std::string cached = CacheFile();
  const bool isThere = !cached.empty() && IsOwn(cached, S_IFREG) && IsOwn(CacheFolder(), S_IFDIR);
  return isThere ? cached : std::string();
}

std::string ArchivePlaces::InCache() const {
  const std::string file = CacheFile();
  return !file.empty() && MakeCacheFolder() ? file : std::string();
}

std::string ArchivePlaces::CacheFile() const {
  const std::string folder = CacheFolder();
  if (_jar.empty() || folder.empty()) return {};
  return folder + "/classes-" + HashOf(_key) + ".jsa";
}

}  // namespace chartbridge
