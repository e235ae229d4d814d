// SPDX-License-Identifier: Apache-2.0
#include "app/ScratchFolder.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <system_error>

#include "app/Failure.h"
#include "app/SignalCleanup.h"

namespace chartbridge {

ScratchFolder::ScratchFolder() {
  std::error_code error;
  const std::filesystem::path parent = std::filesystem::temp_directory_path(error);
  _path = (error ? std::filesystem::path("/tmp") : parent) / "chartbridge-XXXXXX";
  const auto lock = SignalCleanup::Lock();
  if (mkdtemp(_path.data()) == nullptr) {
    throw Failure("no folder for temporary files: " + _path + ": " + std::strerror(errno));
  }
  SignalCleanup::Add(_path);
}

ScratchFolder::~ScratchFolder() {
  const auto lock = SignalCleanup::Lock();
  std::error_code ignored;
  std::filesystem::remove_all(_path, ignored);
  SignalCleanup::Remove(_path);
}

}  // namespace chartbridge
