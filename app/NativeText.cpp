// SPDX-License-Identifier: Apache-2.0
#include "app/NativeText.h"

#include <langinfo.h>

#include <clocale>
#include <cstdlib>
#include <string>

namespace chartbridge {

namespace {

bool IsSet(const char* variable) {
  const char* value = std::getenv(variable);
  return value != nullptr && *value != '\0';
}

}  // namespace

void AdoptUserEncoding() {
  // Only the encoding: numbers on the command line have a decimal point in every language.
  std::setlocale(LC_CTYPE, "");
  if (std::string(nl_langinfo(CODESET)) == "UTF-8") return;
  if (std::setlocale(LC_CTYPE, "C.UTF-8") == nullptr) return;
  // The JVM sets the locale again, from the environment. LC_ALL would override LC_CTYPE there.
  setenv(IsSet("LC_ALL") ? "LC_ALL" : "LC_CTYPE", "C.UTF-8", 1);
}

std::string OnOneLine(const std::string& text) {
  std::string line;
  bool atLineEnd = false;
  for (const char c : text) {
    if (c == '\n' || c == '\r') {
      while (!line.empty() && line.back() == ' ') line.pop_back();
      atLineEnd = true;
    } else if (atLineEnd && (c == ' ' || c == '\t')) {
      continue;
    } else {
      if (atLineEnd && !line.empty()) line += ' ';
      atLineEnd = false;
      line += c;
    }
  }
  return line;
}

}  // namespace chartbridge
