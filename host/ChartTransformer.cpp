// SPDX-License-Identifier: Apache-2.0
#include "platform/ChartTransformer.h"

#include <pugixml.hpp>
#include <sstream>
#include <stdexcept>
#include <string>

#include "host/IcuText.h"
#include "host/ModifiedUtf8.h"

namespace {

constexpr char kNoMemory[] = "not enough memory";

// Everything that a document may hold is kept, white space too: a transformed chart differs from
// the chart only in what the template added.
constexpr unsigned kParse = pugi::parse_full | pugi::parse_ws_pcdata;

void Load(pugi::xml_document& document, const std::string& text, const char* what) {
  const std::string utf8 = chartbridge::FromModifiedUtf8(text);
  const pugi::xml_parse_result result =
      document.load_buffer(utf8.data(), utf8.size(), kParse, pugi::encoding_utf8);
  if (!result) {
    throw std::runtime_error(std::string("the ") + what + " is not well-formed XML: " +
                             result.description() + " at byte " + std::to_string(result.offset));
  }
  if (!document.document_element()) {
    throw std::runtime_error(std::string("the ") + what + " has no element");
  }
}

// The declaration names the encoding that the bytes will be in, whatever the chart came with.
void DeclareEncoding(pugi::xml_document& document, const std::string& encoding) {
  pugi::xml_node declaration = document.first_child();
  if (declaration.type() != pugi::node_declaration) {
    declaration = document.prepend_child(pugi::node_declaration);
    declaration.append_attribute("version") = "1.0";
  }
  pugi::xml_attribute attribute = declaration.attribute("encoding");
  if (!attribute) {
    attribute = declaration.insert_attribute_after("encoding", declaration.attribute("version"));
  }
  if (!attribute.set_value(encoding.c_str())) throw std::runtime_error(kNoMemory);
}

std::string NameOf(const unsigned short* encoding) {
  std::u16string name;
  for (; encoding != nullptr && *encoding != 0; ++encoding) {
    name += static_cast<char16_t>(*encoding);
  }
  return chartbridge::ToUtf8(name);
}

}  // namespace

class ChartTransformer::Impl {
 public:
  pugi::xml_document document;
};

/// Throws std::runtime_error when the chart is not well-formed XML.
ChartTransformer::ChartTransformer(const std::string& chart) : _impl(std::make_unique<Impl>()) {
  Load(_impl->document, chart, "chart");
}

ChartTransformer::~ChartTransformer() = default;

/// What the chart says counts, and the template fills the gaps: attributes of the template's root
/// element that the chart's root element lacks are added to it, and so is every child element of
/// the template's root whose name no child of the chart's root has. Deeper levels are not merged.
/// Throws std::runtime_error when the template is not well-formed XML; the chart is then unchanged.
void ChartTransformer::applyTemplate(const std::string& templ) {
  pugi::xml_document document;
  Load(document, templ, "template");
  const pugi::xml_node source = document.document_element();
  pugi::xml_node target = _impl->document.document_element();
  for (const pugi::xml_attribute& attribute : source.attributes()) {
    if (!target.attribute(attribute.name())) target.append_copy(attribute);
  }
  const pugi::xml_node lastOwn = target.last_child();
  for (const pugi::xml_node& child : source.children()) {
    if (child.type() != pugi::node_element) continue;
    // Only the chart's own children hide one of the template, which may hold several of one name.
    bool own = false;
    for (pugi::xml_node node = lastOwn; node && !own; node = node.previous_sibling()) {
      own = std::string(node.name()) == child.name();
    }
    if (!own) target.append_copy(child);
  }
}

/// Throws std::runtime_error when the encoding is unknown.
std::string ChartTransformer::getEntireXML(const unsigned short* encoding) {
  const std::string name = NameOf(encoding);
  DeclareEncoding(_impl->document, name);
  std::ostringstream stream;
  _impl->document.save(stream, "", pugi::format_raw, pugi::encoding_utf8);
  const std::string utf8 = chartbridge::ReferenceSupplementary(stream.str());
  std::u16string text;
  std::string bytes;
  if (!chartbridge::DecodeText(utf8, "UTF-8", text) ||
      !chartbridge::EncodeXml(text, name.c_str(), bytes)) {
    throw std::runtime_error("the encoding \"" + name + "\" is not known");
  }
  return bytes;
}
