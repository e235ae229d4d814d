// SPDX-License-Identifier: Apache-2.0
#include "host/GuardLibrary.h"

#include <dlfcn.h>

#include <filesystem>
#include <system_error>

namespace chartbridge {
namespace {

namespace fs = std::filesystem;

constexpr char kName[] = "libjniguard.so";

// Some address in this library, by which the loader knows where the library came from.
const char anchor = 0;

fs::path OwnFolder() {
  Dl_info info{};
  if (dladdr(&anchor, &info) == 0 || info.dli_fname == nullptr) return {};
  std::error_code error;
  return fs::absolute(info.dli_fname, error).parent_path();
}

// Beside this library when installed, in the neighbouring folder in a build tree.
std::string BesideThisLibrary(std::string& error) {
  const fs::path folder = OwnFolder();
  for (const fs::path& place :
       {folder / kName, folder / "guard" / kName, folder / ".." / "guard" / kName}) {
    std::error_code ignored;
    if (fs::exists(place, ignored)) return place.lexically_normal().string();
  }
  error = std::string(kName) + " is neither in " + folder.string() + " nor in guard/ next to it";
  return {};
}

}  // namespace

bool GuardLibrary::Load(const std::string& path, std::string& error) {
  const std::string place = path.empty() ? BesideThisLibrary(error) : path;
  if (place.empty()) return false;
  // Never unloaded: the JVM keeps calling into it.
  void* library = dlopen(place.c_str(), RTLD_NOW | RTLD_LOCAL);
  if (library == nullptr) {
    error = dlerror();
    return false;
  }
  _install = reinterpret_cast<InstallFunction>(dlsym(library, "jniguard_install_with_options"));
  if (_install == nullptr) error = place + " is not the guard";
  return _install != nullptr;
}

bool GuardLibrary::Install(JavaVM* vm, const std::string& options) const {
  return _install(vm, options.c_str()) == JNI_OK;
}

}  // namespace chartbridge
