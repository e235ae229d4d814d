// SPDX-License-Identifier: Apache-2.0
#include <jni.h>

#include <cfenv>
#include <new>
#include <stdexcept>
#include <string>

#include "bridge/JException.h"
#include "tests/support/ContractTest.h"
#include "tests/support/FakePlatform.h"
#include "tests/support/Steps.h"
#include "tests/support/Thrown.h"

extern "C" jstring JNICALL Java_com_tesk_charteditor_template_ApplyTemplate_apply(
    JNIEnv* env, jobject self, jstring chartXml, jstring templateXml);

namespace chartbridge::testing {
namespace {

const JException kThrown("a", "b", "c");

class ApplyTemplateTest : public ContractTest {
 protected:
  // What Java gets, as events show it.
  std::string Apply(jstring chart, jstring templ) {
    const jstring result =
        Java_com_tesk_charteditor_template_ApplyTemplate_apply(jvm.Env(), nullptr, chart, templ);
    return jvm.Describe(result);
  }

  std::string Apply(const std::string& chart, const std::string& templ) {
    return Apply(jvm.MakeString(chart), jvm.MakeString(templ));
  }

  static Events Arguments() {
    return Seq("GetStringUTFChars(\"<chart/>\")", "GetStringUTFChars(\"<template/>\")",
               "NewStringUTF(\"\")");
  }

  // The template first.
  static Events Releases() {
    return Seq("ReleaseStringUTFChars(\"<template/>\", elements)",
               "ReleaseStringUTFChars(\"<chart/>\", elements)");
  }
};

TEST_F(ApplyTemplateTest, GivesTheWholeTransformedChart) {
  FakePlatform::Get().entire_xml = "<chart styled='1'/>";
  EXPECT_EQ(Apply("<chart/>", "<template/>"), "\"<chart styled='1'/>\"");
  // No lock, no attach, no guard, no check.
  EXPECT_TRUE(
      Happened(Seq(Arguments(), "ChartTransformer(\"<chart/>\")", "applyTemplate(\"<template/>\")",
                   "getEntireXML(\"UTF-8\")", "NewStringUTF(\"<chart styled='1'/>\")",
                   "~ChartTransformer", Releases())));
  EXPECT_EQ(jvm.UnreleasedBuffers(), 0U);
}

TEST_F(ApplyTemplateTest, AChartThatSerialisesToNothingIsEmpty) {
  EXPECT_EQ(Apply("<chart/>", "<template/>"), "\"\"");
  EXPECT_TRUE(
      Happened(Seq(Arguments(), "ChartTransformer(\"<chart/>\")", "applyTemplate(\"<template/>\")",
                   "getEntireXML(\"UTF-8\")", "~ChartTransformer", Releases())));
}

TEST_F(ApplyTemplateTest, NullArgumentsAreEmptyAndReleaseNothing) {
  FakePlatform::Get().entire_xml = "<chart/>";
  EXPECT_EQ(Apply(static_cast<jstring>(nullptr), nullptr), "\"\"");
  EXPECT_TRUE(Happened(Seq("NewStringUTF(\"\")")));
  EXPECT_EQ(jvm.Pending(), nullptr);
}

TEST_F(ApplyTemplateTest, OneNullArgumentReleasesTheOther) {
  FakePlatform::Get().entire_xml = "<chart/>";
  EXPECT_EQ(Apply(nullptr, jvm.MakeString("<template/>")), "\"\"");
  EXPECT_TRUE(Happened(Seq("GetStringUTFChars(\"<template/>\")", "NewStringUTF(\"\")",
                           "ReleaseStringUTFChars(\"<template/>\", elements)")));
  EXPECT_EQ(Apply(jvm.MakeString("<chart/>"), nullptr), "\"\"");
  EXPECT_TRUE(Happened(Seq("GetStringUTFChars(\"<chart/>\")", "NewStringUTF(\"\")",
                           "ReleaseStringUTFChars(\"<chart/>\", elements)")));
  EXPECT_EQ(jvm.Pending(), nullptr);
  EXPECT_EQ(jvm.UnreleasedBuffers(), 0U);
}

TEST_F(ApplyTemplateTest, CharactersThatJavaDoesNotGiveAreEmpty) {
  FakePlatform::Get().entire_xml = "<chart/>";
  for (const int failing : {1, 2}) {
    jvm.Fail("GetStringUTFChars", failing, jvm.MakeThrowable("java/lang/OutOfMemoryError", "heap"));
    EXPECT_EQ(Apply("<chart/>", "<template/>"), "\"\"");
    EXPECT_EQ(jvm.UnreleasedBuffers(), 0U);
    // Java sees its own exception.
    EXPECT_NE(jvm.Pending(), nullptr);
    jvm.SetPending(nullptr);
    for (const std::string& event : EventLog::Get().Texts(Source::kPlatform)) {
      EXPECT_EQ(event.find("ChartTransformer"), std::string::npos);
    }
  }
}

TEST_F(ApplyTemplateTest, AFailedResultLeavesJavasExceptionToJava) {
  FakePlatform::Get().entire_xml = "<chart/>";
  const jthrowable memory = jvm.MakeThrowable("java/lang/OutOfMemoryError", "heap");
  jvm.Fail("NewStringUTF", 2, memory);
  EXPECT_EQ(Apply("<chart/>", "<template/>"), "null");
  EXPECT_EQ(jvm.Pending(), memory);
  for (const std::string& event : EventLog::Get().Texts(Source::kJni)) {
    EXPECT_EQ(event.find("Exception"), std::string::npos) << event;
  }
}

TEST_F(ApplyTemplateTest, TextsGoThroughUnconverted) {
  const std::string text = "caf\xC3\xA9 \xE2\x82\xAC";
  FakePlatform::Get().entire_xml = text;
  EXPECT_EQ(Apply(text, text), Quoted(text));
  const Events events = EventLog::Get().Texts(Source::kPlatform);
  EXPECT_EQ(events[0], "ChartTransformer(" + Quoted(text) + ")");
  EXPECT_EQ(events[1], "applyTemplate(" + Quoted(text) + ")");
  EXPECT_TRUE(Happened(Source::kIcu, {}));
}

TEST_F(ApplyTemplateTest, EmptyTextsAreTransformedToo) {
  FakePlatform::Get().entire_xml = "<chart/>";
  EXPECT_EQ(Apply("", ""), "\"<chart/>\"");
}

// The transformer's constructor, the template, and the serialisation throw, each kind of exception.
class ThrowingTransformerTest : public ApplyTemplateTest,
                                public ::testing::WithParamInterface<int> {};

TEST_P(ThrowingTransformerTest, JavaGetsTheEmptyDefault) {
  void (*const kinds[])() = {[] { throw JException("a", "b", "c"); }, [] { throw &kThrown; },
                             [] { throw std::runtime_error("text"); },
                             [] { throw std::bad_alloc(); }, [] { throw 7; }};
  const Events calls = Seq("ChartTransformer(\"<chart/>\")", "applyTemplate(\"<template/>\")",
                           "getEntireXML(\"UTF-8\")");
  FakePlatform::Get().entire_xml = "<chart/>";
  for (const auto raise : kinds) {
    int call = 0;
    FakePlatform::Get().on_transform = [&call, raise] {
      if (++call == GetParam()) raise();
    };
    EXPECT_EQ(Apply("<chart/>", "<template/>"), "\"\"");
    const Events reached(calls.begin(), calls.begin() + GetParam());
    EXPECT_TRUE(Happened(Seq(Arguments(), reached,
                             GetParam() == 1 ? Events{} : Seq("~ChartTransformer"), Releases())));
    EXPECT_EQ(jvm.UnreleasedBuffers(), 0U);
    EXPECT_EQ(jvm.Pending(), nullptr);
  }
}

INSTANTIATE_TEST_SUITE_P(EveryStep, ThrowingTransformerTest, ::testing::Values(1, 2, 3));

TEST_F(ApplyTemplateTest, WhatTheTransformerChangesInTheFloatingPointEnvironmentStays) {
  FakePlatform::Get().on_transform = [] { std::fesetround(FE_UPWARD); };
  Apply("<chart/>", "<template/>");
  const int mode = std::fegetround();
  std::fesetround(FE_TONEAREST);
  EXPECT_EQ(mode, FE_UPWARD);
}

}  // namespace
}  // namespace chartbridge::testing
