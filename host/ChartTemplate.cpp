// SPDX-License-Identifier: Apache-2.0
#include "host/ChartTemplate.h"

#include <set>

#include "host/XmlValue.h"

namespace chartbridge {
namespace {

constexpr char kNamespace[] = "urn:chartbridge:template:1";
constexpr char kFamily[] = "urn:chartbridge:template:";
constexpr char kSchemaInstance[] = "http://www.w3.org/2001/XMLSchema-instance";

bool StartsWith(const std::string& text, const std::string& start) {
  return text.compare(0, start.size(), start) == 0;
}

bool IsNamespaceDeclaration(const std::string& name) {
  return name == "xmlns" || StartsWith(name, "xmlns:");
}

// A hint for editors about where the schema lies means nothing here.
bool IsSchemaHint(const pugi::xml_node& element, const std::string& name) {
  const std::size_t colon = name.find(':');
  if (colon == std::string::npos || name.substr(colon + 1) != "schemaLocation") return false;
  const std::string declaration = "xmlns:" + name.substr(0, colon);
  for (pugi::xml_node node = element; node; node = node.parent()) {
    const pugi::xml_attribute found = node.attribute(declaration.c_str());
    if (found) return std::string(found.value()) == kSchemaInstance;
  }
  return false;
}

bool IsText(const pugi::xml_node& node) {
  const bool isText = node.type() == pugi::node_pcdata || node.type() == pugi::node_cdata;
  return isText && std::string(node.value()).find_first_not_of(" \t\r\n") != std::string::npos;
}

std::string Tag(const pugi::xml_node& element) { return "<" + LocalName(element) + ">"; }

}  // namespace

const std::string* TemplatePart::Find(const std::string& attribute) const {
  for (const auto& each : attributes) {
    if (each.first == attribute) return &each.second;
  }
  return nullptr;
}

ChartTemplate::ChartTemplate(const std::string& xml) : _document(xml, "template") {
  CheckRoot();
  ReadElement(_document.Root(), TemplateSchema());
}

const TemplatePart* ChartTemplate::Find(const std::string& name) const {
  for (const TemplatePart& part : _parts) {
    if (part.name == name) return &part;
  }
  return nullptr;
}

void ChartTemplate::CheckRoot() const {
  const pugi::xml_node root = _document.Root();
  const std::string space = NamespaceOf(root);
  const std::string expected = std::string("; expected <template xmlns=\"") + kNamespace + "\">";
  if (LocalName(root) != "template") {
    throw _document.Error(root,
                          "found " + Tag(root) + ", which is not a chart template" + expected);
  }
  if (space == kNamespace) return;
  if (space.empty()) throw _document.Error(root, "<template> has no namespace" + expected);
  if (StartsWith(space, kFamily)) {
    throw _document.Error(root, "the template is of version " +
                                    space.substr(std::string(kFamily).size()) +
                                    "; version 1 is known here");
  }
  throw _document.Error(root, "<template> has the namespace \"" + space + "\"" + expected);
}

void ChartTemplate::ReadChildren(const pugi::xml_node& element, const TemplateRule& rule) {
  std::set<std::string> seen;
  for (const pugi::xml_node& child : element.children()) {
    if (IsText(child)) throw _document.Error(element, Tag(element) + " cannot hold text");
    if (child.type() != pugi::node_element) continue;
    const TemplateRule& childRule = RuleOf(child, rule);
    if (!seen.insert(childRule.name).second && !rule.repeats) {
      throw _document.Error(child, Tag(element) + " has more than one " + Tag(child));
    }
    ReadElement(child, childRule);
  }
}

const TemplateRule& ChartTemplate::RuleOf(const pugi::xml_node& child,
                                          const TemplateRule& parent) const {
  const std::string space = NamespaceOf(child);
  if (space != kNamespace) {
    throw _document.Error(child, Tag(child) + " has the namespace \"" + space + "\"; expected \"" +
                                     kNamespace + "\"");
  }
  const TemplateRule* rule = parent.FindChild(LocalName(child));
  if (rule != nullptr) return *rule;
  const std::string found = "found " + Tag(child) + " inside <" + parent.name + ">";
  if (parent.children.empty()) {
    throw _document.Error(child, found + ", which holds no elements");
  }
  throw _document.Error(child, found + "; " + ExpectedOneOf(parent.ChildNames()));
}

void ChartTemplate::ReadElement(const pugi::xml_node& element, const TemplateRule& rule) {
  TemplatePart part;
  part.name = rule.name;
  for (const pugi::xml_attribute& attribute : element.attributes()) {
    ReadAttribute(element, attribute, rule, part);
  }
  for (const TemplateRule::Attribute& attribute : rule.attributes) {
    if (attribute.isRequired && part.Find(attribute.name) == nullptr) {
      throw _document.Error(element, Tag(element) + " needs the attribute " + attribute.name);
    }
  }
  if (rule.name == "color") _palette.push_back(*part.Find("value"));
  if (rule.mayOverride) _parts.push_back(part);
  ReadChildren(element, rule);
}

void ChartTemplate::ReadAttribute(const pugi::xml_node& element,
                                  const pugi::xml_attribute& attribute, const TemplateRule& rule,
                                  TemplatePart& part) const {
  const std::string name = attribute.name();
  if (IsNamespaceDeclaration(name) || IsSchemaHint(element, name)) return;
  static const TemplateValue kBoolean = TemplateValue::Boolean();
  const TemplateRule::Attribute* known = rule.FindAttribute(name);
  const bool isOverride = rule.mayOverride && name == "override";
  if (known == nullptr && !isOverride) {
    const std::vector<std::string> names = rule.AttributeNames();
    const std::string rather = names.empty() ? "" : "; " + ExpectedOneOf(names);
    throw _document.Error(element, name,
                          Tag(element) + " has no attribute \"" + name + "\"" + rather);
  }
  const TemplateValue& type = isOverride ? kBoolean : known->value;
  std::string value;
  DecodeXmlValue(attribute.value(), value);
  if (!type.Accepts(value)) {
    throw _document.Error(
        element, name, name + " of " + Tag(element) + " is \"" + value + "\"; " + type.Expected());
  }
  if (isOverride) {
    part.overrides = value == "true" || value == "1";
    return;
  }
  part.attributes.emplace_back(name, value);
}

}  // namespace chartbridge
