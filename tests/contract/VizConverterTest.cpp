// SPDX-License-Identifier: Apache-2.0
#include "convert/VizConverter.h"

#include <algorithm>
#include <cfenv>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <memory>
#include <new>
#include <string>
#include <vector>

#include "tests/support/AllocationProbe.h"
#include "tests/support/ContractTest.h"
#include "tests/support/FakePlatform.h"
#include "tests/support/Steps.h"
#include "tests/support/Thrown.h"

namespace chartbridge::testing {
namespace {

constexpr char kClass[] = "com/tesk/vizconverter/VizConverter";
constexpr char kConvert[] = "([B)[B";
constexpr char kText[] = "()Ljava/lang/String;";

class VizConverterTest : public ContractTest {
 protected:
  VizConverterTest() {
    jvm.ClassWithConstructor(kClass);
    jvm.Method(kClass, "ConvertGPL", kConvert);
    jvm.Method(kClass, "ConvertXml", kConvert);
    jvm.Method(kClass, "getErrorMessage", kText);
  }

  // Started on the test's thread, with the events of the start forgotten.
  void Start() {
    converter.StartConverter(jvm.Env());
    EventLog::Get().Clear();
  }

  // The two conversions differ in the Java method alone.
  FakeMethod& ConvertGPL() { return jvm.Method(kClass, "ConvertGPL", kConvert); }
  FakeMethod& GetErrorMessage() { return jvm.Method(kClass, "getErrorMessage", kText); }

  static Events Conversion(const std::string& method, const std::string& input) {
    return Seq("lock depth=1", Attach(), ByteArrayArgument(1, input),
               JavaCall("CallObjectMethod", kClass, "VizConverter@1", method, kConvert,
                        "byte[]#1 " + Quoted(input)));
  }

  VizConverter converter;
};

// ---- Life cycle.

TEST_F(VizConverterTest, StartFindsTheClassAndMakesTheObjectUnderTheLock) {
  EXPECT_TRUE(converter.StartConverter(jvm.Env()));
  EXPECT_TRUE(Happened(Seq("lock depth=1", BindingConstruction(kClass), "unlock depth=0")));
}

TEST_F(VizConverterTest, StartUsesTheEnvThatItIsGiven) {
  converter.StartConverter(jvm.NewEnv("worker"));
  EXPECT_TRUE(
      Happened(Source::kJni,
               Seq("FindClass(com/tesk/vizconverter/VizConverter) on worker",
                   "GetMethodID(class com/tesk/vizconverter/VizConverter, <init>, ()V) on worker",
                   "NewObject(class com/tesk/vizconverter/VizConverter, <init>()V) on worker",
                   "ExceptionOccurred() -> null on worker")));
}

TEST_F(VizConverterTest, ASecondStartKeepsTheFirstBinding) {
  Start();
  EXPECT_TRUE(converter.StartConverter(jvm.NewEnv("worker")));
  EXPECT_TRUE(Happened(Seq("lock depth=1", "unlock depth=0")));
  EXPECT_TRUE(converter.IsStarted());
}

TEST_F(VizConverterTest, IsStartedReadsUnderTheLock) {
  EXPECT_FALSE(converter.IsStarted());
  EXPECT_TRUE(Happened(Seq("lock depth=1", "unlock depth=0")));
  Start();
  EXPECT_TRUE(converter.IsStarted());
  EXPECT_TRUE(Happened(Seq("lock depth=1", "unlock depth=0")));
}

TEST_F(VizConverterTest, StopDropsTheBindingAndReleasesNothingInJava) {
  Start();
  converter.Stop();
  EXPECT_TRUE(Happened(Seq("lock depth=1", "unlock depth=0")));
  EXPECT_FALSE(converter.IsStarted());
}

TEST_F(VizConverterTest, StopWithoutABindingIsHarmless) {
  converter.Stop();
  converter.Stop();
  EXPECT_TRUE(Happened(Seq("lock depth=1", "unlock depth=0", "lock depth=1", "unlock depth=0")));
}

TEST_F(VizConverterTest, StartAfterStopMakesANewObject) {
  Start();
  converter.Stop();
  EventLog::Get().Clear();
  EXPECT_TRUE(converter.StartConverter(jvm.Env()));
  EXPECT_TRUE(Happened(Seq("lock depth=1", BindingConstruction(kClass), "unlock depth=0")));
  ConvertGPL().Returns(jvm.MakeBytes("xml", "<x/>"));
  std::string xml;
  converter.GPLtoXML("g", xml);
  const Events events = EventLog::Get().Texts();
  EXPECT_NE(std::find(events.begin(), events.end(),
                      "CallObjectMethod(VizConverter@2, ConvertGPL([B)[B, byte[]#1 \"g\")"),
            events.end());
}

TEST_F(VizConverterTest, TheDestructorTakesNoLock) {
  auto started = std::make_unique<VizConverter>();
  started->StartConverter(jvm.Env());
  EventLog::Get().Clear();
  started.reset();
  EXPECT_TRUE(Happened({}));
}

TEST_F(VizConverterTest, StartWithAMissingClassIsTrueAndLogged) {
  const jthrowable missing = jvm.MakeThrowable("java/lang/NoClassDefFoundError", kClass);
  const jthrowable no_object = jvm.MakeThrowable("java/lang/NoClassDefFoundError", "no object");
  jvm.Fail("FindClass", 1, missing);
  // The first two objects are the streams that print the first exception.
  jvm.Fail("NewObject", 3, no_object);
  EXPECT_TRUE(converter.StartConverter(jvm.Env()));
  EXPECT_TRUE(Happened(Seq("lock depth=1", "FindClass(com/tesk/vizconverter/VizConverter)",
                           PendingException(missing), "NewObject(null, null)",
                           PendingException(no_object, 2), "unlock depth=0")));
  EXPECT_TRUE(converter.IsStarted());
}

TEST_F(VizConverterTest, StartWithAThrowingConstructorIsTrueAndLogged) {
  const jthrowable exception = jvm.MakeThrowable("java/lang/IllegalStateException", "no fonts");
  jvm.Fail("NewObject", 1, exception);
  EXPECT_TRUE(converter.StartConverter(jvm.Env()));
  EXPECT_TRUE(Happened(Seq("lock depth=1", "FindClass(com/tesk/vizconverter/VizConverter)",
                           "GetMethodID(class com/tesk/vizconverter/VizConverter, <init>, ()V)",
                           "NewObject(class com/tesk/vizconverter/VizConverter, <init>()V)",
                           PendingException(exception), "unlock depth=0")));
  EXPECT_TRUE(converter.IsStarted());
}

TEST_F(VizConverterTest, AStartThatThrowsLeavesTheConverterStoppedAndTheLockFree) {
  jvm.On("NewObject", 1, [] { throw JException("a", "b", "c"); });
  EXPECT_EQ(Thrown([this] { converter.StartConverter(jvm.Env()); }), "JException(a, b, c)");
  EXPECT_EQ(EventLog::Get().Texts().back(), "unlock depth=0");
  EXPECT_FALSE(converter.IsStarted());
}

TEST_F(VizConverterTest, AStartWithoutMemoryLeavesTheConverterStoppedAndTheLockFree) {
  AllocationProbe::Get().FailNew(1);
  EXPECT_EQ(Thrown([this] { converter.StartConverter(jvm.Env()); }), "std::bad_alloc");
  EXPECT_TRUE(Happened(Seq("lock depth=1", "unlock depth=0")));
  EXPECT_FALSE(converter.IsStarted());
}

TEST_F(VizConverterTest, SetEnvAttachesWithoutALock) {
  Start();
  converter.SetEnv();
  EXPECT_TRUE(Happened(Attach()));
}

TEST_F(VizConverterTest, SetEnvWithoutABindingDoesNothing) {
  converter.SetEnv();
  EXPECT_TRUE(Happened({}));
}

TEST_F(VizConverterTest, EveryOperationPushesTheEnvOfItsThread) {
  Start();
  FakePlatform::Get().env = jvm.NewEnv("worker");
  std::string xml;
  converter.GPLtoXML("g", xml);
  for (const std::string& event : EventLog::Get().Texts(Source::kJni)) {
    EXPECT_NE(event.find(" on worker"), std::string::npos) << event;
  }
  EventLog::Get().Clear();
  converter.GetErrorMessage();
  for (const std::string& event : EventLog::Get().Texts(Source::kJni)) {
    EXPECT_NE(event.find(" on worker"), std::string::npos) << event;
  }
}

TEST_F(VizConverterTest, WhatTheAttachReturnsIsIgnored) {
  Start();
  ConvertGPL().Returns(jvm.MakeBytes("xml", "<x/>"));
  std::string xml;
  FakePlatform::Get().attach_result = false;
  EXPECT_TRUE(converter.GPLtoXML("g", xml));
  FakePlatform::Get().env = nullptr;
  FakePlatform::Get().attach_result = true;
  EXPECT_FALSE(converter.GPLtoXML("g", xml));
}

// ---- Conversions.

TEST_F(VizConverterTest, GPLtoXML) {
  Start();
  ConvertGPL().Returns(jvm.MakeBytes("xml", "<chart/>"));
  std::string xml = "before";
  EXPECT_TRUE(converter.GPLtoXML("ELEMENT: bar", xml));
  EXPECT_EQ(xml, "<chart/>");
  EXPECT_TRUE(Happened(Seq(
      // Written out once; the other tests use the named steps.
      "lock depth=1", "TeskJVM::GetInstance", "AttachCurrentThread", "NewByteArray(12)", "fegetenv",
      "ExceptionOccurred() -> null", "fesetenv",
      "SetByteArrayRegion(byte[]#1, 0, 12, \"ELEMENT: bar\")", "fegetenv",
      "ExceptionOccurred() -> null", "fesetenv",
      "GetMethodID(class com/tesk/vizconverter/VizConverter, ConvertGPL, ([B)[B)",
      "CallObjectMethod(VizConverter@1, ConvertGPL([B)[B, byte[]#1 \"ELEMENT: bar\")", "fegetenv",
      "ExceptionOccurred() -> null", "fesetenv", "GetArrayLength(byte[] xml)",
      "GetByteArrayElements(byte[] xml)",
      "ReleaseByteArrayElements(byte[] xml, elements, JNI_ABORT)", "fegetenv",
      "ExceptionOccurred() -> null", "fesetenv", "unlock depth=0")));
  EXPECT_EQ(jvm.UnreleasedBuffers(), 0U);
}

TEST_F(VizConverterTest, UpgradeXML) {
  Start();
  jvm.Method(kClass, "ConvertXml", kConvert).Returns(jvm.MakeBytes("new", "<v2/>"));
  std::string xml;
  EXPECT_TRUE(converter.UpgradeXML("<v1/>", xml));
  EXPECT_EQ(xml, "<v2/>");
  EXPECT_TRUE(
      Happened(Seq(Conversion("ConvertXml", "<v1/>"), ByteArrayResult("new"), "unlock depth=0")));
}

TEST_F(VizConverterTest, BytesGoThroughUnchanged) {
  Start();
  const std::string bytes = std::string("\0\xFF\xFE\x80", 4) + "caf\xC3\xA9";
  ConvertGPL().Does([](const FakeCall& call) {
    jvalue value{};
    value.l = call.arguments.at(0).value.l;
    return value;
  });
  std::string xml;
  EXPECT_TRUE(converter.GPLtoXML(bytes, xml));
  EXPECT_EQ(xml, bytes);
}

TEST_F(VizConverterTest, AnEmptyTextSendsAnEmptyArray) {
  Start();
  ConvertGPL().Returns(jvm.MakeBytes("xml", "<x/>"));
  std::string xml;
  EXPECT_TRUE(converter.GPLtoXML("", xml));
  EXPECT_EQ(xml, "<x/>");
  EXPECT_TRUE(
      Happened(Seq(Conversion("ConvertGPL", ""), ByteArrayResult("xml"), "unlock depth=0")));
}

TEST_F(VizConverterTest, AnEmptyResultWithNullElementsIsSuccess) {
  Start();
  ConvertGPL().Returns(jvm.MakeBytes("xml", ""));
  jvm.Fail("GetByteArrayElements", 1);
  std::string xml = "before";
  EXPECT_TRUE(converter.GPLtoXML("g", xml));
  EXPECT_EQ(xml, "");
  EXPECT_TRUE(Happened(Seq(Conversion("ConvertGPL", "g"), "GetArrayLength(byte[] xml)",
                           "GetByteArrayElements(byte[] xml)",
                           "ReleaseByteArrayElements(byte[] xml, null, JNI_ABORT)",
                           NoPendingException(), "unlock depth=0")));
}

TEST_F(VizConverterTest, AnEmptyResultIsSuccess) {
  Start();
  ConvertGPL().Returns(jvm.MakeBytes("xml", ""));
  std::string xml = "before";
  EXPECT_TRUE(converter.GPLtoXML("g", xml));
  EXPECT_EQ(xml, "");
  EXPECT_TRUE(
      Happened(Seq(Conversion("ConvertGPL", "g"), ByteArrayResult("xml"), "unlock depth=0")));
}

TEST_F(VizConverterTest, ANullResultIsFailureAndKeepsTheOutput) {
  Start();
  std::string xml = "before";
  EXPECT_FALSE(converter.GPLtoXML("g", xml));
  EXPECT_EQ(xml, "before");
  EXPECT_TRUE(Happened(Seq(Conversion("ConvertGPL", "g"), "unlock depth=0")));
}

TEST_F(VizConverterTest, AThrowingJavaMethodIsFailureAndLogged) {
  Start();
  const jthrowable exception = jvm.MakeThrowable("java/lang/IllegalArgumentException", "line 1");
  ConvertGPL().Throws(exception);
  std::string xml = "before";
  EXPECT_FALSE(converter.GPLtoXML("g", xml));
  EXPECT_EQ(xml, "before");
  EXPECT_TRUE(
      Happened(Seq("lock depth=1", Attach(), ByteArrayArgument(1, "g"),
                   "GetMethodID(class com/tesk/vizconverter/VizConverter, ConvertGPL, ([B)[B)",
                   "CallObjectMethod(VizConverter@1, ConvertGPL([B)[B, byte[]#1 \"g\")",
                   PendingException(exception), "unlock depth=0")));
}

TEST_F(VizConverterTest, AThrowingJavaMethodAddsOneDumpRecord) {
  Start();
  std::string name = (std::filesystem::temp_directory_path() / "chartbridge-XXXXXX").string();
  const std::filesystem::path folder = mkdtemp(name.data());
  setenv("DumpChartTimePath", folder.c_str(), 1);
  ConvertGPL().Throws(jvm.MakeThrowable("java/lang/IllegalArgumentException", "line 1"));
  std::string xml;
  EXPECT_FALSE(converter.GPLtoXML("g", xml));
  unsetenv("DumpChartTimePath");
  std::vector<std::string> records;
  for (const auto& entry : std::filesystem::directory_iterator(folder)) {
    std::ifstream file(entry.path());
    std::string line;
    while (std::getline(file, line)) {
      if (line.rfind(" time = ", 0) == 0) records.push_back(line.substr(line.find(" Message")));
    }
  }
  std::filesystem::remove_all(folder);
  EXPECT_EQ(records, std::vector<std::string>{" Message : JAccessor::exceptionCheck()"});
}

TEST_F(VizConverterTest, AMissingMethodIsLoggedAndTheCallGoesOn) {
  Start();
  const jthrowable missing = jvm.MakeThrowable("java/lang/NoSuchMethodError", "ConvertGPL");
  jvm.Fail("GetMethodID", 1, missing);
  std::string xml = "before";
  EXPECT_FALSE(converter.GPLtoXML("g", xml));
  EXPECT_EQ(xml, "before");
  EXPECT_EQ(jvm.Pending(), nullptr);
  const Events begin = Seq("lock depth=1", Attach(), ByteArrayArgument(1, "g"),
                           "GetMethodID(class com/tesk/vizconverter/VizConverter, ConvertGPL, "
                           "([B)[B)",
                           PendingException(missing), "CallObjectMethod(VizConverter@1, null)");
  const Events events = EventLog::Get().Texts();
  ASSERT_GT(events.size(), begin.size());
  EXPECT_TRUE(
      SameEvents(begin, Events(events.begin(), events.begin() + static_cast<long>(begin.size()))));
}

TEST_F(VizConverterTest, ElementsThatJavaDoesNotGiveAreFailure) {
  Start();
  ConvertGPL().Returns(jvm.MakeBytes("xml", "<chart/>"));
  jvm.Fail("GetByteArrayElements", 1);
  std::string xml = "before";
  EXPECT_FALSE(converter.GPLtoXML("g", xml));
  EXPECT_EQ(xml, "before");
  EXPECT_TRUE(Happened(Seq(Conversion("ConvertGPL", "g"), "GetArrayLength(byte[] xml)",
                           "GetByteArrayElements(byte[] xml)",
                           "ReleaseByteArrayElements(byte[] xml, null, JNI_ABORT)",
                           NoPendingException(), "unlock depth=0")));
}

TEST_F(VizConverterTest, AnArrayThatJavaCannotMakeStillReachesTheCall) {
  Start();
  const jthrowable memory = jvm.MakeThrowable("java/lang/OutOfMemoryError", "heap");
  jvm.Fail("NewByteArray", 1, memory);
  std::string xml;
  EXPECT_FALSE(converter.GPLtoXML("g", xml));
  const Events events = EventLog::Get().Texts(Source::kJni);
  EXPECT_EQ(events[0], "NewByteArray(1)");
  EXPECT_EQ(events[1], "ExceptionOccurred() -> OutOfMemoryError@1");
  EXPECT_NE(std::find(events.begin(), events.end(), "SetByteArrayRegion(null, 0, 1, \"g\")"),
            events.end());
  EXPECT_NE(std::find(events.begin(), events.end(),
                      "CallObjectMethod(VizConverter@1, ConvertGPL([B)[B, null)"),
            events.end());
}

const JException kThrown("a", "b", "c");

// Every native exception out of any step of a conversion.
struct ThrowingStep {
  const char* function;
  int nth;
};

class VizConverterThrowTest : public VizConverterTest,
                              public ::testing::WithParamInterface<ThrowingStep> {};

TEST_P(VizConverterThrowTest, BecomesFalseWithTheLockReleased) {
  const std::function<void()> throws[] = {[] { throw JException("a", "b", "c"); },
                                          [] { throw &kThrown; }, [] { throw std::bad_alloc(); },
                                          [] { throw 7; }};
  Start();
  ConvertGPL().Returns(jvm.MakeBytes("xml", "<chart/>"));
  for (const auto& action : throws) {
    jvm.On(GetParam().function, GetParam().nth, action);
    std::string xml = "before";
    EXPECT_FALSE(converter.GPLtoXML("g", xml));
    EXPECT_EQ(EventLog::Get().Texts().back(), "unlock depth=0");
    EXPECT_EQ(FakePlatform::LockDepth(), 0);
  }
}

INSTANTIATE_TEST_SUITE_P(
    EveryStep, VizConverterThrowTest,
    ::testing::Values(ThrowingStep{"NewByteArray", 1}, ThrowingStep{"ExceptionOccurred", 1},
                      ThrowingStep{"SetByteArrayRegion", 1}, ThrowingStep{"ExceptionOccurred", 2},
                      ThrowingStep{"GetMethodID", 1}, ThrowingStep{"CallObjectMethod", 1},
                      ThrowingStep{"ExceptionOccurred", 3}, ThrowingStep{"GetArrayLength", 1},
                      ThrowingStep{"GetByteArrayElements", 1},
                      ThrowingStep{"ReleaseByteArrayElements", 1},
                      ThrowingStep{"ExceptionOccurred", 4}));

TEST_F(VizConverterTest, ExceptionsOfTheAttachPropagateWithTheLockReleased) {
  Start();
  FakePlatform::Get().on_attach = [] { throw JException("a", "b", "c"); };
  std::string xml = "before";
  EXPECT_EQ(Thrown([&] { converter.GPLtoXML("g", xml); }), "JException(a, b, c)");
  EXPECT_TRUE(Happened(Seq("lock depth=1", Attach(), "unlock depth=0")));
  FakePlatform::Get().on_attach = [] { throw std::bad_alloc(); };
  EXPECT_EQ(Thrown([&] { converter.UpgradeXML("g", xml); }), "std::bad_alloc");
  EXPECT_TRUE(Happened(Seq("lock depth=1", Attach(), "unlock depth=0")));
  EXPECT_EQ(xml, "before");
}

TEST_F(VizConverterTest, ExceptionsOfTheAttachPropagateOutOfGetErrorMessage) {
  Start();
  const std::pair<std::function<void()>, std::string> cases[] = {
      {[] { throw JException("a", "b", "c"); }, "JException(a, b, c)"},
      {[] { throw &kThrown; }, "JException*(a, b, c)"},
      {[] { throw 7; }, "int(7)"},
      {[] { throw std::bad_alloc(); }, "std::bad_alloc"}};
  for (const auto& [action, expected] : cases) {
    FakePlatform::Get().on_attach = action;
    EXPECT_EQ(Thrown([this] { converter.GetErrorMessage(); }), expected);
    EXPECT_TRUE(Happened(Seq("lock depth=1", Attach(), "unlock depth=0")));
  }
}

TEST_F(VizConverterTest, ConversionsWithoutABindingFailWithoutJava) {
  std::string xml = "before";
  EXPECT_FALSE(converter.GPLtoXML("g", xml));
  EXPECT_FALSE(converter.UpgradeXML("x", xml));
  EXPECT_EQ(converter.GetErrorMessage(), "");
  EXPECT_EQ(xml, "before");
  EXPECT_TRUE(Happened(Seq("lock depth=1", "unlock depth=0", "lock depth=1", "unlock depth=0",
                           "lock depth=1", "unlock depth=0")));
}

// ---- The floating-point environment.

TEST_F(VizConverterTest, WhatJavaChangesInTheFloatingPointEnvironmentStays) {
  Start();
  ConvertGPL().Runs([] { std::fesetround(FE_UPWARD); });
  std::string xml;
  converter.GPLtoXML("g", xml);
  const int mode = std::fegetround();
  std::fesetround(FE_TONEAREST);
  EXPECT_EQ(mode, FE_UPWARD);
}

TEST_F(VizConverterTest, WhatTheAttachChangesStays) {
  Start();
  FakePlatform::Get().on_attach = [] { std::fesetround(FE_DOWNWARD); };
  converter.GetErrorMessage();
  const int mode = std::fegetround();
  std::fesetround(FE_TONEAREST);
  EXPECT_EQ(mode, FE_DOWNWARD);
}

TEST_F(VizConverterTest, NeverStartsTheJvmNorAsksForIt) {
  FakePlatform::Get().started = false;
  Start();
  std::string xml;
  converter.GPLtoXML("g", xml);
  converter.GetErrorMessage();
  for (const std::string& event : EventLog::Get().Texts(Source::kPlatform)) {
    EXPECT_NE(event, "IsStarted");
    EXPECT_NE(event, "StartJVM");
  }
}

// ---- The error message.

TEST_F(VizConverterTest, GetErrorMessage) {
  Start();
  GetErrorMessage().Returns(jvm.MakeString("line 1: caf\xC3\xA9"));
  EXPECT_EQ(converter.GetErrorMessage(), "line 1: caf\xC3\xA9");
  EXPECT_TRUE(
      Happened(Seq("lock depth=1", Attach(),
                   JavaCall("CallObjectMethod", kClass, "VizConverter@1", "getErrorMessage", kText),
                   TranscodedResult("line 1: caf\xC3\xA9"), "unlock depth=0")));
  EXPECT_EQ(jvm.UnreleasedBuffers(), 0U);
}

TEST_F(VizConverterTest, GetErrorMessageOfNullIsEmpty) {
  Start();
  EXPECT_EQ(converter.GetErrorMessage(), "");
  EXPECT_TRUE(
      Happened(Seq("lock depth=1", Attach(),
                   JavaCall("CallObjectMethod", kClass, "VizConverter@1", "getErrorMessage", kText),
                   "unlock depth=0")));
}

TEST_F(VizConverterTest, GetErrorMessageOfAnEmptyString) {
  Start();
  GetErrorMessage().Returns(jvm.MakeString(""));
  EXPECT_EQ(converter.GetErrorMessage(), "");
  EXPECT_TRUE(
      Happened(Seq("lock depth=1", Attach(),
                   JavaCall("CallObjectMethod", kClass, "VizConverter@1", "getErrorMessage", kText),
                   TranscodedResult(""), "unlock depth=0")));
}

TEST_F(VizConverterTest, GetErrorMessageWhoseJavaMethodThrowsIsEmpty) {
  Start();
  const jthrowable exception = jvm.MakeThrowable("java/lang/IllegalStateException", "none");
  GetErrorMessage().Throws(exception);
  EXPECT_EQ(converter.GetErrorMessage(), "");
  EXPECT_TRUE(Happened(Seq("lock depth=1", Attach(),
                           "GetMethodID(class com/tesk/vizconverter/VizConverter, getErrorMessage, "
                           "()Ljava/lang/String;)",
                           "CallObjectMethod(VizConverter@1, getErrorMessage()Ljava/lang/String;)",
                           PendingException(exception), "unlock depth=0")));
}

TEST_F(VizConverterTest, GetErrorMessageLetsNativeExceptionsThroughAndReleasesTheLock) {
  Start();
  jvm.On("CallObjectMethod", 1, [] { throw JException("a", "b", "c"); });
  EXPECT_EQ(Thrown([this] { converter.GetErrorMessage(); }), "JException(a, b, c)");
  EXPECT_EQ(EventLog::Get().Texts().back(), "unlock depth=0");

  jvm.On("GetMethodID", 1, [] { throw std::bad_alloc(); });
  EXPECT_EQ(Thrown([this] { converter.GetErrorMessage(); }), "std::bad_alloc");
  EXPECT_EQ(EventLog::Get().Texts().back(), "unlock depth=0");
}

TEST_F(VizConverterTest, GetErrorMessageIsReadUpToItsZeroUnitWhateverItsLength) {
  Start();
  GetErrorMessage().Returns(jvm.MakeString("the whole text"));
  jvm.Fail("GetStringLength", 1);
  EXPECT_EQ(converter.GetErrorMessage(), "the whole text");
}

TEST_F(VizConverterTest, GetErrorMessageEndsAtAZeroCharacter) {
  Start();
  GetErrorMessage().Returns(jvm.MakeString(std::u16string{u'a', u'\0', u'b'}));
  EXPECT_EQ(converter.GetErrorMessage(), "a");
}

TEST_F(VizConverterTest, GetErrorMessageWithoutCharactersIsEmpty) {
  Start();
  GetErrorMessage().Returns(jvm.MakeString("text"));
  jvm.Fail("GetStringChars", 1);
  EXPECT_EQ(converter.GetErrorMessage(), "");
}

}  // namespace
}  // namespace chartbridge::testing
