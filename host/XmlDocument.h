// SPDX-License-Identifier: Apache-2.0
#ifndef HOST_XMLDOCUMENT_H_
#define HOST_XMLDOCUMENT_H_

#include <pugixml.hpp>
#include <stdexcept>
#include <string>

#include "host/XmlSource.h"

namespace chartbridge {

/// A parsed XML document in which every text stands as it was written, references included, so that
/// what nobody changes is written again byte for byte.
///
/// The text is modified UTF-8, which for everything up to U+FFFF is UTF-8. Beyond what the parser
/// finds, a document with a document type declaration, a control character, an undeclared entity,
/// an attribute that is given twice, more than one root element or more than 512 levels of elements
/// is refused.
class XmlDocument {
 public:
  /// Parses the document.
  ///
  /// @param xml the text
  /// @param what what it should be, for messages: "chart"
  /// @throws std::runtime_error with the position and the reason when it is not well-formed
  XmlDocument(const std::string& xml, std::string what);

  pugi::xml_document& Tree() { return _tree; }
  pugi::xml_node Root() const { return _tree.document_element(); }

  /// The whole document as text, as it came except for what was changed and for how its tags are
  /// spaced and quoted. In texts and attribute values, characters beyond the basic plane are
  /// numeric references, so that the bytes are right as UTF-8 and as modified UTF-8.
  std::string Write();

  /// An error about an element, with its position in front.
  std::runtime_error Error(const pugi::xml_node& node, const std::string& message) const;
  /// An error about an attribute, with its position in front.
  std::runtime_error Error(const pugi::xml_node& node, const std::string& attribute,
                           const std::string& message) const;

 private:
  void CheckStart() const;
  void CheckCharacters() const;
  void Parse();
  void CheckNesting() const;
  void CheckTopLevel() const;
  void CheckTexts() const;
  void CheckAttributes(const pugi::xml_node& element) const;
  std::runtime_error ErrorAt(std::size_t offset, const std::string& message) const;

  XmlSource _source;
  std::string _what;
  pugi::xml_document _tree;
};

/// The name of an element without its prefix.
std::string LocalName(const pugi::xml_node& element);

/// The namespace of an element; empty for none and for a prefix that nothing declares.
std::string NamespaceOf(const pugi::xml_node& element);

/// A name with the prefix of `element`, for a child of the same namespace.
std::string NameLike(const pugi::xml_node& element, const std::string& localName);

/// The first child element of that local name and of the namespace of `parent`; none when there is
/// none.
pugi::xml_node ChildOf(const pugi::xml_node& parent, const std::string& localName);

}  // namespace chartbridge

#endif  // HOST_XMLDOCUMENT_H_
