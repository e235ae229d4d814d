// SPDX-License-Identifier: Apache-2.0
#ifndef APP_WINDOWPLACE_H_
#define APP_WINDOWPLACE_H_

#include <string>

namespace chartbridge {

/// Where a window stands on the screen, in pixels, its frame included.
struct WindowPlace {
  long x = 60;
  long y = 60;
  long width = 1000;
  long height = 700;
};

/// A place as X11 programs take it, "WIDTHxHEIGHT+X+Y"; without "+X+Y" only the extent changes.
/// Throws `UsageError` for anything else.
WindowPlace ParseWindowPlace(const std::string& geometry);

}  // namespace chartbridge

#endif  // APP_WINDOWPLACE_H_
