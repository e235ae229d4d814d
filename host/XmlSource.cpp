// SPDX-License-Identifier: Apache-2.0
#include "host/XmlSource.h"

#include <algorithm>

namespace chartbridge {
namespace {

constexpr char kByteOrderMark[] = "\xEF\xBB\xBF";
constexpr char kBlank[] = " \t\r\n";

// Whether a character begins at this byte. Modified UTF-8 writes the second half of a pair as three
// bytes of its own, which begin no character either.
bool BeginsCharacter(const std::string& text, std::size_t at) {
  const auto byte = static_cast<unsigned char>(text[at]);
  if ((byte & 0xC0U) == 0x80U) return false;
  if (byte != 0xEDU || at + 1 >= text.size()) return true;
  return (static_cast<unsigned char>(text[at + 1]) & 0xF0U) != 0xB0U;
}

bool EndsLine(const std::string& text, std::size_t at) {
  if (text[at] == '\n') return true;
  return text[at] == '\r' && (at + 1 >= text.size() || text[at + 1] != '\n');
}

std::size_t LengthOfMark(const std::string& text) {
  return text.compare(0, 3, kByteOrderMark) == 0 ? 3 : 0;
}

}  // namespace

std::string XmlSource::Position(std::size_t offset) const {
  std::size_t line = 1;
  std::size_t column = 1;
  for (std::size_t at = LengthOfMark(_text); at < offset && at < _text.size(); ++at) {
    if (EndsLine(_text, at)) {
      ++line;
      column = 1;
    } else if (BeginsCharacter(_text, at)) {
      ++column;
    }
  }
  return "line " + std::to_string(line) + ", column " + std::to_string(column);
}

std::size_t XmlSource::Start(const pugi::xml_node& node) const {
  // Where the name of an element stands, or the text of others.
  const std::ptrdiff_t offset = node.offset_debug();
  if (offset < 0) return 0;
  const auto start = static_cast<std::size_t>(offset);
  if (node.type() == pugi::node_pcdata)
    return std::min(_text.find_first_not_of(kBlank, start), _text.size());
  const std::size_t bracket = _text.rfind('<', start);
  return bracket == std::string::npos ? start : bracket;
}

std::string XmlSource::Position(const pugi::xml_node& node) const { return Position(Start(node)); }

std::string XmlSource::Position(const pugi::xml_node& element, const std::string& attribute) const {
  const std::size_t start = Start(element);
  std::size_t at = start + 1 + std::string(element.name()).size();
  // Name, equals sign, quoted value; the text is known to be well-formed so far.
  while (at < _text.size()) {
    at = _text.find_first_not_of(kBlank, at);
    if (at == std::string::npos || _text[at] == '>' || _text[at] == '/') break;
    const std::size_t nameEnd = _text.find_first_of(" \t\r\n=", at);
    if (nameEnd == std::string::npos) break;
    if (_text.compare(at, nameEnd - at, attribute) == 0) return Position(at);
    const std::size_t quote = _text.find_first_of("\"'", nameEnd);
    if (quote == std::string::npos) break;
    const std::size_t end = _text.find(_text[quote], quote + 1);
    if (end == std::string::npos) break;
    at = end + 1;
  }
  return Position(start);
}

}  // namespace chartbridge
