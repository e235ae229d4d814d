// SPDX-License-Identifier: Apache-2.0
#include "app/WindowPlace.h"

#include <regex>

#include "app/Failure.h"

namespace chartbridge {

WindowPlace ParseWindowPlace(const std::string& geometry) {
  // Five digits are more than any screen has, and fit every number type.
  static const std::regex form("([0-9]{1,5})x([0-9]{1,5})(\\+([0-9]{1,5})\\+([0-9]{1,5}))?");
  std::smatch match;
  WindowPlace place;
  if (std::regex_match(geometry, match, form)) {
    place.width = std::stol(match[1]);
    place.height = std::stol(match[2]);
    if (match[3].matched) {
      place.x = std::stol(match[4]);
      place.y = std::stol(match[5]);
    }
    if (place.width > 0 && place.height > 0) return place;
  }
  throw UsageError(
      "--geometry: expected WIDTHxHEIGHT or WIDTHxHEIGHT+X+Y in pixels, such as "
      "1000x700+60+60");
}

}  // namespace chartbridge
