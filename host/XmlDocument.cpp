// SPDX-License-Identifier: Apache-2.0
#include "host/XmlDocument.h"

#include <algorithm>
#include <cstdio>
#include <new>
#include <sstream>
#include <string_view>
#include <unordered_set>
#include <utility>

#include "host/ModifiedUtf8.h"
#include "host/XmlValue.h"

namespace chartbridge {
namespace {

// No escapes and no line ends are touched, and white space counts as text, also around the root.
constexpr unsigned kParse = pugi::parse_cdata | pugi::parse_comments | pugi::parse_pi |
                            pugi::parse_declaration | pugi::parse_doctype | pugi::parse_ws_pcdata |
                            pugi::parse_fragment;

bool IsBlank(const char* text) {
  return std::string_view(text).find_first_not_of(" \t\r\n") == std::string_view::npos;
}

// Beyond it, a parser of the document on the Java side may end the thread's stack, as giving nodes
// back does here.
constexpr int kMostLevels = 512;

// Visits all nodes without recursion, however deep they nest; the level of the root is 1.
template <typename Visit>
class Walker : public pugi::xml_tree_walker {
 public:
  explicit Walker(Visit visit) : _visit(std::move(visit)) {}
  bool for_each(pugi::xml_node& node) override {
    _visit(node, depth() + 1);
    return true;
  }

 private:
  Visit _visit;
};

template <typename Handle>
void SetValue(Handle handle, const std::string& value) {
  if (value != handle.value() && !handle.set_value(value.c_str())) throw std::bad_alloc();
}

// Every value comes out in double quotes, also one that was written in single ones.
std::string WithoutQuotes(const std::string& value) {
  std::string out;
  for (const char c : value) out += c == '"' ? std::string("&quot;") : std::string(1, c);
  return out;
}

std::string Prefix(const char* name) {
  const std::string_view text(name);
  const std::size_t colon = text.find(':');
  return std::string(colon == std::string_view::npos ? "" : text.substr(0, colon));
}

}  // namespace

XmlDocument::XmlDocument(const std::string& xml, std::string what)
    : _source(xml), _what(std::move(what)) {
  CheckStart();
  CheckCharacters();
  Parse();
  CheckNesting();
  CheckTopLevel();
  CheckTexts();
}

void XmlDocument::CheckStart() const {
  const std::string& text = _source.Text();
  const std::size_t mark = text.compare(0, 3, "\xEF\xBB\xBF") == 0 ? 3 : 0;
  const std::size_t start = text.find_first_not_of(" \t\r\n", mark);
  if (start == std::string::npos) throw std::runtime_error("the " + _what + " is empty");
  if (text[start] != '<') throw ErrorAt(start, "the " + _what + " is not XML; expected \"<\"");
}

void XmlDocument::CheckCharacters() const {
  const std::string& text = _source.Text();
  const auto fail = [this](std::size_t at, unsigned character) {
    char name[16];
    std::snprintf(name, sizeof name, "U+%04X", character);
    return ErrorAt(at, "the " + _what + " has the character " + name + ", which XML cannot hold");
  };
  for (std::size_t at = 0; at < text.size(); ++at) {
    const auto byte = static_cast<unsigned char>(text[at]);
    if (byte < 0x20U && byte != '\t' && byte != '\n' && byte != '\r') throw fail(at, byte);
    // Modified UTF-8 writes the zero character in two bytes.
    if (byte == 0xC0U && text.compare(at, 2, "\xC0\x80") == 0) throw fail(at, 0);
  }
}

void XmlDocument::Parse() {
  const std::string& text = _source.Text();
  const pugi::xml_parse_result result =
      _tree.load_buffer(text.data(), text.size(), kParse, pugi::encoding_utf8);
  if (result) return;
  if (result.status == pugi::status_out_of_memory) throw std::bad_alloc();
  const auto offset = static_cast<std::size_t>(std::max<std::ptrdiff_t>(result.offset, 0));
  throw ErrorAt(offset, "the " + _what + " is not well-formed XML: " + result.description());
}

void XmlDocument::CheckNesting() const {
  Walker walker([this](const pugi::xml_node& node, int level) {
    if (node.type() != pugi::node_element || level <= kMostLevels) return;
    throw Error(node, "the " + _what + " is nested more than " + std::to_string(kMostLevels) +
                          " levels deep");
  });
  pugi::xml_node(_tree).traverse(walker);
}

void XmlDocument::CheckTopLevel() const {
  for (const pugi::xml_node& node : _tree.children()) {
    const bool isText = node.type() == pugi::node_pcdata || node.type() == pugi::node_cdata;
    if (node.type() == pugi::node_doctype) {
      throw Error(node, "a document type declaration (<!DOCTYPE) is not allowed");
    }
    if (isText && !IsBlank(node.value())) {
      throw Error(node, "the " + _what + " has text outside of its root element");
    }
    if (node.type() == pugi::node_element && node != Root()) {
      throw Error(node, "the " + _what + " has more than one root element");
    }
  }
  if (!Root()) throw std::runtime_error("the " + _what + " has no element");
}

void XmlDocument::CheckTexts() const {
  Walker walker([this](const pugi::xml_node& node, int) {
    if (node.type() == pugi::node_element) CheckAttributes(node);
    if (node.type() != pugi::node_pcdata) return;
    const std::size_t bad = FindBadReference(node.value());
    if (bad == std::string::npos) return;
    const std::size_t blanks = std::string_view(node.value()).find_first_not_of(" \t\r\n");
    throw ErrorAt(_source.Start(node) + bad - blanks, "the ampersand begins no known reference");
  });
  pugi::xml_node(_tree).traverse(walker);
}

void XmlDocument::CheckAttributes(const pugi::xml_node& element) const {
  std::unordered_set<std::string_view> names;
  std::string value;
  for (const pugi::xml_attribute& attribute : element.attributes()) {
    const std::string place = std::string(attribute.name()) + " of <" + element.name() + ">";
    if (!names.insert(attribute.name()).second) {
      throw Error(element, attribute.name(), place + " is given twice");
    }
    if (!DecodeXmlValue(attribute.value(), value)) {
      throw Error(element, attribute.name(),
                  place + " has a \"<\", or an ampersand that begins no known reference");
    }
  }
}

std::string XmlDocument::Write() {
  Walker walker([](pugi::xml_node& node, int) {
    if (node.type() == pugi::node_pcdata) SetValue(node, ReferenceSupplementary(node.value()));
    if (node.type() != pugi::node_element) return;
    for (pugi::xml_attribute& attribute : node.attributes()) {
      SetValue(attribute, WithoutQuotes(ReferenceSupplementary(attribute.value())));
    }
  });
  _tree.traverse(walker);
  std::ostringstream stream;
  _tree.save(stream, "", pugi::format_raw | pugi::format_no_escapes, pugi::encoding_utf8);
  return stream.str();
}

std::runtime_error XmlDocument::ErrorAt(std::size_t offset, const std::string& message) const {
  return std::runtime_error(_source.Position(offset) + ": " + message);
}

std::runtime_error XmlDocument::Error(const pugi::xml_node& node,
                                      const std::string& message) const {
  return std::runtime_error(_source.Position(node) + ": " + message);
}

std::runtime_error XmlDocument::Error(const pugi::xml_node& node, const std::string& attribute,
                                      const std::string& message) const {
  return std::runtime_error(_source.Position(node, attribute) + ": " + message);
}

std::string LocalName(const pugi::xml_node& element) {
  const std::string name = element.name();
  const std::size_t colon = name.find(':');
  return colon == std::string::npos ? name : name.substr(colon + 1);
}

std::string NamespaceOf(const pugi::xml_node& element) {
  const std::string prefix = Prefix(element.name());
  const std::string declaration = prefix.empty() ? "xmlns" : "xmlns:" + prefix;
  for (pugi::xml_node node = element; node; node = node.parent()) {
    const pugi::xml_attribute found = node.attribute(declaration.c_str());
    if (found) return found.value();
  }
  return "";
}

std::string NameLike(const pugi::xml_node& element, const std::string& localName) {
  const std::string prefix = Prefix(element.name());
  return prefix.empty() ? localName : prefix + ":" + localName;
}

pugi::xml_node ChildOf(const pugi::xml_node& parent, const std::string& localName) {
  const std::string space = NamespaceOf(parent);
  for (const pugi::xml_node& child : parent.children()) {
    const bool isNamed = child.type() == pugi::node_element && LocalName(child) == localName;
    if (isNamed && NamespaceOf(child) == space) return child;
  }
  return {};
}

}  // namespace chartbridge
