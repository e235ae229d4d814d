// SPDX-License-Identifier: Apache-2.0
#include "app/ViewerPage.h"

#include <map>

#include "app/Failure.h"
#include "app/InputFile.h"
#include "app/Installation.h"
#include "app/JsonText.h"

namespace chartbridge {

namespace {

using Json = nlohmann::ordered_json;

constexpr const char* kNoTitle = "Chart";
constexpr const char* kWhite = "#ffffff";
constexpr const char* kLight = "#eeeeee";
constexpr const char* kDark = "#333333";

/// The text as HTML content or attribute value.
std::string AsHtml(const std::string& text) {
  std::string html;
  for (const char character : text) {
    switch (character) {
      case '&':
        html += "&amp;";
        break;
      case '<':
        html += "&lt;";
        break;
      case '>':
        html += "&gt;";
        break;
      case '"':
        html += "&quot;";
        break;
      default:
        html += character;
    }
  }
  return html;
}

/// JSON as the content of a script element: a "<" in it could end the element, and stands only in
/// strings, where it has another form.
std::string AsScript(const std::string& json) {
  std::string script;
  script.reserve(json.size());
  for (const char character : json) {
    if (character == '<') {
      script += "\\u003c";
    } else {
      script += character;
    }
  }
  return script;
}

/// A text of the chart; texts of several lines are arrays.
std::string TextOf(const Json& value) {
  if (value.is_string()) return value.get<std::string>();
  if (value.is_object()) return TextOf(value.value("text", Json()));
  std::string text;
  if (!value.is_array()) return text;
  for (const Json& line : value) {
    if (!text.empty()) text += ' ';
    text += TextOf(line);
  }
  return text;
}

/// Colours of charts are hexadecimal; anything else could say more than a colour.
std::string ColorOf(const Json& value) {
  const std::string color = TextOf(value);
  const bool hexadecimal =
      (color.size() == 4 || color.size() == 7) && color.front() == '#' &&
      color.find_first_not_of("0123456789abcdefABCDEF", 1) == std::string::npos;
  return hexadecimal ? color : kWhite;
}

/// A colour for texts on a ground of that colour, #RGB or #RRGGBB.
std::string ReadableOn(const std::string& background) {
  const std::size_t digits = background.size() < 7 ? 1 : 2;
  const auto part = [&](std::size_t index) {
    const std::string hexadecimal = background.substr(1 + index * digits, digits);
    return std::stoul(digits == 1 ? hexadecimal + hexadecimal : hexadecimal, nullptr, 16);
  };
  // The eye's share of red, green and blue in brightness.
  const unsigned long brightness = 299UL * part(0) + 587UL * part(1) + 114UL * part(2);
  return brightness < 128'000 ? kLight : kDark;
}

/// The text with all its blanks filled in. What is filled in is not looked at again.
std::string Filled(const std::string& text, const std::map<std::string, std::string>& blanks) {
  std::string filled;
  std::size_t copied = 0;
  for (std::size_t at = text.find('@'); at != std::string::npos; at = text.find('@', at + 1)) {
    for (const auto& [blank, content] : blanks) {
      if (text.compare(at, blank.size(), blank) != 0) continue;
      filled.append(text, copied, at - copied).append(content);
      copied = at + blank.size();
    }
  }
  return filled.append(text, copied, std::string::npos);
}

}  // namespace

ViewerPage::ViewerPage() {
  const Installation installation;
  if (installation.ViewerPage().empty()) {
    throw Failure(
        "view: the scripts of interactive pages are not installed here (they come with "
        "a build that has CHARTBRIDGE_VIEWER on); \"chartbridge json --interactive\" "
        "writes the chart for a viewer of your own");
  }
  _page = InputFile(installation.ViewerPage()).Text();
}

std::string ViewerPage::With(const std::string& chart, const std::string& title) const {
  const Json parsed = ParseJson(chart, "the chart JSON");
  std::string heading = title.empty() ? TextOf(parsed.value("title", Json())) : title;
  if (heading.empty()) heading = kNoTitle;
  std::string description = TextOf(parsed.value("description", Json()));
  if (description.empty()) description = heading;
  const std::string background = ColorOf(parsed.value("background", Json()));
  return Filled(_page, {{"@TITLE@", AsHtml(heading)},
                        {"@DESCRIPTION@", AsHtml(description)},
                        {"@BACKGROUND@", background},
                        {"@FOREGROUND@", ReadableOn(background)},
                        {"@CHART@", AsScript(chart)}});
}

}  // namespace chartbridge
