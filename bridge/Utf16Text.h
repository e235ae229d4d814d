// SPDX-License-Identifier: Apache-2.0
#ifndef BRIDGE_UTF16TEXT_H_
#define BRIDGE_UTF16TEXT_H_

#include <jni.h>

#include <memory>
#include <string>

namespace chartbridge {

/// A host's path or text as UTF-16, converted with ICU's default converter of the process.
///
/// The codepage name that a host stores in an editor plays no part here. Conversion errors are not
/// reported: the text is what ICU converted. Owns its units.
class Utf16Text {
 public:
  explicit Utf16Text(const std::string& text);

  Utf16Text(const Utf16Text&) = delete;
  Utf16Text& operator=(const Utf16Text&) = delete;

  /// The code units, for `NewString`. Not null, not terminated.
  const jchar* data() const { return _units.get(); }
  /// The number of code units.
  int length() const { return _length; }

 private:
  std::unique_ptr<jchar[]> _units;
  int _length;
};

}  // namespace chartbridge

#endif  // BRIDGE_UTF16TEXT_H_
