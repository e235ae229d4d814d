// SPDX-License-Identifier: Apache-2.0
// The reference host's texts, without a JVM.
#include <gtest/gtest.h>
#include <unicode/ucnv.h>

#include <string>
#include <vector>

#include "host/DebugOutput.h"
#include "host/ModifiedUtf8.h"
#include "host/OptionText.h"
#include "platform/ChartBase.h"
#include "platform/TESKMB.h"

namespace chartbridge {
namespace {

using Units = std::basic_string<unsigned short>;

Units Utf16(const std::u16string& text) { return Units(text.begin(), text.end()); }

// ICU's default converter is the native encoding. On Linux it is UTF-8 in every locale.
TEST(NativeText, ReplacesOutput) {
  Units out = Utf16(u"A");
  EXPECT_EQ(TESKMBGenericToU16(out, "m\xC3\xBCll"), 0);
  EXPECT_EQ(out, Utf16(u"müll"));
  EXPECT_EQ(TESKMBGenericToU16(out, ""), 0);
  EXPECT_EQ(out, Units());
}

TEST(NativeText, UsesPairsBeyondBasicPlane) {
  Units out;
  EXPECT_EQ(TESKMBGenericToU16(out, "a\xF0\x9F\x98\x80z"), 0);
  EXPECT_EQ(out, Utf16(u"a\U0001F600z"));
}

TEST(NativeText, KeepsZeros) {
  Units out;
  EXPECT_EQ(TESKMBGenericToU16(out, std::string("a\0b", 3)), 0);
  EXPECT_EQ(out, Utf16(std::u16string(u"a\0b", 3)));
}

TEST(NativeText, ReplacesMalformedBytes) {
  Units out;
  EXPECT_EQ(TESKMBGenericToU16(out, "a\xFFz"), 0);
  EXPECT_EQ(out, Utf16(u"a\uFFFDz"));
  EXPECT_EQ(TESKMBGenericToU16(out, "a\xC3"), 0);
  EXPECT_EQ(out, Utf16(u"a\uFFFD"));
}

TEST(NativeText, IsIcusDefault) {
  EXPECT_STREQ(ucnv_getDefaultName(), "UTF-8");
  EXPECT_TRUE(qUTF8mode());
}

std::string Transcoded(const Units& text) {
  char* bytes = TESKMBTranscodeU8(text.c_str());
  std::string copy = bytes;
  TESKMBRelease(&bytes);
  EXPECT_EQ(bytes, nullptr);
  return copy;
}

TEST(TranscodeU8, EncodesAllPlanes) {
  EXPECT_EQ(Transcoded(Utf16(u"")), "");
  EXPECT_EQ(Transcoded(Utf16(u"aü€")), "a\xC3\xBC\xE2\x82\xAC");
  EXPECT_EQ(Transcoded(Utf16(u"\U0001F600")), "\xF0\x9F\x98\x80");
}

TEST(TranscodeU8, ReplacesLoneSurrogates) {
  const std::string replacement = "\xEF\xBF\xBD";
  EXPECT_EQ(Transcoded({0xD83D}), replacement);
  EXPECT_EQ(Transcoded({'a', 0xDE00, 'b'}), "a" + replacement + "b");
  EXPECT_EQ(Transcoded({0xD83D, 0xD83D, 0xDE00}), replacement + "\xF0\x9F\x98\x80");
}

TEST(TranscodeU8, TakesNullForNoText) {
  char* bytes = TESKMBTranscodeU8(nullptr);
  EXPECT_STREQ(bytes, "");
  TESKMBRelease(&bytes);
}

TEST(ModifiedUtf8, JoinsSurrogates) {
  EXPECT_EQ(FromModifiedUtf8("a\xED\xA0\xBD\xED\xB8\x80z"), "a\xF0\x9F\x98\x80z");
  EXPECT_EQ(FromModifiedUtf8(std::string("a\xC0\x80z")), std::string("a\0z", 3));
}

TEST(ModifiedUtf8, KeepsTheRest) {
  for (const char* text : {"", "plain", "\xC3\xBC\xE2\x82\xAC", "\xF0\x9F\x98\x80", "\xED\xA0\xBD",
                           "\xED\xB8\x80\xED\xA0\xBD", "\xED\xA0\xBD\xED", "\xC0"}) {
    EXPECT_EQ(FromModifiedUtf8(text), text);
  }
}

TEST(ModifiedUtf8, WritesReferences) {
  EXPECT_EQ(ReferenceSupplementary("a\xF0\x9F\x98\x80z"), "a&#128512;z");
  EXPECT_EQ(ReferenceSupplementary("a\xED\xA0\xBD\xED\xB8\x80z"), "a&#128512;z");
  EXPECT_EQ(ReferenceSupplementary("a\xC3\xBC\xE2\x82\xAC"), "a\xC3\xBC\xE2\x82\xAC");
  // No whole character is no character to refer to.
  for (const char* text : {"a\xF0\x9F\x98", "\xED\xA0\xBD", "\xED\xB8\x80\xED\xA0\xBD"}) {
    EXPECT_EQ(ReferenceSupplementary(text), text);
  }
}

TEST(ModifiedUtf8, AppendsCharactersOfEveryLength) {
  std::string text;
  for (const unsigned character : {0x41U, 0xFCU, 0x20ACU, 0x1F600U}) AppendUtf8(text, character);
  EXPECT_EQ(text, "A\xC3\xBC\xE2\x82\xAC\xF0\x9F\x98\x80");
}

TEST(OptionText, SplitsPaths) {
  EXPECT_EQ(SplitPath(""), std::vector<std::string>());
  EXPECT_EQ(SplitPath("::a::b c:"), (std::vector<std::string>{"a", "b c"}));
}

TEST(OptionText, KeepsEmptyQuotedOption) {
  std::vector<std::string> options;
  EXPECT_TRUE(SplitOptions("'' a\"\"b", options));
  EXPECT_EQ(options, (std::vector<std::string>{"", "ab"}));
}

TEST(DebugOutput, GoesToCallbackOrErrorStream) {
  std::string seen;
  SetDebugOutput([&seen](const std::string& text) { seen += "[" + text + "]"; });
  ChartBase::printDebugInfo("one\ntwo");
  EXPECT_EQ(seen, "[one\ntwo]");
  SetDebugOutput(nullptr);
  testing::internal::CaptureStderr();
  ChartBase::printDebugInfo("three");
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "three\n");
  EXPECT_EQ(seen, "[one\ntwo]");
}

TEST(ChartBase, NamesUtf8) { EXPECT_EQ(Units(ChartBase::_utf8), Utf16(u"UTF-8")); }

}  // namespace
}  // namespace chartbridge
