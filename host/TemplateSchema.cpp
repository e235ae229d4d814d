// SPDX-License-Identifier: Apache-2.0
#include "host/TemplateSchema.h"

#include <utility>

namespace chartbridge {
namespace {

using Attributes = std::vector<TemplateRule::Attribute>;

TemplateRule Part(std::string name, Attributes attributes) {
  TemplateRule rule;
  rule.name = std::move(name);
  rule.attributes = std::move(attributes);
  rule.mayOverride = true;
  return rule;
}

TemplateRule Group(std::string name, std::vector<TemplateRule> children) {
  TemplateRule rule;
  rule.name = std::move(name);
  rule.children = std::move(children);
  return rule;
}

TemplateRule Axis(std::string name) {
  return Part(std::move(name),
              {{"scale", TemplateValue::Word({"auto", "linear", "log", "time", "category"})},
               {"title", TemplateValue::Text()},
               {"min", TemplateValue::Limit()},
               {"max", TemplateValue::Limit()},
               {"reversed", TemplateValue::Boolean()},
               {"grid", TemplateValue::Boolean()},
               {"format", TemplateValue::Text()}});
}

std::vector<TemplateRule> ElementKinds() {
  const TemplateRule::Attribute fill = {"fill", TemplateValue::Color()};
  const TemplateRule::Attribute opacity = {"opacity", TemplateValue::Fraction()};
  const TemplateRule::Attribute arrangement = {
      "arrangement", TemplateValue::Word({"grouped", "stacked", "filled", "overlaid"})};
  const TemplateRule::Attribute areaArrangement = {
      "arrangement", TemplateValue::Word({"stacked", "filled", "overlaid"})};
  const TemplateRule::Attribute bins = {"bins", TemplateValue::Whole(1, 500)};
  return {Part("bar", {arrangement, fill, opacity}),
          Part("line", {fill, opacity}),
          Part("area", {areaArrangement, fill, opacity}),
          Part("point", {fill, opacity}),
          Part("histogram", {arrangement, bins, fill, opacity}),
          Part("box", {fill, opacity}),
          Part("pie", {opacity}),
          Part("heatmap", {opacity})};
}

TemplateRule Palette() {
  TemplateRule color;
  color.name = "color";
  color.attributes = {{"value", TemplateValue::Color(), true}};
  TemplateRule palette = Part("palette", {});
  palette.children = {color};
  palette.repeats = true;
  return palette;
}

TemplateRule Root() {
  const TemplateValue pixels = TemplateValue::Whole(16, 10000);
  const TemplateValue text = TemplateValue::Text();
  const TemplateValue position = TemplateValue::Word({"right", "bottom", "top", "left", "none"});
  return Group("template",
               {Part("size", {{"width", pixels}, {"height", pixels}}),
                Part("style", {{"name", TemplateValue::Name(), true}}),
                Part("titles", {{"title", text}, {"subtitle", text}, {"caption", text}}),
                Group("axes", {Axis("x"), Axis("y")}), Group("elements", ElementKinds()),
                Part("legend", {{"position", position}, {"title", text}}),
                Part("facet", {{"columns", TemplateValue::Whole(1, 100)},
                               {"shared-x", TemplateValue::Boolean()},
                               {"shared-y", TemplateValue::Boolean()}}),
                Palette()});
}

}  // namespace

const TemplateRule::Attribute* TemplateRule::FindAttribute(const std::string& attribute) const {
  for (const Attribute& each : attributes) {
    if (each.name == attribute) return &each;
  }
  return nullptr;
}

const TemplateRule* TemplateRule::FindChild(const std::string& child) const {
  for (const TemplateRule& each : children) {
    if (each.name == child) return &each;
  }
  return nullptr;
}

std::vector<std::string> TemplateRule::AttributeNames() const {
  std::vector<std::string> names;
  for (const Attribute& each : attributes) names.push_back(each.name);
  if (mayOverride) names.emplace_back("override");
  return names;
}

std::vector<std::string> TemplateRule::ChildNames() const {
  std::vector<std::string> names;
  for (const TemplateRule& each : children) names.push_back(each.name);
  return names;
}

const TemplateRule& TemplateSchema() {
  static const TemplateRule root = Root();
  return root;
}

}  // namespace chartbridge
