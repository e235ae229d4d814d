// SPDX-License-Identifier: Apache-2.0
#include "tests/integration/TempFolder.h"

#include <cstdlib>
#include <filesystem>
#include <stdexcept>
#include <system_error>

namespace chartbridge {

TempFolder::TempFolder() {
  _path = (std::filesystem::temp_directory_path() / "chartbridge-test-XXXXXX").string();
  if (mkdtemp(_path.data()) == nullptr) throw std::runtime_error("cannot make " + _path);
}

TempFolder::~TempFolder() {
  std::error_code ignored;
  std::filesystem::remove_all(_path, ignored);
}

}  // namespace chartbridge
