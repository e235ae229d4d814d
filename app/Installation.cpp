// SPDX-License-Identifier: Apache-2.0
#include "app/Installation.h"

#include <filesystem>
#include <system_error>

namespace chartbridge {

namespace {

// From the executable's folder: bin/ of an installation, app/ of a build folder.
constexpr const char* kFolders[] = {CHARTBRIDGE_INSTALLED_DATA, "../java"};
constexpr const char* kJar = "chartbridge-runtime.jar";
constexpr const char* kViewerFolders[] = {CHARTBRIDGE_INSTALLED_DATA "/viewer", "../viewer"};
constexpr const char* kViewerPage = "page.html";

}  // namespace

Installation::Installation() {
  namespace fs = std::filesystem;
  std::error_code error;
  const fs::path home = fs::read_symlink("/proc/self/exe", error).parent_path();
  for (const char* candidate : kViewerFolders) {
    const fs::path page = (home / candidate / kViewerPage).lexically_normal();
    if (_viewerPage.empty() && fs::exists(page, error)) _viewerPage = page;
  }
  for (const char* candidate : kFolders) {
    const fs::path folder = (home / candidate).lexically_normal();
    if (fs::exists(folder / kJar, error)) {
      _jar = folder / kJar;
      return;
    }
    if (!_searchedFolders.empty()) _searchedFolders += ", ";
    _searchedFolders += folder.string();
  }
}

}  // namespace chartbridge
