// SPDX-License-Identifier: Apache-2.0
#ifndef HOST_CHARTTEMPLATE_H_
#define HOST_CHARTTEMPLATE_H_

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "host/TemplateSchema.h"
#include "host/XmlDocument.h"

namespace chartbridge {

/// What a template says about one part of a chart.
struct TemplatePart {
  /// The element: "legend", "x", "bar".
  std::string name;
  /// Whether it counts more than what the chart says.
  bool overrides = false;
  /// Names and values, in the order in which they are written.
  std::vector<std::pair<std::string, std::string>> attributes;

  /// The value of an attribute, or null.
  const std::string* Find(const std::string& attribute) const;
};

/// A chart template that has been read and checked. docs/chart-template.md says what it can hold.
class ChartTemplate {
 public:
  /// Reads a template.
  ///
  /// @param xml the document, in modified UTF-8
  /// @throws std::runtime_error when it is not well-formed or no template; the message starts with
  ///     line and column and says what is expected
  explicit ChartTemplate(const std::string& xml);

  /// A part of the template, of its axes or of its elements; null when it says nothing about it.
  const TemplatePart* Find(const std::string& name) const;

  /// The colours of the palette. What `Find("palette")` says tells whether there is one.
  const std::vector<std::string>& Palette() const { return _palette; }

 private:
  void CheckRoot() const;
  void ReadChildren(const pugi::xml_node& element, const TemplateRule& rule);
  const TemplateRule& RuleOf(const pugi::xml_node& child, const TemplateRule& parent) const;
  void ReadElement(const pugi::xml_node& element, const TemplateRule& rule);
  void ReadAttribute(const pugi::xml_node& element, const pugi::xml_attribute& attribute,
                     const TemplateRule& rule, TemplatePart& part) const;

  XmlDocument _document;
  std::vector<TemplatePart> _parts;
  std::vector<std::string> _palette;
};

}  // namespace chartbridge

#endif  // HOST_CHARTTEMPLATE_H_
