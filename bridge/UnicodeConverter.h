// SPDX-License-Identifier: Apache-2.0
#ifndef BRIDGE_UNICODECONVERTER_H_
#define BRIDGE_UNICODECONVERTER_H_

#include <string>

#include "bridge/Export.h"

/// One text of the host, in its native multibyte encoding, as UTF-16 for Java.
///
/// The host's own transcoder (`TESKMBGenericToU16`) converts. A text that it refuses leaves the
/// converter empty (null buffer, length 0) without a message. Two zero units at least follow the
/// text.
class CHARTBRIDGE_EXPORT UnicodeConverter {
 public:
  /// @param text the text, in the encoding that the host's transcoder takes
  explicit UnicodeConverter(const std::string& text);
  /// Frees the code units.
  ~UnicodeConverter();

  UnicodeConverter(const UnicodeConverter&) = delete;
  UnicodeConverter& operator=(const UnicodeConverter&) = delete;

  /// The code units, owned by this object; null when the conversion failed.
  const unsigned short* toString() const;
  /// The number of UTF-16 code units; 0 when the text is empty or the conversion failed.
  long length() const;

 private:
  unsigned short* buffer;
  long count;
};

#endif  // BRIDGE_UNICODECONVERTER_H_
