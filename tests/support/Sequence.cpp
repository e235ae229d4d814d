// SPDX-License-Identifier: Apache-2.0
#include "tests/support/Sequence.h"

#include <algorithm>
#include <sstream>

namespace chartbridge::testing {
namespace {

void Print(std::ostream& out, const char* title, const Events& events, std::size_t difference) {
  out << title << " (" << events.size() << " events):\n";
  for (std::size_t i = 0; i < events.size(); ++i) {
    out << (i == difference ? "  >>> " : "      ") << i << ": " << events[i] << "\n";
  }
  if (difference == events.size()) out << "  >>> (ends here)\n";
}

}  // namespace

::testing::AssertionResult SameEvents(const Events& expected, const Events& actual) {
  if (expected == actual) return ::testing::AssertionSuccess();
  const std::size_t shared = std::min(expected.size(), actual.size());
  std::size_t difference = 0;
  while (difference < shared && expected[difference] == actual[difference]) ++difference;
  std::ostringstream out;
  out << "the events differ from number " << difference << " on\n";
  Print(out, "expected", expected, difference);
  Print(out, "happened", actual, difference);
  return ::testing::AssertionFailure() << out.str();
}

::testing::AssertionResult Happened(const Events& expected) {
  const Events actual = EventLog::Get().Texts();
  EventLog::Get().Clear();
  return SameEvents(expected, actual);
}

::testing::AssertionResult Happened(Source source, const Events& expected) {
  const Events actual = EventLog::Get().Texts(source);
  EventLog::Get().Clear();
  return SameEvents(expected, actual);
}

}  // namespace chartbridge::testing
