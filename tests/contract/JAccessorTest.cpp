// SPDX-License-Identifier: Apache-2.0
#include "bridge/JAccessor.h"

#include "tests/support/ContractTest.h"
#include "tests/support/FakePlatform.h"
#include "tests/support/FloatEnvProbe.h"
#include "tests/support/IcuProbe.h"
#include "tests/support/Steps.h"

namespace chartbridge::testing {
namespace {

constexpr char kChart[] = "org/example/Chart";

class JAccessorTest : public ContractTest {
 protected:
  JAccessor accessor{jvm.Env()};
};

TEST_F(JAccessorTest, StartsWithItsEnvAndNothingElse) {
  EXPECT_EQ(accessor.getClass(), nullptr);
  EXPECT_EQ(accessor.getMethodID(), nullptr);
  EXPECT_EQ(accessor.getObject(), nullptr);
  EXPECT_TRUE(Happened({}));
}

TEST_F(JAccessorTest, CopySharesEnvClassMethodAndObject) {
  jvm.ClassWithConstructor(kChart);
  accessor.setClass(kChart);
  accessor.setMethod("<init>", "()V");
  accessor.setObject(jvm.MakeObject(kChart));
  EventLog::Get().Clear();

  JAccessor copy(accessor);
  EXPECT_EQ(copy.getClass(), accessor.getClass());
  EXPECT_EQ(copy.getMethodID(), accessor.getMethodID());
  EXPECT_EQ(copy.getObject(), accessor.getObject());
  EXPECT_TRUE(Happened({}));
  copy.setClass(kChart);
  EXPECT_TRUE(Happened(Seq("FindClass(org/example/Chart)")));
}

TEST_F(JAccessorTest, DestructorReleasesNothing) {
  jvm.ClassWithConstructor(kChart);
  {
    JAccessor bound(jvm.Env());
    bound.setClass(kChart);
    bound.setObject(jvm.MakeObject(kChart));
    EventLog::Get().Clear();
  }
  EXPECT_TRUE(Happened({}));
}

TEST_F(JAccessorTest, SetEnvDecidesWhereCallsGo) {
  jvm.Class(kChart);
  accessor.setEnv(jvm.NewEnv("worker"));
  accessor.setClass(kChart);
  EXPECT_TRUE(Happened(Seq("FindClass(org/example/Chart) on worker")));
}

TEST_F(JAccessorTest, SetClassKeepsTheClassWithoutACheck) {
  jvm.Class(kChart);
  EXPECT_EQ(accessor.setClass(kChart), jvm.ClassReference(kChart));
  EXPECT_EQ(accessor.getClass(), jvm.ClassReference(kChart));
  EXPECT_TRUE(Happened(Seq("FindClass(org/example/Chart)")));
}

TEST_F(JAccessorTest, SetClassOfAMissingClassChecksAndKeepsNull) {
  const jthrowable missing = jvm.MakeThrowable("java/lang/NoClassDefFoundError", kChart);
  jvm.Class(kChart);
  accessor.setClass(kChart);
  EventLog::Get().Clear();
  jvm.Fail("FindClass", 1, missing);

  EXPECT_EQ(accessor.setClass("org/example/Missing"), nullptr);
  EXPECT_TRUE(Happened(Seq("FindClass(org/example/Missing)", PendingException(missing))));
  EXPECT_EQ(accessor.getClass(), nullptr);
  EXPECT_EQ(jvm.Pending(), nullptr);
}

TEST_F(JAccessorTest, SetMethodKeepsTheMethodWithoutACheck) {
  jvm.Method(kChart, "draw", "(I)V");
  accessor.setClass(kChart);
  EventLog::Get().Clear();
  EXPECT_EQ(accessor.setMethod("draw", "(I)V"), jvm.MethodID(kChart, "draw", "(I)V"));
  EXPECT_EQ(accessor.getMethodID(), jvm.MethodID(kChart, "draw", "(I)V"));
  EXPECT_TRUE(Happened(Seq("GetMethodID(class org/example/Chart, draw, (I)V)")));
}

TEST_F(JAccessorTest, SetMethodOfAMissingMethodChecksAndKeepsNull) {
  jvm.Method(kChart, "draw", "(I)V");
  accessor.setClass(kChart);
  accessor.setMethod("draw", "(I)V");
  EventLog::Get().Clear();
  const jthrowable missing = jvm.MakeThrowable("java/lang/NoSuchMethodError", "paint");
  jvm.Fail("GetMethodID", 1, missing);

  EXPECT_EQ(accessor.setMethod("paint", "()V"), nullptr);
  EXPECT_TRUE(
      Happened(Seq("GetMethodID(class org/example/Chart, paint, ()V)", PendingException(missing))));
  EXPECT_EQ(accessor.getMethodID(), nullptr);
}

TEST_F(JAccessorTest, SetMethodLooksUpAgainOnEveryCall) {
  jvm.Method(kChart, "draw", "(I)V");
  accessor.setClass(kChart);
  accessor.setMethod("draw", "(I)V");
  EventLog::Get().Clear();
  accessor.setMethod("draw", "(I)V");
  EXPECT_TRUE(Happened(Seq("GetMethodID(class org/example/Chart, draw, (I)V)")));
}

TEST_F(JAccessorTest, SetMethodWithoutAClassKeepsThePreviousMethod) {
  jvm.Method(kChart, "draw", "(I)V");
  accessor.setClass(kChart);
  const jmethodID draw = accessor.setMethod("draw", "(I)V");
  jvm.Fail("FindClass", 1);
  accessor.setClass("org/example/Missing");
  EventLog::Get().Clear();

  EXPECT_EQ(accessor.setMethod("other", "()V"), draw);
  EXPECT_EQ(accessor.setStaticMethod("other", "()V"), draw);
  EXPECT_EQ(accessor.getMethodID(), draw);
  EXPECT_TRUE(Happened({}));
}

TEST_F(JAccessorTest, SetMethodWithoutAnyClassGivesNullAndCallsNothing) {
  EXPECT_EQ(accessor.setMethod("draw", "(I)V"), nullptr);
  EXPECT_EQ(accessor.setStaticMethod("draw", "(I)V"), nullptr);
  EXPECT_TRUE(Happened({}));
}

TEST_F(JAccessorTest, SetStaticMethodLooksUpAStaticMethod) {
  jvm.StaticMethod(kChart, "open", "()V");
  accessor.setClass(kChart);
  EventLog::Get().Clear();
  const jmethodID open = accessor.setStaticMethod("open", "()V");
  EXPECT_NE(open, nullptr);
  EXPECT_EQ(accessor.getMethodID(), open);
  EXPECT_TRUE(Happened(Seq("GetStaticMethodID(class org/example/Chart, open, ()V)")));
}

TEST_F(JAccessorTest, SetStaticMethodOfAMissingMethodChecksAndKeepsNull) {
  jvm.Class(kChart);
  accessor.setClass(kChart);
  EventLog::Get().Clear();
  const jthrowable missing = jvm.MakeThrowable("java/lang/NoSuchMethodError", "open");
  jvm.Fail("GetStaticMethodID", 1, missing);
  EXPECT_EQ(accessor.setStaticMethod("open", "()V"), nullptr);
  EXPECT_TRUE(Happened(
      Seq("GetStaticMethodID(class org/example/Chart, open, ()V)", PendingException(missing))));
  EXPECT_EQ(accessor.getMethodID(), nullptr);
}

TEST_F(JAccessorTest, SetObjectTakesAnyReference) {
  const jobject chart = jvm.MakeObject(kChart);
  accessor.setObject(chart);
  EXPECT_EQ(accessor.getObject(), chart);
  accessor.setObject(nullptr);
  EXPECT_EQ(accessor.getObject(), nullptr);
  EXPECT_TRUE(Happened({}));
}

TEST_F(JAccessorTest, FromJStringOfNullIsEmptyWithoutAnyCall) {
  EXPECT_EQ(accessor.FromJString(nullptr, nullptr), "");
  EXPECT_EQ(accessor.FromJString(nullptr, "utf-8"), "");
  EXPECT_TRUE(Happened({}));
}

TEST_F(JAccessorTest, FromJStringWithTheDefaultConverter) {
  EXPECT_EQ(accessor.FromJString(jvm.MakeString("caf\xC3\xA9"), nullptr), "caf\xC3\xA9");
  EXPECT_TRUE(Happened(Seq("GetStringLength(\"caf\\xC3\\xA9\")",
                           "GetStringChars(\"caf\\xC3\\xA9\")", "ucnv_open(null)",
                           "ucnv_getMaxCharSize", "ucnv_fromUChars(13, \"caf\\xC3\\xA9\")",
                           "ReleaseStringChars(\"caf\\xC3\\xA9\", elements)")));
}

TEST_F(JAccessorTest, FromJStringWithANamedCodepage) {
  EXPECT_EQ(accessor.FromJString(jvm.MakeString("caf\xC3\xA9"), "ISO-8859-1"), "caf\xE9");
  EXPECT_TRUE(Happened(Seq(
      "GetStringLength(\"caf\\xC3\\xA9\")", "GetStringChars(\"caf\\xC3\\xA9\")",
      "ucnv_open(ISO-8859-1)", "ucnv_getMaxCharSize",
      // One byte for each unit, and one more.
      "ucnv_fromUChars(5, \"caf\\xC3\\xA9\")", "ReleaseStringChars(\"caf\\xC3\\xA9\", elements)")));
}

TEST_F(JAccessorTest, FromJStringLeavesTheConverterOpen) {
  accessor.FromJString(jvm.MakeString("a"), nullptr);
  accessor.FromJString(jvm.MakeString("b"), nullptr);
  EXPECT_EQ(IcuProbe::Get().OpenConverters(), 2U);
}

TEST_F(JAccessorTest, FromJStringOfAnEmptyStringConvertsNothing) {
  EXPECT_EQ(accessor.FromJString(jvm.MakeString(""), "utf-8"), "");
  EXPECT_TRUE(Happened(ReadText("", "utf-8")));
}

TEST_F(JAccessorTest, FromJStringKeepsZeroCharacters) {
  const std::u16string text = {u'a', u'\0', u'b'};
  EXPECT_EQ(accessor.FromJString(jvm.MakeString(text), nullptr), std::string("a\0b", 3));
}

TEST_F(JAccessorTest, FromJStringKeepsCharactersBeyondTheBasicPlane) {
  EXPECT_EQ(accessor.FromJString(jvm.MakeString("\xF0\x9F\x93\x88"), nullptr), "\xF0\x9F\x93\x88");
}

TEST_F(JAccessorTest, FromJStringReadsNoFurtherThanTheLength) {
  jvm.TerminateStringChars(false);
  EXPECT_EQ(accessor.FromJString(jvm.MakeString("unterminated"), nullptr), "unterminated");
}

TEST_F(JAccessorTest, FromJStringOfALongText) {
  const std::string text(100000, 'x');
  EXPECT_EQ(accessor.FromJString(jvm.MakeString(text), nullptr), text);
}

TEST_F(JAccessorTest, FromJStringOfAnUnknownCodepageIsEmptyAndReleases) {
  EXPECT_EQ(accessor.FromJString(jvm.MakeString("x"), "no-such-codepage"), "");
  EXPECT_TRUE(Happened(Source::kJni, Seq("GetStringLength(\"x\")", "GetStringChars(\"x\")",
                                         "ReleaseStringChars(\"x\", elements)")));
  EXPECT_EQ(jvm.UnreleasedBuffers(), 0U);
}

TEST_F(JAccessorTest, FromJStringWithoutCharactersIsEmpty) {
  jvm.Fail("GetStringChars", 1);
  EXPECT_EQ(accessor.FromJString(jvm.MakeString("x"), nullptr), "");
  // ICU makes nothing of null, and nothing is released by a release of null.
  EXPECT_TRUE(Happened(Seq("GetStringLength(\"x\")", "GetStringChars(\"x\")", "ucnv_open(null)",
                           "ucnv_getMaxCharSize", "ucnv_fromUChars(4, null)",
                           "ReleaseStringChars(\"x\", null)")));
}

TEST_F(JAccessorTest, AccessorsAndTextsLeaveTheFloatingPointEnvironmentAlone) {
  jvm.Method(kChart, "draw", "(I)V");
  accessor.setClass(kChart);
  accessor.setMethod("draw", "(I)V");
  accessor.setObject(nullptr);
  accessor.setEnv(jvm.Env());
  accessor.FromJString(jvm.MakeString("x"), nullptr);
  EXPECT_TRUE(Happened(Source::kFloatEnv, {}));
}

}  // namespace
}  // namespace chartbridge::testing
