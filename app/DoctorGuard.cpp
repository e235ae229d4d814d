// SPDX-License-Identifier: Apache-2.0
#include "app/DoctorGuard.h"

#include <dlfcn.h>
#include <link.h>

#include <cstddef>
#include <filesystem>

#include "guard/jniguard.h"

namespace chartbridge {

namespace {

int TakePathOfGuard(dl_phdr_info* library, std::size_t, void* path) {
  const std::filesystem::path name(library->dlpi_name);
  if (name.filename().string().rfind("libjniguard.so", 0) != 0) return 0;
  *static_cast<std::string*>(path) = name.string();
  return 1;
}

/// The guard is loaded by its path and out of sight of other libraries; the loader knows it.
void* LoadedGuard() {
  std::string path;
  if (dl_iterate_phdr(&TakePathOfGuard, &path) == 0) return nullptr;
  return dlopen(path.c_str(), RTLD_NOW | RTLD_NOLOAD);
}

template <typename Function>
Function* FunctionOf(void* library, const char* name) {
  return reinterpret_cast<Function*>(dlsym(library, name));
}

}  // namespace

DoctorGuard::DoctorGuard() {
  void* library = LoadedGuard();
  if (library == nullptr) return;
  auto* isInstalled = FunctionOf<decltype(jniguard_is_installed)>(library, "jniguard_is_installed");
  auto* countOf = FunctionOf<decltype(jniguard_count)>(library, "jniguard_count");
  auto* nameOf = FunctionOf<decltype(jniguard_kind_name)>(library, "jniguard_kind_name");
  if (isInstalled == nullptr || countOf == nullptr || nameOf == nullptr) return;

  _isActive = isInstalled() != 0;
  for (int kind = 0; kind < JNIGUARD_KINDS; ++kind) {
    const unsigned long long count = countOf(kind);
    if (count == 0) continue;
    if (!_caught.empty()) _caught += ", ";
    _caught += std::to_string(count) + " x " + nameOf(kind);
  }
}

}  // namespace chartbridge
