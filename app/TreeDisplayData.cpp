// SPDX-License-Identifier: Apache-2.0
#include "app/TreeDisplayData.h"

#include <pugixml.hpp>
#include <sstream>

#include "app/Nesting.h"

namespace chartbridge {

namespace {

constexpr const char* kElement = "tree-display";
constexpr const char* kNoDisplayData =
    "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
    "<tree-display xmlns=\"urn:chartbridge:tree-display:1\"/>\n";

// Everything is kept, so that lines and columns in messages are those of the file.
constexpr unsigned kParse = pugi::parse_full | pugi::parse_ws_pcdata;

void Set(pugi::xml_node element, const char* name, const std::string& value) {
  pugi::xml_attribute attribute = element.attribute(name);
  if (!attribute) attribute = element.append_attribute(name);
  attribute.set_value(value.c_str());
}

bool HasDoctype(const pugi::xml_document& document) {
  for (const pugi::xml_node& node : document.children()) {
    if (node.type() == pugi::node_doctype) return true;
  }
  return false;
}

}  // namespace

std::string DisplayDataWith(const TreeOptions& options, const std::string& document,
                            const std::string& name) {
  if (!options.depth && !options.leftToRight) return document;
  const std::string source = document.empty() ? kNoDisplayData : document;
  pugi::xml_document xml;
  const pugi::xml_parse_result parsed = xml.load_buffer(source.data(), source.size(), kParse);
  CheckNestingOfXml(xml, source, name);
  pugi::xml_node root = xml.document_element();
  if (!parsed || HasDoctype(xml) || std::string(root.name()) != kElement) return document;
  if (options.depth) Set(root, "depth", std::to_string(*options.depth));
  if (options.leftToRight) Set(root, "orientation", "left-to-right");
  std::ostringstream changed;
  // In UTF-8 the byte order mark says nothing, elsewhere it may be all that tells the encoding.
  unsigned format = pugi::format_raw | pugi::format_no_declaration;
  const bool inOneByte =
      parsed.encoding == pugi::encoding_utf8 || parsed.encoding == pugi::encoding_latin1;
  if (!inOneByte) format |= pugi::format_write_bom;
  xml.save(changed, "", format, parsed.encoding);
  return changed.str();
}

}  // namespace chartbridge
