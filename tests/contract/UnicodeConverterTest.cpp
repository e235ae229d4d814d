// SPDX-License-Identifier: Apache-2.0
#include "bridge/UnicodeConverter.h"

#include "tests/support/AllocationProbe.h"
#include "tests/support/ContractTest.h"
#include "tests/support/FakePlatform.h"
#include "tests/support/IcuProbe.h"
#include "tests/support/Steps.h"
#include "tests/support/Thrown.h"

namespace chartbridge::testing {
namespace {

class UnicodeConverterTest : public ContractTest {
 protected:
  UnicodeConverterTest() { EventLog::Get().Include(Source::kMemory); }
};

// The conversion of a text with this many UTF-16 units.
Events Conversion(const std::string& text, std::size_t units, std::size_t allocated) {
  return Seq("TESKMBGenericToU16(\"A\", " + Quoted(text) + ")",
             "new[] " + std::to_string(2 * allocated) + " bytes: buffer 1", "ucnv_open(null)",
             "ucnv_fixFileSeparator(" + std::to_string(units) + ")", "ucnv_close");
}

TEST_F(UnicodeConverterTest, ConvertsThroughTheHostsTranscoder) {
  {
    const UnicodeConverter converter("chart");
    EXPECT_EQ(converter.length(), 5);
    EXPECT_EQ(std::u16string(converter.toString(), converter.toString() + 5), u"chart");
    EXPECT_TRUE(Happened(Conversion("chart", 5, 10)));
  }
  EXPECT_TRUE(Happened(Seq("delete[] buffer 1")));
}

TEST_F(UnicodeConverterTest, LengthCountsUnitsNotBytesOrCharacters) {
  const UnicodeConverter converter("\xC3\xA9\xF0\x9F\x93\x88");
  EXPECT_EQ(converter.length(), 3);
  const std::u16string units(converter.toString(), converter.toString() + 3);
  EXPECT_EQ(units, u"\u00E9\U0001F4C8");
}

TEST_F(UnicodeConverterTest, TwoZeroUnitsFollowTheText) {
  for (const std::string text : {"", "a", "ab", "abc", "a longer text"}) {
    const UnicodeConverter converter(text);
    ASSERT_NE(converter.toString(), nullptr) << text;
    const unsigned short* end = converter.toString() + converter.length();
    EXPECT_EQ(end[0], 0) << text;
    EXPECT_EQ(end[1], 0) << text;
  }
}

TEST_F(UnicodeConverterTest, TheBufferHoldsTwiceTheUnitsAndAtLeastTwoMore) {
  const std::size_t sizes[][2] = {{0, 2}, {1, 3}, {2, 4}, {3, 6}, {7, 14}};
  for (const auto& [units, allocated] : sizes) {
    AllocationProbe::Get().Reset();
    EventLog::Get().Clear();
    const std::string text(units, 'x');
    const UnicodeConverter converter(text);
    EXPECT_TRUE(Happened(Conversion(text, units, allocated))) << units;
  }
}

TEST_F(UnicodeConverterTest, AnEmptyTextHasABufferOfTwoZeroUnits) {
  {
    const UnicodeConverter converter("");
    EXPECT_EQ(converter.length(), 0);
    ASSERT_NE(converter.toString(), nullptr);
    EXPECT_EQ(converter.toString()[0], 0);
    EXPECT_EQ(converter.toString()[1], 0);
    EXPECT_TRUE(Happened(Conversion("", 0, 2)));
  }
  EXPECT_TRUE(Happened(Seq("delete[] buffer 1")));
}

TEST_F(UnicodeConverterTest, ATextThatTheTranscoderRefusesLeavesNothing) {
  for (const int result : {1, -1, 42}) {
    FakePlatform::Get().generic_to_u16_result = result;
    {
      const UnicodeConverter converter("text");
      EXPECT_EQ(converter.toString(), nullptr);
      EXPECT_EQ(converter.length(), 0);
    }
    EXPECT_TRUE(Happened(Seq("TESKMBGenericToU16(\"A\", \"text\")"))) << result;
  }
}

TEST_F(UnicodeConverterTest, MapsTheSubstituteFileSeparator) {
  // In this encoding the yen sign stands where the backslash belongs.
  IcuProbe::Get().SetDefault("ibm-943_P130-1999");
  const UnicodeConverter converter(
      "C:\xC2\xA5"
      "charts");
  ASSERT_EQ(converter.length(), 9);
  EXPECT_EQ(converter.toString()[2], u'\\');
}

TEST_F(UnicodeConverterTest, OtherEncodingsKeepTheYenSign) {
  const UnicodeConverter converter(
      "C:\xC2\xA5"
      "charts");
  ASSERT_EQ(converter.length(), 9);
  EXPECT_EQ(converter.toString()[2], u'\u00A5');
}

TEST_F(UnicodeConverterTest, AConverterThatIcuCannotOpenIsIgnored) {
  IcuProbe::Get().FailOpen();
  const UnicodeConverter converter("a\xC2\xA5");
  EXPECT_EQ(converter.length(), 2);
  EXPECT_EQ(converter.toString()[1], u'\u00A5');
}

TEST_F(UnicodeConverterTest, LeavesNoIcuConverterOpen) {
  const UnicodeConverter converter("text");
  EXPECT_EQ(IcuProbe::Get().OpenConverters(), 0U);
}

TEST_F(UnicodeConverterTest, AFailedAllocationPropagatesAndKeepsNothing) {
  AllocationProbe::Get().FailNewArray(1);
  EXPECT_EQ(Thrown([] { const UnicodeConverter converter("text"); }), "std::bad_alloc");
  EXPECT_TRUE(Happened(Seq("TESKMBGenericToU16(\"A\", \"text\")")));
}

TEST_F(UnicodeConverterTest, AThrowingTranscoderPropagatesAndKeepsNothing) {
  FakePlatform::Get().on_generic_to_u16 = [] { throw JException("a", "b", "c"); };
  EXPECT_EQ(Thrown([] { const UnicodeConverter converter("text"); }), "JException(a, b, c)");
  EXPECT_TRUE(Happened(Seq("TESKMBGenericToU16(\"A\", \"text\")")));
}

TEST_F(UnicodeConverterTest, ConvertsALongText) {
  const std::string text(100000, 'x');
  const UnicodeConverter converter(text);
  EXPECT_EQ(converter.length(), 100000);
  EXPECT_EQ(converter.toString()[99999], u'x');
}

}  // namespace
}  // namespace chartbridge::testing
