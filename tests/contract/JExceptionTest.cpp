// SPDX-License-Identifier: Apache-2.0
#include "bridge/JException.h"

#include <gtest/gtest.h>

#include <memory>
#include <type_traits>

#include "tests/support/Thrown.h"

namespace chartbridge::testing {
namespace {

TEST(JExceptionTest, HoldsThreeTextsInOrder) {
  const JException exception("first", "second", "third");
  EXPECT_EQ(exception.firstText(), "first");
  EXPECT_EQ(exception.secondText(), "second");
  EXPECT_EQ(exception.thirdText(), "third");
}

TEST(JExceptionTest, ACopyOutlivesItsOriginal) {
  auto original = std::make_unique<JException>(std::string(100, 'a'), "second", "third");
  const JException copy(*original);
  original.reset();
  EXPECT_EQ(copy.firstText(), std::string(100, 'a'));
  EXPECT_EQ(copy.secondText(), "second");
  EXPECT_EQ(copy.thirdText(), "third");
}

TEST(JExceptionTest, IsAPlainValue) {
  EXPECT_TRUE(std::is_copy_constructible_v<JException>);
  EXPECT_FALSE(std::is_polymorphic_v<JException>);
  EXPECT_FALSE((std::is_base_of_v<std::exception, JException>));
  EXPECT_EQ(sizeof(JException), 3 * sizeof(std::string));
}

TEST(JExceptionTest, ThrownByValueItIsNotCaughtAsAPointer) {
  EXPECT_EQ(Thrown([] { throw JException("a", "b", "c"); }), "JException(a, b, c)");
  const JException exception("a", "b", "c");
  EXPECT_EQ(Thrown([&] { throw &exception; }), "JException*(a, b, c)");
}

}  // namespace
}  // namespace chartbridge::testing
