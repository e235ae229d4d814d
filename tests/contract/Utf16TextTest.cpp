// SPDX-License-Identifier: Apache-2.0
#include "bridge/Utf16Text.h"

#include "tests/support/AllocationProbe.h"
#include "tests/support/ContractTest.h"
#include "tests/support/IcuProbe.h"
#include "tests/support/Steps.h"
#include "tests/support/Thrown.h"

namespace chartbridge::testing {
namespace {

class Utf16TextTest : public ContractTest {
 protected:
  Utf16TextTest() { EventLog::Get().Include(Source::kMemory); }
};

std::u16string Units(const Utf16Text& text) {
  return std::u16string(text.data(), text.data() + text.length());
}

TEST_F(Utf16TextTest, ConvertsIntoFourUnitsForEachByteAndClosesTheConverter) {
  {
    const Utf16Text text("out.png");
    EXPECT_EQ(Units(text), u"out.png");
    EXPECT_TRUE(
        Happened(Seq("ucnv_open(null)", "new[] 56 bytes: buffer 1",
                     "ucnv_toUChars(28, \"out.png\")", "ucnv_fixFileSeparator(28)", "ucnv_close")));
  }
  EXPECT_TRUE(Happened(Seq("delete[] buffer 1")));
}

TEST_F(Utf16TextTest, LengthCountsUnits) {
  const Utf16Text text("\xC3\xA9\xF0\x9F\x93\x88");
  EXPECT_EQ(Units(text), u"\u00E9\U0001F4C8");
  EXPECT_TRUE(Happened(Utf16Conversion("\xC3\xA9\xF0\x9F\x93\x88", 1)));
}

TEST_F(Utf16TextTest, AnEmptyTextIsNotNull) {
  const Utf16Text text("");
  EXPECT_NE(text.data(), nullptr);
  EXPECT_EQ(text.length(), 0);
  EXPECT_TRUE(Happened(Utf16Conversion("", 1)));
}

TEST_F(Utf16TextTest, KeepsZeroBytes) {
  const std::string zero("a\0b", 3);
  const Utf16Text text(zero);
  EXPECT_EQ(Units(text), std::u16string(u"a\0b", 3));
}

TEST_F(Utf16TextTest, UsesTheDefaultConverterOfTheProcess) {
  IcuProbe::Get().SetDefault("ISO-8859-1");
  const Utf16Text text("caf\xE9");
  EXPECT_EQ(Units(text), u"caf\u00E9");
}

TEST_F(Utf16TextTest, MapsTheSubstituteFileSeparator) {
  // This encoding reads the backslash as a yen sign.
  IcuProbe::Get().SetDefault("ibm-943_P130-1999");
  const Utf16Text text("C:\\charts");
  EXPECT_EQ(Units(text), u"C:\\charts");
}

TEST_F(Utf16TextTest, AnIcuErrorSkipsTheSeparatorsAndKeepsTheLength) {
  IcuProbe::Get().FailToUChars(U_INVALID_CHAR_FOUND);
  const Utf16Text text("out.png");
  EXPECT_EQ(Units(text), u"out.png");
  EXPECT_TRUE(Happened(Seq("ucnv_open(null)", "new[] 56 bytes: buffer 1",
                           "ucnv_toUChars(28, \"out.png\")", "ucnv_close")));
}

TEST_F(Utf16TextTest, AnIcuWarningCountsAsSuccess) {
  IcuProbe::Get().FailToUChars(U_STRING_NOT_TERMINATED_WARNING);
  const Utf16Text text("out.png");
  EXPECT_TRUE(Happened(Utf16Conversion("out.png", 1)));
}

TEST_F(Utf16TextTest, AConverterThatIcuCannotOpenGivesAnEmptyText) {
  IcuProbe::Get().FailOpen();
  const Utf16Text text("out.png");
  EXPECT_NE(text.data(), nullptr);
  EXPECT_EQ(text.length(), 0);
}

TEST_F(Utf16TextTest, MalformedBytesBecomeSubstitutes) {
  const Utf16Text text(
      "a\xFF"
      "b");
  EXPECT_EQ(Units(text), u"a\uFFFDb");
}

TEST_F(Utf16TextTest, AFailedAllocationPropagatesAndLeavesNoConverterOpen) {
  AllocationProbe::Get().FailNewArray(1);
  EXPECT_EQ(Thrown([] { const Utf16Text text("out.png"); }), "std::bad_alloc");
  EXPECT_EQ(IcuProbe::Get().OpenConverters(), 0U);
}

}  // namespace
}  // namespace chartbridge::testing
