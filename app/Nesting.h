// SPDX-License-Identifier: Apache-2.0
#ifndef APP_NESTING_H_
#define APP_NESTING_H_

#include <string>

namespace pugi {
class xml_document;
}

namespace chartbridge {

/// How deep the elements of an XML document and the objects and arrays of a JSON document may nest.
/// What is made of a document is copied, written and given back by functions that call themselves
/// for each level, and a stack ends after some ten thousand of them. The Java classes have the same
/// limit, some of their documents a lower one.
constexpr int kMostLevels = 512;

/// Throws `Failure` with the line and the column where a JSON document becomes too deep. To be
/// called before anything else looks at it; whether it is well-formed does not matter.
///
/// @param name what to call the document in the message
void CheckNestingOfJson(const std::string& json, const std::string& name);

/// Throws `Failure` when a parsed XML document is too deep, with the line and the column where the
/// text is in UTF-8. To be called right after parsing.
///
/// @param xml the text that was parsed
/// @param name what to call the document in the message
void CheckNestingOfXml(pugi::xml_document& document, const std::string& xml,
                       const std::string& name);

}  // namespace chartbridge

#endif  // APP_NESTING_H_
