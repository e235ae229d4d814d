// SPDX-License-Identifier: Apache-2.0
#include "host/XmlValue.h"

#include <charconv>

#include "host/ModifiedUtf8.h"

namespace chartbridge {
namespace {

struct Entity {
  const char* name;
  unsigned character;
};
constexpr Entity kEntities[] = {
    {"amp", '&'}, {"lt", '<'}, {"gt", '>'}, {"quot", '"'}, {"apos", '\''}};

constexpr unsigned kNone = 0;

bool IsXmlCharacter(unsigned c) {
  if (c < 0x20U) return c == '\t' || c == '\n' || c == '\r';
  const bool isSurrogate = c >= 0xD800U && c <= 0xDFFFU;
  return !isSurrogate && c != 0xFFFEU && c != 0xFFFFU && c <= 0x10FFFFU;
}

unsigned NumberedCharacter(const std::string& digits, int base) {
  unsigned character = kNone;
  const char* end = digits.data() + digits.size();
  const auto result = std::from_chars(digits.data(), end, character, base);
  const bool isNumber = result.ec == std::errc() && result.ptr == end;
  return isNumber && IsXmlCharacter(character) ? character : kNone;
}

// What stands between the ampersand and the semicolon, as a character; kNone for no reference.
unsigned Character(const std::string& reference) {
  if (reference.compare(0, 2, "#x") == 0) return NumberedCharacter(reference.substr(2), 16);
  if (reference.compare(0, 1, "#") == 0) return NumberedCharacter(reference.substr(1), 10);
  for (const Entity& entity : kEntities) {
    if (reference == entity.name) return entity.character;
  }
  return kNone;
}

// The character of the reference at `at`, which becomes the place behind it.
unsigned ReadReference(const std::string& written, std::size_t& at) {
  const std::size_t end = written.find(';', at);
  if (end == std::string::npos) return kNone;
  const unsigned character = Character(written.substr(at + 1, end - at - 1));
  at = end + 1;
  return character;
}

}  // namespace

bool DecodeXmlValue(const std::string& written, std::string& value) {
  value.clear();
  for (std::size_t at = 0; at < written.size();) {
    const char c = written[at];
    if (c == '<') return false;
    if (c == '&') {
      const unsigned character = ReadReference(written, at);
      if (character == kNone) return false;
      AppendUtf8(value, character);
      continue;
    }
    const bool isLineEnd = c == '\r' && at + 1 < written.size() && written[at + 1] == '\n';
    value += c == '\t' || c == '\n' || c == '\r' ? ' ' : c;
    at += isLineEnd ? 2 : 1;
  }
  return true;
}

std::size_t FindBadReference(const std::string& written) {
  for (std::size_t at = written.find('&'); at != std::string::npos; at = written.find('&', at)) {
    const std::size_t ampersand = at;
    if (ReadReference(written, at) == kNone) return ampersand;
  }
  return std::string::npos;
}

std::string EncodeXmlValue(const std::string& value) {
  std::string written;
  for (const char c : value) {
    switch (c) {
      case '&':
        written += "&amp;";
        break;
      case '<':
        written += "&lt;";
        break;
      case '"':
        written += "&quot;";
        break;
      case '\t':
      case '\n':
      case '\r':
        written += "&#" + std::to_string(static_cast<int>(c)) + ";";
        break;
      default:
        written += c;
    }
  }
  return written;
}

}  // namespace chartbridge
