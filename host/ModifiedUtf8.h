// SPDX-License-Identifier: Apache-2.0
#ifndef HOST_MODIFIEDUTF8_H_
#define HOST_MODIFIEDUTF8_H_

#include <string>

namespace chartbridge {

/// Turns Java's modified UTF-8 into UTF-8: a surrogate pair of two three-byte forms becomes one
/// four-byte form, and the two-byte form of U+0000 becomes a zero byte. Text that is already UTF-8
/// stays as it is.
std::string FromModifiedUtf8(const std::string& text);

/// Writes the characters beyond the basic plane in a text or attribute value of XML as numeric
/// references, so that the same bytes are right as UTF-8 and as Java's modified UTF-8. Takes either
/// of the two.
std::string ReferenceSupplementary(const std::string& text);

/// Appends a character (up to U+10FFFF, no surrogate) in UTF-8.
void AppendUtf8(std::string& out, unsigned character);

}  // namespace chartbridge

#endif  // HOST_MODIFIEDUTF8_H_
