// SPDX-License-Identifier: Apache-2.0
#ifndef HOST_XMLVALUE_H_
#define HOST_XMLVALUE_H_

#include <cstddef>
#include <string>

namespace chartbridge {

/// Reads an attribute value as it stands between its quotes: references become their characters,
/// and line ends and tabs blanks. False when a reference names no character that XML can hold, or
/// there is an ampersand without one, or a `<`.
bool DecodeXmlValue(const std::string& written, std::string& value);

/// The offset of the first ampersand that begins no reference to a character that XML can hold;
/// `std::string::npos` when there is none. Only the five entities that XML itself knows count,
/// since a document without a document type declaration has no others.
std::size_t FindBadReference(const std::string& written);

/// Writes a value so that it can stand in double quotes and reads back the same.
std::string EncodeXmlValue(const std::string& value);

}  // namespace chartbridge

#endif  // HOST_XMLVALUE_H_
