// SPDX-License-Identifier: Apache-2.0
#ifndef TESTS_SUPPORT_SEQUENCE_H_
#define TESTS_SUPPORT_SEQUENCE_H_

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/support/EventLog.h"

namespace chartbridge::testing {

/// Events in the order in which they happen.
using Events = std::vector<std::string>;

inline void Append(Events& all, const Events& more) {
  all.insert(all.end(), more.begin(), more.end());
}
inline void Append(Events& all, const std::string& one) { all.push_back(one); }

/// Single events and named sub-sequences, one after the other.
template <typename... Parts>
Events Seq(const Parts&... parts) {
  Events all;
  (Append(all, parts), ...);
  return all;
}

/// Whether both lists are equal; the message shows them side by side with the first difference
/// marked.
::testing::AssertionResult SameEvents(const Events& expected, const Events& actual);

/// Whether exactly these events happened since the last look. Clears the log.
::testing::AssertionResult Happened(const Events& expected);

/// Whether exactly these events of one source happened since the last look. Clears the log.
::testing::AssertionResult Happened(Source source, const Events& expected);

}  // namespace chartbridge::testing

#endif  // TESTS_SUPPORT_SEQUENCE_H_
