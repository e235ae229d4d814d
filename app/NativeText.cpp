// SPDX-License-Identifier: Apache-2.0
#include "app/NativeText.h"

#include <iconv.h>
#include <langinfo.h>

#include <cerrno>
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
  if (std::string(nl_langinfo(CODESET)) != "ANSI_X3.4-1968") return;
  if (std::setlocale(LC_CTYPE, "C.UTF-8") == nullptr) return;
  // The JVM sets the locale again, from the environment. LC_ALL would override LC_CTYPE there.
  setenv(IsSet("LC_ALL") ? "LC_ALL" : "LC_CTYPE", "C.UTF-8", 1);
}

std::string ToNativeText(const std::string& utf8) {
  const std::string codeset = nl_langinfo(CODESET);
  if (codeset == "UTF-8") return utf8;
  iconv_t converter = iconv_open((codeset + "//TRANSLIT").c_str(), "UTF-8");
  // The failure value of iconv_open is a pointer made of -1.
  if (converter == reinterpret_cast<iconv_t>(-1)) return utf8;  // NOLINT(performance-no-int-to-ptr)

  std::string input = utf8;
  char* from = input.data();
  std::size_t left = input.size();
  std::string output;
  while (left > 0) {
    char chunk[256];
    char* to = chunk;
    std::size_t room = sizeof chunk;
    const std::size_t result = iconv(converter, &from, &left, &to, &room);
    output.append(chunk, static_cast<std::size_t>(to - chunk));
    if (result != static_cast<std::size_t>(-1) || errno == E2BIG) continue;
    output += '?';
    ++from;
    --left;
  }
  iconv_close(converter);
  return output;
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
