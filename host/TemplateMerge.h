// SPDX-License-Identifier: Apache-2.0
#ifndef HOST_TEMPLATEMERGE_H_
#define HOST_TEMPLATEMERGE_H_

#include <pugixml.hpp>
#include <string>

#include "host/ChartTemplate.h"

namespace chartbridge {

/// Merges a template into a chart, attribute by attribute: what the chart says stays, what it does
/// not say comes from the template, and in a part of the template that overrides the template
/// counts. What does not go together with the chart is left out. docs/chart-template.md has the
/// rules in a table.
class TemplateMerge {
 public:
  /// @param chart the root element of a chart of version 2; its texts stand as they are written
  TemplateMerge(pugi::xml_node chart, const ChartTemplate& merged);

  /// Changes the chart. Throws std::bad_alloc when memory ends, which leaves it half changed.
  void Run();

 private:
  void MergeRoot();
  void MergeChild(const std::string& name);
  void MergeAxes();
  void MergeAxis(const TemplatePart& part);
  void MergeElements();
  void MergeElement(pugi::xml_node element, const TemplatePart& part);
  void MergeFacet();
  void MergePalette();

  pugi::xml_node _chart;
  const ChartTemplate& _template;
};

}  // namespace chartbridge

#endif  // HOST_TEMPLATEMERGE_H_
