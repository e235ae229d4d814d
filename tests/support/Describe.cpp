// SPDX-License-Identifier: Apache-2.0
#include "tests/support/Describe.h"

#include <unicode/unistr.h>

#include <cstddef>
#include <cstdio>

namespace chartbridge::testing {
namespace {

constexpr std::size_t kLongest = 400;
constexpr std::size_t kShown = 40;

void AppendEscaped(std::string& text, char byte) {
  if (byte == '"' || byte == '\\') {
    text += '\\';
    text += byte;
    return;
  }
  if (byte >= 0x20 && byte < 0x7f) {
    text += byte;
    return;
  }
  char escape[8];
  std::snprintf(escape, sizeof escape, "\\x%02X",
                static_cast<unsigned>(static_cast<unsigned char>(byte)));
  text += escape;
}

}  // namespace

std::string Quoted(const std::string& bytes) {
  const bool cut = bytes.size() > kLongest;
  std::string text = "\"";
  for (const char byte : cut ? bytes.substr(0, kShown) : bytes) AppendEscaped(text, byte);
  text += "\"";
  if (cut) text += "... " + std::to_string(bytes.size()) + " bytes";
  return text;
}

std::u16string Utf16(const std::string& utf8) {
  const icu::UnicodeString text = icu::UnicodeString::fromUTF8(utf8);
  return std::u16string(text.getBuffer(), static_cast<std::size_t>(text.length()));
}

std::string Utf8(const std::u16string& text) {
  std::string utf8;
  icu::UnicodeString(text.data(), static_cast<int32_t>(text.size())).toUTF8String(utf8);
  return utf8;
}

}  // namespace chartbridge::testing
