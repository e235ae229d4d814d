// SPDX-License-Identifier: Apache-2.0
#include "app/DumpFolder.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <system_error>

#include "app/Failure.h"

namespace chartbridge {

namespace {

constexpr const char* kVariable = "DumpChartTimePath";
constexpr const char* kFilePrefix = "JNI_Exceptions_";

}  // namespace

DumpFolder::DumpFolder() {
  if (const char* given = std::getenv(kVariable)) {
    _folder = given;
    _sizesBefore = Sizes();
    return;
  }
  _isPrivate = true;
  try {
    _private.emplace();
  } catch (const Failure&) {
    // Without the folder only the reason of a failure is lost, not the work.
    return;
  }
  _folder = _private->Path();
  setenv(kVariable, _folder.c_str(), 1);
}

DumpFolder::~DumpFolder() {
  if (_private) unsetenv(kVariable);
}

std::map<std::string, std::uintmax_t> DumpFolder::Sizes() const {
  std::map<std::string, std::uintmax_t> sizes;
  std::error_code error;
  // An empty variable means the root folder to the library.
  const std::string folder = _folder.empty() ? "/" : _folder;
  for (const auto& entry : std::filesystem::directory_iterator(folder, error)) {
    if (entry.path().filename().string().rfind(kFilePrefix, 0) != 0) continue;
    const std::uintmax_t size = entry.file_size(error);
    if (!error) sizes[entry.path().string()] = size;
  }
  return sizes;
}

std::string DumpFolder::NewRecords() const {
  if (_folder.empty() && _isPrivate) return "";
  std::string records;
  for (const auto& [path, size] : Sizes()) {
    const auto before = _sizesBefore.find(path);
    const std::uintmax_t from = before == _sizesBefore.end() ? 0 : before->second;
    if (size <= from) continue;
    std::ifstream file(path, std::ios::binary);
    file.seekg(static_cast<std::streamoff>(from));
    records.append(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
  }
  return records;
}

std::string DumpFolder::WhyEmpty() const {
  if (_isPrivate) return "it failed, and there is no record of why";
  return "it failed, and the folder that DumpChartTimePath names took no record of why";
}

}  // namespace chartbridge
