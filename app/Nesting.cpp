// SPDX-License-Identifier: Apache-2.0
#include "app/Nesting.h"

#include <algorithm>
#include <cstddef>
#include <pugixml.hpp>

#include "app/Failure.h"

namespace chartbridge {

namespace {

const std::string kByteOrderMark = "\xEF\xBB\xBF";

std::string TooDeep() { return "nested more than " + std::to_string(kMostLevels) + " levels deep"; }

/// Columns count characters of UTF-8.
std::string Place(const std::string& text, std::size_t at) {
  const auto begin = text.begin();
  const auto end = begin + static_cast<std::ptrdiff_t>(at);
  const std::size_t lineEnd = at == 0 ? std::string::npos : text.rfind('\n', at - 1);
  const std::size_t lineStart = lineEnd == std::string::npos ? 0 : lineEnd + 1;
  const auto line = 1 + std::count(begin, end, '\n');
  const auto column =
      1 + std::count_if(begin + static_cast<std::ptrdiff_t>(lineStart), end, [](char character) {
        return (static_cast<unsigned char>(character) & 0xC0U) != 0x80U;
      });
  return "line " + std::to_string(line) + ", column " + std::to_string(column);
}

/// The place behind the string that begins at a quote.
std::size_t EndOfString(const std::string& json, std::size_t quote) {
  for (std::size_t at = quote + 1; at < json.size(); ++at) {
    if (json[at] == '"') return at + 1;
    if (json[at] == '\\') ++at;
  }
  return json.size();
}

/// Finds the first element that is too deep, without calling itself.
class DepthCheck : public pugi::xml_tree_walker {
 public:
  bool for_each(pugi::xml_node& node) override {
    // The root's depth is 0.
    if (node.type() != pugi::node_element || depth() < kMostLevels) return true;
    _found = node;
    return false;
  }

  pugi::xml_node Found() const { return _found; }

 private:
  pugi::xml_node _found;
};

/// "line 1, column 2: ", or nothing where the parser read another encoding than UTF-8.
std::string PlaceOf(const pugi::xml_node& element, const std::string& xml) {
  // Of the name.
  const std::ptrdiff_t offset = element.offset_debug();
  if (offset < 1) return "";
  const std::size_t bracket = static_cast<std::size_t>(offset) - 1;
  const std::string tag = std::string("<") + element.name();
  if (bracket >= xml.size() || xml.compare(bracket, tag.size(), tag) != 0) return "";
  const std::size_t start =
      xml.compare(0, kByteOrderMark.size(), kByteOrderMark) == 0 ? kByteOrderMark.size() : 0;
  return Place(xml.substr(start), bracket - start) + ": ";
}

}  // namespace

void CheckNestingOfJson(const std::string& json, const std::string& name) {
  int levels = 0;
  std::size_t at = 0;
  while (at < json.size()) {
    const char character = json[at];
    if (character == '"') {
      at = EndOfString(json, at);
      continue;
    }
    if (character == ']' || character == '}') --levels;
    if (character == '[' || character == '{') ++levels;
    if (levels > kMostLevels) throw Failure(name + ": " + Place(json, at) + ": " + TooDeep());
    ++at;
  }
}

void CheckNestingOfXml(pugi::xml_document& document, const std::string& xml,
                       const std::string& name) {
  DepthCheck check;
  document.traverse(check);
  const pugi::xml_node found = check.Found();
  if (!found) return;
  throw Failure(name + ": " + PlaceOf(found, xml) + "<" + found.name() + "> is " + TooDeep());
}

}  // namespace chartbridge
