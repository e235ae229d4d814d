// SPDX-License-Identifier: Apache-2.0
#ifndef PLATFORM_CHARTBASE_H_
#define PLATFORM_CHARTBASE_H_

#include <string>

/// What the library uses of the host's chart utility library.
class ChartBase {
 public:
  /// Writes a diagnostic text to the chart utility library's debug output. `text` is in whatever
  /// encoding its origin had, without a line end. Called on any thread that runs an operation; it
  /// must not throw.
  static void printDebugInfo(const std::string& text);

  /// The zero-terminated UTF-16 name of the UTF-8 encoding, as `ChartTransformer::getEntireXML`
  /// takes it.
  static const unsigned short _utf8[];
};

#endif  // PLATFORM_CHARTBASE_H_
