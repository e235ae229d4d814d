// SPDX-License-Identifier: Apache-2.0
#include "host/TemplateValue.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <regex>
#include <utility>

namespace chartbridge {
namespace {

constexpr char kBlank[] = " \t\r\n";

// Longer than any number or date, and short enough for a regular expression.
constexpr std::size_t kLongestToken = 64;

std::string Stripped(const std::string& text) {
  const std::size_t start = text.find_first_not_of(kBlank);
  if (start == std::string::npos) return "";
  return text.substr(start, text.find_last_not_of(kBlank) - start + 1);
}

bool Matches(const std::string& text, const std::regex& pattern) {
  return text.size() <= kLongestToken && std::regex_match(text, pattern);
}

// The same in every locale. A number beyond the range of a double is none.
bool ReadNumber(const std::string& text, double& number) {
  static const std::regex pattern(R"([+-]?([0-9]+(\.[0-9]*)?|\.[0-9]+)([eE][+-]?[0-9]+)?)");
  if (!Matches(text, pattern)) return false;
  const char* start = text.data() + (text[0] == '+' ? 1 : 0);
  const auto result = std::from_chars(start, text.data() + text.size(), number);
  // What is too small to be told from zero is zero, and only what is too large is out of range.
  if (result.ec == std::errc::result_out_of_range) {
    number = std::strtod(start, nullptr);
    return std::isfinite(number);
  }
  return result.ec == std::errc();
}

bool IsWhole(const std::string& text, int least, int most) {
  static const std::regex pattern("[+-]?[0-9]{1,9}");
  if (!Matches(text, pattern)) return false;
  const int number = std::stoi(text);
  return number >= least && number <= most;
}

int DaysInMonth(int year, int month) {
  const bool isLeap = (year % 4 == 0 && year % 100 != 0) || year % 400 == 0;
  if (month == 2) return isLeap ? 29 : 28;
  return month == 4 || month == 6 || month == 9 || month == 11 ? 30 : 31;
}

bool IsTime(const std::string& text) {
  static const std::regex pattern(
      "([0-9]{4})-(0[1-9]|1[0-2])-(0[1-9]|[12][0-9]|3[01])"
      R"((T([01][0-9]|2[0-3]):[0-5][0-9](:[0-5][0-9](\.[0-9]{1,9})?)?)"
      "(Z|[+-]((0[0-9]|1[0-3]):[0-5][0-9]|14:00))?)?");
  if (!Matches(text, pattern)) return false;
  const int year = std::stoi(text.substr(0, 4));
  return year > 0 &&
         std::stoi(text.substr(8, 2)) <= DaysInMonth(year, std::stoi(text.substr(5, 2)));
}

bool IsColor(const std::string& text) {
  static const std::regex pattern("#[0-9a-fA-F]{6}");
  return Matches(text, pattern);
}

}  // namespace

std::string ExpectedOneOf(const std::vector<std::string>& words) {
  std::string list;
  for (const std::string& word : words) list += (list.empty() ? "" : ", ") + word;
  return "expected one of " + list;
}

TemplateValue::TemplateValue(Kind kind, std::string expected)
    : _kind(kind), _expected(std::move(expected)) {}

TemplateValue TemplateValue::Text() { return {Kind::kText, "expected a text"}; }

TemplateValue TemplateValue::Name() { return {Kind::kName, "expected a name that is not empty"}; }

TemplateValue TemplateValue::Color() {
  return {Kind::kColor, "expected # and six hexadecimal digits, such as #0072b2"};
}

TemplateValue TemplateValue::Whole(int least, int most) {
  TemplateValue value(Kind::kWhole, "expected a whole number from " + std::to_string(least) +
                                        " to " + std::to_string(most));
  value._least = least;
  value._most = most;
  return value;
}

TemplateValue TemplateValue::Fraction() {
  return {Kind::kFraction, "expected a number from 0 to 1"};
}

TemplateValue TemplateValue::Limit() {
  return {Kind::kLimit, "expected a number or a date such as 2024-01-31"};
}

TemplateValue TemplateValue::Boolean() {
  TemplateValue value(Kind::kWord, "expected true or false");
  value._words = {"true", "false", "1", "0"};
  return value;
}

TemplateValue TemplateValue::Word(std::vector<std::string> words) {
  TemplateValue value(Kind::kWord, ExpectedOneOf(words));
  value._words = std::move(words);
  return value;
}

bool TemplateValue::Accepts(std::string& value) const {
  if (_kind == Kind::kText) return true;
  if (_kind == Kind::kName) return !Stripped(value).empty();
  if (_kind == Kind::kColor) return IsColor(value);
  const std::string stripped = Stripped(value);
  if (!AcceptsStripped(stripped)) return false;
  value = stripped;
  return true;
}

bool TemplateValue::AcceptsStripped(const std::string& value) const {
  double number = 0;
  switch (_kind) {
    case Kind::kWhole:
      return IsWhole(value, _least, _most);
    case Kind::kFraction:
      return ReadNumber(value, number) && number >= 0 && number <= 1;
    case Kind::kLimit:
      return ReadNumber(value, number) || IsTime(value);
    default:
      return std::find(_words.begin(), _words.end(), value) != _words.end();
  }
}

}  // namespace chartbridge
