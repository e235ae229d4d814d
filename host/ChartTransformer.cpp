// SPDX-License-Identifier: Apache-2.0
#include "platform/ChartTransformer.h"

#include <pugixml.hpp>
#include <sstream>
#include <stdexcept>
#include <string>

#include "host/ChartTemplate.h"
#include "host/IcuText.h"
#include "host/ModifiedUtf8.h"
#include "host/TemplateMerge.h"
#include "host/XmlDocument.h"

namespace {

using chartbridge::ChartTemplate;
using chartbridge::XmlDocument;

constexpr char kNamespace[] = "urn:chartbridge:chart:2";
constexpr char kFamily[] = "urn:chartbridge:chart:";

// Whoever passes the other notation should read what to do with it.
void CheckNotation(const std::string& chart) {
  const std::size_t start = chart.find_first_not_of(" \t\r\n\xEF\xBB\xBF");
  if (start == std::string::npos || chart[start] == '<') return;
  throw std::runtime_error(
      "the chart is not chart XML; one in the graph language must be converted to it first");
}

void CheckRoot(const XmlDocument& document) {
  const pugi::xml_node root = document.Root();
  const std::string name = chartbridge::LocalName(root);
  const std::string space = chartbridge::NamespaceOf(root);
  const std::string expected = std::string("; expected <chart xmlns=\"") + kNamespace + "\">";
  if (name != "chart") {
    throw document.Error(root, "found <" + name + ">, which is not a chart" + expected);
  }
  if (space == kNamespace) return;
  if (space.empty()) throw document.Error(root, "<chart> has no namespace" + expected);
  const std::string family = kFamily;
  if (space.compare(0, family.size(), family) == 0) {
    const std::string version = space.substr(family.size());
    const bool isOld = version == "1";
    throw document.Error(root, "the chart is of version " + version + "; " +
                                   (isOld ? "upgrade it to version 2 first"
                                          : "templates go with charts of version 2"));
  }
  throw document.Error(root, "<chart> has the namespace \"" + space + "\"" + expected);
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
  if (!attribute.set_value(encoding.c_str())) throw std::bad_alloc();
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
  explicit Impl(const std::string& chart) : document(Checked(chart), "chart") {
    CheckRoot(document);
  }

  XmlDocument document;

 private:
  static const std::string& Checked(const std::string& chart) {
    CheckNotation(chart);
    return chart;
  }
};

/// Throws std::runtime_error when the text is no chart XML of version 2, as far as that can be told
/// without the schema; the message says where and what is expected.
ChartTransformer::ChartTransformer(const std::string& chart)
    : _impl(std::make_unique<Impl>(chart)) {}

ChartTransformer::~ChartTransformer() = default;

/// Merges the template into the chart by the rules of docs/chart-template.md; where the chart named
/// a template, it no longer does. Several templates can be applied one after the other.
///
/// Throws std::runtime_error when the template is not well-formed or no template; the chart is then
/// unchanged, and the message says where and what is expected.
void ChartTransformer::applyTemplate(const std::string& templ) {
  const ChartTemplate checked(templ);
  chartbridge::TemplateMerge(_impl->document.Root(), checked).Run();
}

/// What the chart came with and no template touched is written as it came: comments, order, white
/// space between elements. In texts and attribute values, characters beyond the basic plane become
/// numeric references, so that the bytes are right as UTF-8 and as modified UTF-8.
///
/// Throws std::runtime_error when the encoding is unknown.
std::string ChartTransformer::getEntireXML(const unsigned short* encoding) {
  const std::string name = NameOf(encoding);
  DeclareEncoding(_impl->document.Tree(), name);
  std::string xml = _impl->document.Write();
  if (name == "UTF-8") return xml;
  std::u16string text;
  std::string bytes;
  if (!chartbridge::DecodeText(chartbridge::FromModifiedUtf8(xml), "UTF-8", text) ||
      !chartbridge::EncodeXml(text, name.c_str(), bytes)) {
    throw std::runtime_error("the encoding \"" + name + "\" is not known");
  }
  return bytes;
}
