// SPDX-License-Identifier: Apache-2.0
#ifndef HOST_ICUTEXT_H_
#define HOST_ICUTEXT_H_

#include <string>

namespace chartbridge {

/// Decodes bytes in the encoding of that name; a null name is the host's native encoding. Bytes
/// that are no text in it become U+FFFD. False when ICU does not know the encoding or the text is
/// too long for it.
bool DecodeText(const std::string& bytes, const char* encoding, std::u16string& text);

/// Encodes text for XML: a character that the encoding lacks becomes a numeric reference. A lone
/// surrogate becomes U+FFFD. False as for `DecodeText`.
bool EncodeXml(const std::u16string& text, const char* encoding, std::string& bytes);

/// UTF-16 to UTF-8. A lone surrogate becomes U+FFFD.
std::string ToUtf8(const std::u16string& text);

}  // namespace chartbridge

#endif  // HOST_ICUTEXT_H_
