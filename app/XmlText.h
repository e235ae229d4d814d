// SPDX-License-Identifier: Apache-2.0
#ifndef APP_XMLTEXT_H_
#define APP_XMLTEXT_H_

#include <string>

namespace chartbridge {

/// The text of an XML document in UTF-8, without a byte order mark, whatever encoding its byte
/// order mark or its declaration names; without both it is UTF-8. The declaration itself stays.
///
/// Throws `Failure` when the encoding is not known, or the bytes are no text in it.
///
/// @param bytes the document
/// @param name what to call it in messages
std::string XmlText(const std::string& bytes, const std::string& name);

}  // namespace chartbridge

#endif  // APP_XMLTEXT_H_
