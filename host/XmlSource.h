// SPDX-License-Identifier: Apache-2.0
#ifndef HOST_XMLSOURCE_H_
#define HOST_XMLSOURCE_H_

#include <cstddef>
#include <pugixml.hpp>
#include <string>

namespace chartbridge {

/// The text of an XML document, for messages that say where something stands in it.
///
/// Positions read "line 3, column 5", both from 1, columns in characters.
class XmlSource {
 public:
  explicit XmlSource(std::string text) : _text(std::move(text)) {}

  const std::string& Text() const { return _text; }

  /// The offset of a node of the parsed text: of the `<` of a tag, of the first byte of a text
  /// that is no blank.
  std::size_t Start(const pugi::xml_node& node) const;

  /// Where the byte at `offset` stands.
  std::string Position(std::size_t offset) const;
  /// Where a node of the parsed text begins.
  std::string Position(const pugi::xml_node& node) const;
  /// Where an attribute's name stands in its start tag.
  std::string Position(const pugi::xml_node& element, const std::string& attribute) const;

 private:
  std::string _text;
};

}  // namespace chartbridge

#endif  // HOST_XMLSOURCE_H_
