// SPDX-License-Identifier: Apache-2.0
#include "app/HistogramFile.h"

#include <charconv>
#include <cmath>
#include <cstdlib>
#include <optional>
#include <sstream>

#include "app/Failure.h"
#include "app/InputFile.h"
#include "app/JsonText.h"
#include "app/NativeText.h"

namespace chartbridge {

namespace {

constexpr const char* kBlanks = " \t\r";
constexpr std::size_t kMostShown = 40;
constexpr const char* kByteOrderMark = "\xEF\xBB\xBF";

std::string Stripped(const std::string& text) {
  const std::size_t first = text.find_first_not_of(kBlanks);
  if (first == std::string::npos) return "";
  return text.substr(first, text.find_last_not_of(kBlanks) + 1 - first);
}

/// A decimal number with a point, whatever the locale; infinite where it is beyond the largest
/// double. None for any other text.
std::optional<double> NumberOf(const std::string& text) {
  const char* begin = text.data() + (text.front() == '+' ? 1 : 0);
  const char* end = text.data() + text.size();
  double number = 0;
  const auto parsed = std::from_chars(begin, end, number);
  if (parsed.ptr != end) return std::nullopt;
  // What is too small to be told from zero is zero, and only what is too large is out of range.
  if (parsed.ec == std::errc::result_out_of_range) return std::strtod(begin, nullptr);
  if (parsed.ec != std::errc() || !std::isfinite(number)) return std::nullopt;
  return number;
}

std::vector<double> NumbersOf(const nlohmann::ordered_json& root, const char* member,
                              const std::string& name) {
  std::vector<double> numbers;
  const auto found = root.find(member);
  if (found == root.end() || !found->is_array()) {
    throw Failure(name + ": needs \"" + member + "\", an array of numbers");
  }
  for (const auto& number : *found) {
    if (!number.is_number()) {
      throw Failure(name + ": \"" + member + "\" holds " + number.dump().substr(0, kMostShown) +
                    " where a number is expected");
    }
    numbers.push_back(number.get<double>());
  }
  return numbers;
}

}  // namespace

std::vector<double> ReadValues(const InputFile& file) {
  std::string text = file.Text();
  if (text.rfind(kByteOrderMark, 0) == 0) text.erase(0, 3);
  std::istringstream lines(text);
  std::vector<double> values;
  std::string line;
  for (int number = 1; std::getline(lines, line); ++number) {
    const std::string word = Stripped(line);
    if (word.empty()) continue;
    const auto value = NumberOf(word);
    if (!value) {
      throw Failure(file.Name() + ": line " + std::to_string(number) + ": found \"" +
                    OnOneLine(word.substr(0, kMostShown)) +
                    "\" where a number is expected, one a line");
    }
    if (!std::isfinite(*value)) {
      throw Failure(file.Name() + ": line " + std::to_string(number) + ": " +
                    word.substr(0, kMostShown) + " is beyond the largest number, 1.8e308");
    }
    values.push_back(*value);
  }
  if (values.empty()) throw Failure(file.Name() + ": holds no numbers");
  return values;
}

HistogramBins ReadBins(const InputFile& file) {
  const nlohmann::ordered_json root = ParseJson(file.Text(), file.Name());
  if (!root.is_object()) {
    throw Failure(file.Name() + ": expected an object with \"edges\" and \"heights\"");
  }
  HistogramBins bins{NumbersOf(root, "edges", file.Name()),
                     NumbersOf(root, "heights", file.Name())};
  if (bins.heights.empty() || bins.edges.size() != bins.heights.size() + 1) {
    throw Failure(file.Name() + ": has " + std::to_string(bins.edges.size()) + " edges and " +
                  std::to_string(bins.heights.size()) +
                  " heights; there must be one edge more than heights, and at least one height");
  }
  return bins;
}

}  // namespace chartbridge
