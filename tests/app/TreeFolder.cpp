// SPDX-License-Identifier: Apache-2.0
#include "tests/app/TreeFolder.h"

#include <algorithm>
#include <filesystem>

namespace chartbridge {

namespace {

const std::vector<std::string> kModels = {"airquality.pmml", "iris.pmml", "titanic-forest.pmml"};

unsigned BigEndian(const std::string& bytes, std::size_t at) {
  unsigned value = 0;
  for (std::size_t i = 0; i < 4; ++i) {
    value = value << 8U | static_cast<unsigned char>(bytes.at(at + i));
  }
  return value;
}

}  // namespace

TreeFolder::TreeFolder() {
  for (const std::string& model : kModels) {
    std::filesystem::copy_file(std::string(CHARTBRIDGE_EXAMPLES) + "/trees/" + model, File(model));
  }
}

RunResult TreeFolder::Tree(const std::vector<std::string>& arguments, RunSettings settings) const {
  std::vector<std::string> all = {"tree"};
  all.insert(all.end(), arguments.begin(), arguments.end());
  settings.folder = Path();
  return RunCommand(all, settings);
}

std::string TreeFolder::SizeOf(const std::vector<std::string>& arguments) const {
  std::vector<std::string> all = {"size"};
  all.insert(all.end(), arguments.begin(), arguments.end());
  const RunResult result = Tree(all);
  return result.errors + result.output;
}

std::vector<std::string> TreeFolder::NewNames() const {
  std::vector<std::string> names = Names();
  names.erase(std::remove_if(names.begin(), names.end(),
                             [](const std::string& name) {
                               return std::find(kModels.begin(), kModels.end(), name) !=
                                      kModels.end();
                             }),
              names.end());
  return names;
}

std::string SizeOfPng(const std::string& png) {
  if (png.compare(0, 8, "\x89PNG\r\n\x1A\n") != 0 || png.size() < 24) return "no PNG";
  return std::to_string(BigEndian(png, 16)) + " " + std::to_string(BigEndian(png, 20)) + "\n";
}

std::string DisplayData(const std::string& attributes, const std::string& elements) {
  return "<tree-display xmlns=\"urn:chartbridge:tree-display:1\" " + attributes + ">" + elements +
         "</tree-display>\n";
}

}  // namespace chartbridge
