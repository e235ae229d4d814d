// SPDX-License-Identifier: Apache-2.0
#include "host/LocaleScope.h"

#include <clocale>

namespace chartbridge {
namespace {

// One text that names the locale of every category, as setlocale takes it again.
std::string Locale() {
  const char* name = std::setlocale(LC_ALL, nullptr);
  return name == nullptr ? std::string() : std::string(name);
}

}  // namespace

LocaleScope::LocaleScope() : _own(Locale()) {}

LocaleScope::~LocaleScope() {
  // Other threads may be using the locale: it is touched only where it is another.
  if (!_own.empty() && Locale() != _own) std::setlocale(LC_ALL, _own.c_str());
}

}  // namespace chartbridge
