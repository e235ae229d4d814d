// SPDX-License-Identifier: Apache-2.0
#ifndef TESTS_INTEGRATION_READFILE_H_
#define TESTS_INTEGRATION_READFILE_H_

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

namespace chartbridge {

/// The bytes of a file; empty when it cannot be read.
inline std::string ReadFile(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

/// The bytes of all files in a folder, such as the records of Java exceptions, one behind the
/// other.
inline std::string ReadFolder(const std::string& path) {
  std::string text;
  for (const auto& entry : std::filesystem::directory_iterator(path)) {
    text += ReadFile(entry.path().string());
  }
  return text;
}

}  // namespace chartbridge

#endif  // TESTS_INTEGRATION_READFILE_H_
