// SPDX-License-Identifier: Apache-2.0
#include <cfenv>

#include "bridge/JAccessor.h"
#include "tests/support/ContractTest.h"
#include "tests/support/FloatEnvProbe.h"
#include "tests/support/IcuProbe.h"
#include "tests/support/Steps.h"
#include "tests/support/Thrown.h"

namespace chartbridge::testing {
namespace {

constexpr char kException[] = "java/io/IOException";
constexpr char kText[] = "()Ljava/lang/String;";

class ExceptionCheckTest : public ContractTest {
 protected:
  jclass ExceptionClass() { return jvm.ClassReference(kException); }

  JAccessor accessor{jvm.Env()};
};

TEST_F(ExceptionCheckTest, WithoutAnExceptionLooksOnceAndDoesNothingElse) {
  accessor.exceptionCheck();
  EXPECT_TRUE(Happened(Seq("fegetenv", "ExceptionOccurred() -> null", "fesetenv")));
}

TEST_F(ExceptionCheckTest, ClearsFirstThenReadsMessageTypeAndStack) {
  jvm.SetPending(jvm.MakeThrowable(kException, "disk full"));
  accessor.exceptionCheck();
  // Written out once, call by call; the other tests use the named step.
  const std::string type = "java.io.IOException: disk full";
  const std::string stack = type + "\n\tat Chart.render(Chart.java:7)\n";
  EXPECT_TRUE(Happened(Seq(
      "fegetenv", "ExceptionOccurred() -> IOException@1", "ExceptionClear()",
      "GetObjectClass(IOException@1)",
      // The message.
      "fegetenv", "GetMethodID(class java/io/IOException, getMessage, ()Ljava/lang/String;)",
      "CallObjectMethod(IOException@1, getMessage()Ljava/lang/String;)",
      "GetStringLength(\"disk full\")", "GetStringChars(\"disk full\")", "ucnv_open(null)",
      "ucnv_getMaxCharSize", "ucnv_fromUChars(28, \"disk full\")",
      "ReleaseStringChars(\"disk full\", elements)", "fesetenv",
      // The type.
      "fegetenv", "GetMethodID(class java/io/IOException, toString, ()Ljava/lang/String;)",
      "CallObjectMethod(IOException@1, toString()Ljava/lang/String;)", ReadText(type), "fesetenv",
      // The stack.
      "fegetenv", "FindClass(java/io/ByteArrayOutputStream)",
      "GetMethodID(class java/io/ByteArrayOutputStream, <init>, ()V)",
      "GetMethodID(class java/io/ByteArrayOutputStream, toString, ()Ljava/lang/String;)",
      "NewObject(class java/io/ByteArrayOutputStream, <init>()V)", "FindClass(java/io/PrintStream)",
      "GetMethodID(class java/io/PrintStream, <init>, (Ljava/io/OutputStream;)V)",
      "NewObject(class java/io/PrintStream, <init>(Ljava/io/OutputStream;)V, "
      "ByteArrayOutputStream@1)",
      "GetMethodID(class java/io/IOException, printStackTrace, (Ljava/io/PrintStream;)V)",
      "CallObjectMethod(IOException@1, printStackTrace(Ljava/io/PrintStream;)V, "
      "PrintStream@1)",
      "CallObjectMethod(ByteArrayOutputStream@1, toString()Ljava/lang/String;)", ReadText(stack),
      "fesetenv",
      // The record, only now.
      "getenv(DumpChartTimePath)", "fesetenv")));
  EXPECT_EQ(jvm.Pending(), nullptr);
}

TEST_F(ExceptionCheckTest, NeverThrowsForAJavaException) {
  jvm.SetPending(jvm.MakeThrowable(kException, "disk full"));
  EXPECT_EQ(Thrown([this] { accessor.exceptionCheck(); }), "nothing");
}

TEST_F(ExceptionCheckTest, MakesNoForbiddenCallWhileTheExceptionIsPending) {
  jvm.NoteForbiddenCalls();
  const jthrowable exception = jvm.MakeThrowable(kException, "disk full");
  jvm.SetPending(exception);
  accessor.exceptionCheck();
  EXPECT_TRUE(Happened(PendingException(exception)));
}

TEST_F(ExceptionCheckTest, AMessageOfNullIsReadNoFurther) {
  const jthrowable exception = jvm.MakeThrowableWithoutMessage(kException);
  jvm.SetPending(exception);
  accessor.exceptionCheck();
  EXPECT_TRUE(Happened(PendingException(exception)));
}

TEST_F(ExceptionCheckTest, DeletesNoReference) {
  jvm.SetPending(jvm.MakeThrowable(kException, "disk full"));
  accessor.exceptionCheck();
  for (const std::string& event : EventLog::Get().Texts(Source::kJni)) {
    EXPECT_EQ(event.find("Delete"), std::string::npos) << event;
  }
}

TEST_F(ExceptionCheckTest, LeavesTheConvertersOpen) {
  jvm.SetPending(jvm.MakeThrowable(kException, "disk full"));
  accessor.exceptionCheck();
  EXPECT_EQ(IcuProbe::Get().OpenConverters(), 3U);
}

TEST_F(ExceptionCheckTest, AnExceptionOfTheReadersStaysForTheNextCheck) {
  const jthrowable second = jvm.MakeThrowable("java/lang/IllegalStateException", "in toString");
  const jthrowable first = jvm.MakeThrowable(kException, "disk full");
  jvm.Method(kException, "toString", kText).Throws(second);
  jvm.SetPending(first);
  accessor.exceptionCheck();
  EXPECT_EQ(jvm.Pending(), second);

  EventLog::Get().Clear();
  accessor.exceptionCheck();
  EXPECT_TRUE(Happened(PendingException(second, 2)));
  EXPECT_EQ(jvm.Pending(), nullptr);
}

TEST_F(ExceptionCheckTest, ReadersMakeNoChecksOfTheirOwn) {
  const jthrowable exception = jvm.MakeThrowable(kException, "disk full");
  accessor.getExceptionMessage(exception, ExceptionClass());
  accessor.getExceptionType(exception, ExceptionClass());
  accessor.getPrintStackTrace(exception, ExceptionClass());
  for (const std::string& event : EventLog::Get().Texts(Source::kJni)) {
    EXPECT_EQ(event.find("Exception") == 0, false) << event;
  }
}

TEST_F(ExceptionCheckTest, MessageReader) {
  const jthrowable exception = jvm.MakeThrowable(kException, "disk full");
  EXPECT_EQ(accessor.getExceptionMessage(exception, ExceptionClass()), "disk full");
  EXPECT_TRUE(Happened(Guarded(
      "GetMethodID(class java/io/IOException, getMessage, ()Ljava/lang/String;)",
      "CallObjectMethod(IOException@1, getMessage()Ljava/lang/String;)", ReadText("disk full"))));
}

TEST_F(ExceptionCheckTest, MessageReaderOfNullIsEmpty) {
  const jthrowable exception = jvm.MakeThrowableWithoutMessage(kException);
  EXPECT_EQ(accessor.getExceptionMessage(exception, ExceptionClass()), "");
  EXPECT_TRUE(
      Happened(Guarded("GetMethodID(class java/io/IOException, getMessage, ()Ljava/lang/String;)",
                       "CallObjectMethod(IOException@1, getMessage()Ljava/lang/String;)")));
}

TEST_F(ExceptionCheckTest, TypeReader) {
  const jthrowable exception = jvm.MakeThrowable(kException, "disk full");
  EXPECT_EQ(accessor.getExceptionType(exception, ExceptionClass()),
            "java.io.IOException: disk full");
  EXPECT_TRUE(
      Happened(Guarded("GetMethodID(class java/io/IOException, toString, ()Ljava/lang/String;)",
                       "CallObjectMethod(IOException@1, toString()Ljava/lang/String;)",
                       ReadText("java.io.IOException: disk full"))));
}

TEST_F(ExceptionCheckTest, TypeReaderOfNullIsEmpty) {
  const jthrowable exception = jvm.MakeThrowable(kException, "disk full");
  jvm.Method(kException, "toString", kText).Returns(nullptr);
  EXPECT_EQ(accessor.getExceptionType(exception, ExceptionClass()), "");
}

TEST_F(ExceptionCheckTest, StackReader) {
  const jthrowable exception = jvm.MakeThrowable(kException, "disk full");
  EXPECT_EQ(accessor.getPrintStackTrace(exception, ExceptionClass()),
            "java.io.IOException: disk full\n\tat Chart.render(Chart.java:7)\n");
}

TEST_F(ExceptionCheckTest, StackReaderOfNullIsEmpty) {
  const jthrowable exception = jvm.MakeThrowable(kException, "disk full");
  jvm.Method("java/io/ByteArrayOutputStream", "toString", kText).Returns(nullptr);
  EXPECT_EQ(accessor.getPrintStackTrace(exception, ExceptionClass()), "");
  EXPECT_TRUE(Happened(Guarded(
      "FindClass(java/io/ByteArrayOutputStream)",
      "GetMethodID(class java/io/ByteArrayOutputStream, <init>, ()V)",
      "GetMethodID(class java/io/ByteArrayOutputStream, toString, ()Ljava/lang/String;)",
      "NewObject(class java/io/ByteArrayOutputStream, <init>()V)", "FindClass(java/io/PrintStream)",
      "GetMethodID(class java/io/PrintStream, <init>, (Ljava/io/OutputStream;)V)",
      "NewObject(class java/io/PrintStream, <init>(Ljava/io/OutputStream;)V, "
      "ByteArrayOutputStream@1)",
      "GetMethodID(class java/io/IOException, printStackTrace, (Ljava/io/PrintStream;)V)",
      "CallObjectMethod(IOException@1, printStackTrace(Ljava/io/PrintStream;)V, "
      "PrintStream@1)",
      "CallObjectMethod(ByteArrayOutputStream@1, toString()Ljava/lang/String;)")));
}

TEST_F(ExceptionCheckTest, ReadersSurviveAJvmThatFailsEveryLookup) {
  const jthrowable exception = jvm.MakeThrowable(kException, "disk full");
  for (int nth = 1; nth <= 6; ++nth) jvm.Fail("GetMethodID", nth);
  jvm.Fail("FindClass", 1);
  jvm.Fail("FindClass", 2);
  EXPECT_EQ(accessor.getExceptionMessage(exception, ExceptionClass()), "");
  EXPECT_EQ(accessor.getExceptionType(exception, ExceptionClass()), "");
  EXPECT_EQ(accessor.getPrintStackTrace(exception, ExceptionClass()), "");
}

// The guards of a check that finds an exception, in the order of their saves: the check's own, and
// one for each text.
class FailedSaveTest : public ExceptionCheckTest, public ::testing::WithParamInterface<int> {};

TEST_P(FailedSaveTest, AGuardThatCouldNotSaveRestoresNothing) {
  FloatEnvProbe::Get().FailSave(GetParam());
  jvm.SetPending(jvm.MakeThrowable(kException, "disk full"));
  accessor.exceptionCheck();

  Events expected;
  const char* const saves[] = {"fegetenv", "fegetenv", "fegetenv", "fegetenv"};
  for (int save = 1; save <= 4; ++save) {
    const bool fails = save == GetParam();
    expected.push_back(fails ? "fegetenv fails" : saves[save - 1]);
    if (save > 1 && !fails) expected.push_back("fesetenv");
  }
  if (GetParam() != 1) expected.push_back("fesetenv");
  EXPECT_TRUE(Happened(Source::kFloatEnv, expected));
}

INSTANTIATE_TEST_SUITE_P(EveryGuard, FailedSaveTest, ::testing::Range(1, 5));

TEST_F(ExceptionCheckTest, RoundingModeIsBackAfterReadersThatChangeIt) {
  const jthrowable exception = jvm.MakeThrowable(kException, "disk full");
  jvm.Method(kException, "getMessage", kText).Runs([] { std::fesetround(FE_UPWARD); });
  jvm.Method(kException, "toString", kText).Runs([] { std::fesetround(FE_DOWNWARD); });
  jvm.SetPending(exception);
  accessor.exceptionCheck();
  EXPECT_EQ(std::fegetround(), FE_TONEAREST);
}

TEST_F(ExceptionCheckTest, EveryReaderBringsTheRoundingModeBack) {
  const jthrowable exception = jvm.MakeThrowable(kException, "disk full");
  const auto change = [] { std::fesetround(FE_UPWARD); };
  jvm.Method(kException, "getMessage", kText).Runs(change);
  jvm.Method(kException, "toString", kText).Runs(change);
  jvm.Method(kException, "printStackTrace", "(Ljava/io/PrintStream;)V").Runs(change);
  accessor.getExceptionMessage(exception, ExceptionClass());
  EXPECT_EQ(std::fegetround(), FE_TONEAREST);
  accessor.getExceptionType(exception, ExceptionClass());
  EXPECT_EQ(std::fegetround(), FE_TONEAREST);
  accessor.getPrintStackTrace(exception, ExceptionClass());
  EXPECT_EQ(std::fegetround(), FE_TONEAREST);
}

TEST_F(ExceptionCheckTest, ANativeExceptionOutOfTheReadersRestoresBothGuards) {
  const jthrowable exception = jvm.MakeThrowable(kException, "disk full");
  jvm.Method(kException, "toString", kText).Runs([] { throw std::bad_alloc(); });
  jvm.SetPending(exception);
  EXPECT_EQ(Thrown([this] { accessor.exceptionCheck(); }), "std::bad_alloc");
  EXPECT_TRUE(Happened(Source::kFloatEnv, Seq("fegetenv", Guarded(), Guarded(), "fesetenv")));
}

}  // namespace
}  // namespace chartbridge::testing
