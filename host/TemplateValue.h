// SPDX-License-Identifier: Apache-2.0
#ifndef HOST_TEMPLATEVALUE_H_
#define HOST_TEMPLATEVALUE_H_

#include <string>
#include <vector>

namespace chartbridge {

/// What an attribute of a chart template can hold: what the attribute of the same name in a chart
/// can.
class TemplateValue {
 public:
  /// Any text, also an empty one.
  static TemplateValue Text();
  /// A text that is not blank.
  static TemplateValue Name();
  /// `#` and six hexadecimal digits.
  static TemplateValue Color();
  /// A whole number.
  static TemplateValue Whole(int least, int most);
  /// A decimal number from 0 to 1.
  static TemplateValue Fraction();
  /// The end of an axis: a number, or a date with or without a time.
  static TemplateValue Limit();
  /// `true`, `false`, `1` or `0`.
  static TemplateValue Boolean();
  /// One of some words.
  static TemplateValue Word(std::vector<std::string> words);

  /// Whether `value` can be held. Blanks around it, which mean nothing in numbers and words, are
  /// removed.
  bool Accepts(std::string& value) const;

  /// What is expected, to finish the sentence "expected ...".
  const std::string& Expected() const { return _expected; }

 private:
  enum class Kind { kText, kName, kColor, kWhole, kFraction, kLimit, kWord };

  TemplateValue(Kind kind, std::string expected);

  bool AcceptsStripped(const std::string& value) const;

  Kind _kind;
  std::string _expected;
  std::vector<std::string> _words;
  int _least = 0;
  int _most = 0;
};

/// Words as a message lists them: "expected one of a, b".
std::string ExpectedOneOf(const std::vector<std::string>& words);

}  // namespace chartbridge

#endif  // HOST_TEMPLATEVALUE_H_
