// SPDX-License-Identifier: Apache-2.0
#include "tests/app/WorkFolder.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <system_error>

namespace chartbridge {

WorkFolder::WorkFolder() {
  std::string pattern = std::filesystem::temp_directory_path() / "chartbridge-test-XXXXXX";
  if (mkdtemp(pattern.data()) == nullptr) throw std::runtime_error("no temporary folder");
  _path = pattern;
}

WorkFolder::~WorkFolder() {
  std::error_code ignored;
  std::filesystem::remove_all(_path, ignored);
}

void WorkFolder::Write(const std::string& name, const std::string& content) const {
  std::ofstream file(File(name), std::ios::binary);
  file << content;
  if (!file.flush()) throw std::runtime_error("cannot write " + File(name));
}

std::string WorkFolder::Read(const std::string& name) const {
  std::ifstream file(File(name), std::ios::binary);
  return std::string(std::istreambuf_iterator<char>(file), {});
}

std::vector<std::string> WorkFolder::Names() const {
  std::vector<std::string> names;
  for (const auto& entry : std::filesystem::directory_iterator(_path)) {
    names.push_back(entry.path().filename().string());
  }
  std::sort(names.begin(), names.end());
  return names;
}

}  // namespace chartbridge
