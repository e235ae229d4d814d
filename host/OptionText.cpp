// SPDX-License-Identifier: Apache-2.0
#include "host/OptionText.h"

#include <sstream>

namespace chartbridge {
namespace {

bool IsBlank(char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r'; }

/// Reads one option after the other from a text.
class OptionReader {
 public:
  explicit OptionReader(const std::string& text) : _text(text) {}

  // False at the end of the text.
  bool SkipBlanks() {
    while (_at < _text.size() && IsBlank(_text[_at])) ++_at;
    return _at < _text.size();
  }

  bool Read(std::string& option) {
    while (_at < _text.size() && !IsBlank(_text[_at])) {
      if (!ReadPiece(option)) return false;
    }
    return true;
  }

 private:
  bool ReadPiece(std::string& option) {
    const char c = _text[_at++];
    if (c == '\'') return ReadSingleQuoted(option);
    if (c == '"') return ReadDoubleQuoted(option);
    if (c == '\\') return ReadEscaped(option);
    option += c;
    return true;
  }

  bool ReadEscaped(std::string& option) {
    if (_at == _text.size()) return false;
    option += _text[_at++];
    return true;
  }

  bool ReadSingleQuoted(std::string& option) {
    const std::size_t end = _text.find('\'', _at);
    if (end == std::string::npos) return false;
    option.append(_text, _at, end - _at);
    _at = end + 1;
    return true;
  }

  bool ReadDoubleQuoted(std::string& option) {
    while (_at < _text.size()) {
      char c = _text[_at++];
      if (c == '"') return true;
      const bool escapes =
          c == '\\' && _at < _text.size() && (_text[_at] == '"' || _text[_at] == '\\');
      if (escapes) c = _text[_at++];
      option += c;
    }
    return false;
  }

  const std::string& _text;
  std::size_t _at = 0;
};

}  // namespace

bool SplitOptions(const std::string& text, std::vector<std::string>& options) {
  OptionReader reader(text);
  while (reader.SkipBlanks()) {
    std::string option;
    if (!reader.Read(option)) return false;
    options.push_back(option);
  }
  return true;
}

std::vector<std::string> SplitPath(const std::string& text) {
  std::vector<std::string> entries;
  std::istringstream list(text);
  for (std::string entry; std::getline(list, entry, ':');) {
    if (!entry.empty()) entries.push_back(entry);
  }
  return entries;
}

}  // namespace chartbridge
