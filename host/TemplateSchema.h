// SPDX-License-Identifier: Apache-2.0
#ifndef HOST_TEMPLATESCHEMA_H_
#define HOST_TEMPLATESCHEMA_H_

#include <string>
#include <vector>

#include "host/TemplateValue.h"

namespace chartbridge {

/// What an element of a chart template can have. The same as docs/chart-template.xsd.
struct TemplateRule {
  struct Attribute {
    std::string name;
    TemplateValue value;
    bool isRequired = false;
  };

  std::string name;
  std::vector<Attribute> attributes;
  std::vector<TemplateRule> children;
  /// Whether it can say that it counts more than the chart.
  bool mayOverride = false;
  /// Whether its children may be repeated.
  bool repeats = false;

  const Attribute* FindAttribute(const std::string& attribute) const;
  const TemplateRule* FindChild(const std::string& child) const;
  std::vector<std::string> AttributeNames() const;
  std::vector<std::string> ChildNames() const;
};

/// The rule of the root element.
const TemplateRule& TemplateSchema();

}  // namespace chartbridge

#endif  // HOST_TEMPLATESCHEMA_H_
