// SPDX-License-Identifier: Apache-2.0
#include "host/TemplateMerge.h"

#include <initializer_list>
#include <new>
#include <utility>
#include <vector>

#include "host/XmlDocument.h"
#include "host/XmlValue.h"

namespace chartbridge {
namespace {

using Names = std::initializer_list<const char*>;

bool IsOneOf(const std::string& name, Names names) {
  for (const char* each : names) {
    if (name == each) return true;
  }
  return false;
}

void SetAttribute(pugi::xml_node element, const std::string& name, const std::string& value) {
  pugi::xml_attribute attribute = element.attribute(name.c_str());
  if (!attribute) attribute = element.append_attribute(name.c_str());
  if (!attribute.set_value(EncodeXmlValue(value).c_str())) throw std::bad_alloc();
}

// The one rule about single attributes: what the chart says stays, unless the template overrides.
void Merge(pugi::xml_node element, const TemplatePart& part, const std::string& name,
           const std::string& value) {
  if (part.overrides || !element.attribute(name.c_str())) SetAttribute(element, name, value);
}

void MergeAll(pugi::xml_node element, const TemplatePart& part) {
  for (const auto& [name, value] : part.attributes) Merge(element, part, name, value);
}

pugi::xml_node AppendChild(pugi::xml_node parent, const std::string& name) {
  pugi::xml_node child = parent.append_child(NameLike(parent, name).c_str());
  if (!child) throw std::bad_alloc();
  return child;
}

pugi::xml_node ChildOrNew(pugi::xml_node parent, const std::string& name) {
  const pugi::xml_node child = ChildOf(parent, name);
  return child ? child : AppendChild(parent, name);
}

// An attribute of the chart, as a word.
std::string WordOf(const pugi::xml_node& element, const char* name) {
  std::string value;
  DecodeXmlValue(element.attribute(name).value(), value);
  const std::size_t start = value.find_first_not_of(' ');
  if (start == std::string::npos) return "";
  return value.substr(start, value.find_last_not_of(' ') - start + 1);
}

}  // namespace

TemplateMerge::TemplateMerge(pugi::xml_node chart, const ChartTemplate& merged)
    : _chart(chart), _template(merged) {}

void TemplateMerge::Run() {
  // From here on the chart has a template rather than naming one.
  _chart.remove_attribute("template");
  MergeRoot();
  MergeChild("titles");
  MergeAxes();
  MergeElements();
  MergeChild("legend");
  MergeFacet();
  MergePalette();
}

void TemplateMerge::MergeRoot() {
  const TemplatePart* size = _template.Find("size");
  if (size != nullptr) MergeAll(_chart, *size);
  const TemplatePart* style = _template.Find("style");
  if (style != nullptr) Merge(_chart, *style, "style", *style->Find("name"));
}

void TemplateMerge::MergeChild(const std::string& name) {
  const TemplatePart* part = _template.Find(name);
  if (part == nullptr || part->attributes.empty()) return;
  MergeAll(ChildOrNew(_chart, name), *part);
}

void TemplateMerge::MergeAxes() {
  for (const char* name : {"x", "y"}) {
    const TemplatePart* part = _template.Find(name);
    if (part != nullptr && !part->attributes.empty()) MergeAxis(*part);
  }
}

void TemplateMerge::MergeAxis(const TemplatePart& part) {
  const pugi::xml_node axes = ChildOrNew(_chart, "axes");
  pugi::xml_node axis = ChildOrNew(axes, part.name);
  // First, since it decides what else there can be.
  const std::string* scale = part.Find("scale");
  if (scale != nullptr) Merge(axis, part, "scale", *scale);
  const Names ofNumbers = {"min", "max", "format"};
  const bool isCategory = WordOf(axis, "scale") == "category";
  for (const auto& [name, value] : part.attributes) {
    const bool fits = !isCategory || !IsOneOf(name, ofNumbers);
    if (fits && name != "scale") Merge(axis, part, name, value);
  }
  if (!isCategory || !part.overrides || scale == nullptr) return;
  for (const char* name : ofNumbers) axis.remove_attribute(name);
}

void TemplateMerge::MergeElements() {
  const pugi::xml_node elements = ChildOf(_chart, "elements");
  if (!elements) return;
  const std::string space = NamespaceOf(_chart);
  for (const pugi::xml_node& element : elements.children()) {
    if (element.type() != pugi::node_element || NamespaceOf(element) != space) continue;
    const std::string kind = LocalName(element);
    const TemplatePart* part = TemplateSchema().FindChild("elements")->FindChild(kind) == nullptr
                                   ? nullptr
                                   : _template.Find(kind);
    if (part != nullptr) MergeElement(element, *part);
  }
}

void TemplateMerge::MergeElement(pugi::xml_node element, const TemplatePart& part) {
  // Colours that come from the data leave no room for one colour.
  const bool isColored = !ChildOf(element, "color").empty();
  // A histogram that brings its own bins takes neither a number of them nor an arrangement.
  const bool hasBins = !ChildOf(element, "bin").empty();
  for (const auto& [name, value] : part.attributes) {
    if (isColored && name == "fill") continue;
    if (hasBins && IsOneOf(name, {"bins", "arrangement"})) continue;
    Merge(element, part, name, value);
  }
}

void TemplateMerge::MergeFacet() {
  const TemplatePart* part = _template.Find("facet");
  const pugi::xml_node facet = ChildOf(_chart, "facet");
  if (part != nullptr && facet) MergeAll(facet, *part);
}

void TemplateMerge::MergePalette() {
  const TemplatePart* part = _template.Find("palette");
  if (part == nullptr) return;
  pugi::xml_node palette = ChildOf(_chart, "palette");
  if (palette && !part->overrides) return;
  if (!palette) palette = AppendChild(_chart, "palette");
  palette.remove_children();
  for (const std::string& color : _template.Palette()) {
    SetAttribute(AppendChild(palette, "color"), "value", color);
  }
}

}  // namespace chartbridge
