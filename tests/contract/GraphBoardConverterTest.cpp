// SPDX-License-Identifier: Apache-2.0
#include <cfenv>
#include <new>
#include <stdexcept>
#include <string>
#include <type_traits>

#include "convert/graphBoardConverter.h"
#include "tests/support/AccessorProbe.h"
#include "tests/support/AllocationProbe.h"
#include "tests/support/ContractTest.h"
#include "tests/support/FakePlatform.h"
#include "tests/support/FieldAt.h"
#include "tests/support/FloatEnvProbe.h"
#include "tests/support/ObjectLayout.h"
#include "tests/support/Steps.h"
#include "tests/support/Thrown.h"

namespace chartbridge::testing {
namespace {

constexpr char kClass[] = "com/tesk/vizconverter/VizConverter";
constexpr char kToXml[] = "([B)[B";
constexpr char kStyle[] = "([B[B)[B";
constexpr std::size_t kWord = sizeof(void*);
// The binding's own fields.
constexpr std::size_t kHost = 5 * kWord;
constexpr std::size_t kAccessor = 6 * kWord;

class GraphBoardConverterTest : public ContractTest {
 protected:
  GraphBoardConverterTest() {
    graphBoardConverter::_instance = nullptr;
    jvm.ClassWithConstructor(kClass);
    ToXml();
    Style();
    converter = graphBoardConverter::GetInstance();
    EventLog::Get().Clear();
  }
  ~GraphBoardConverterTest() override { delete graphBoardConverter::_instance; }

  FakeMethod& ToXml() { return jvm.Method(kClass, "graphBoardConverterToXml", kToXml); }
  FakeMethod& Style() { return jvm.Method(kClass, "graphBoardApplyStyleSheet", kStyle); }

  const void* Data() const { return FieldAt<void*>(converter, 0); }

  // The JVM asked for and the thread attached, and once more attached for its env.
  static Events Prepared() {
    return Seq("IsStarted", "IsStarted", "AttachCurrentThread", Attach());
  }

  // The host's JVM object is fetched by the first conversion only.
  static Events FirstPrepared() { return Seq("TeskJVM::GetInstance", Prepared()); }

  static Events ToXmlCall(int object, const std::string& input) {
    return Seq(BindingConstruction(kClass), ByteArrayArgument(object, input),
               JavaCall("CallObjectMethod", kClass, "VizConverter@" + std::to_string(object),
                        "graphBoardConverterToXml", kToXml,
                        "byte[]#" + std::to_string(object) + " " + Quoted(input)));
  }

  graphBoardConverter* converter;
};

// ---- The singleton.

TEST_F(GraphBoardConverterTest, GetInstanceTakesTheLockAloneAndCallsNoJava) {
  EXPECT_EQ(graphBoardConverter::GetInstance(), converter);
  EXPECT_TRUE(Happened(Seq("lock depth=1", "unlock depth=0")));
  EXPECT_EQ(graphBoardConverter::_instance, converter);
}

TEST_F(GraphBoardConverterTest, AConverterThatCannotBeMadeLeavesNone) {
  for (const int failing : {1, 2}) {
    graphBoardConverter::_instance = nullptr;
    AllocationProbe::Get().Reset();
    AllocationProbe::Get().FailNew(failing);
    EXPECT_EQ(Thrown([] { graphBoardConverter::GetInstance(); }), "std::bad_alloc");
    EXPECT_TRUE(Happened(Seq("lock depth=1", "unlock depth=0")));
    EXPECT_EQ(graphBoardConverter::_instance, nullptr);
  }
  graphBoardConverter::_instance = converter;
}

TEST_F(GraphBoardConverterTest, DestroyingTheRegisteredOneEndsAfterOnePass) {
  AccessorProbe::Get().Reset();
  delete converter;
  EXPECT_EQ(graphBoardConverter::_instance, nullptr);
  // Its binding, once.
  EXPECT_EQ(AccessorProbe::Get().Destructions(), 1);
  EXPECT_TRUE(Happened({}));
}

TEST_F(GraphBoardConverterTest, DestroyingAnotherDestroysTheRegisteredOneToo) {
  AccessorProbe::Get().Reset();
  {
    const graphBoardConverter other;
    EXPECT_EQ(graphBoardConverter::_instance, converter);
  }
  EXPECT_EQ(graphBoardConverter::_instance, nullptr);
  EXPECT_EQ(AccessorProbe::Get().Destructions(), 2);
}

TEST_F(GraphBoardConverterTest, Layout) {
  EXPECT_EQ(sizeof(graphBoardConverter), kWord);
  EXPECT_FALSE(std::is_polymorphic_v<graphBoardConverter>);
  ASSERT_NE(Data(), nullptr);
  EXPECT_EQ(FieldAt<void*>(Data(), kHost), nullptr);
  EXPECT_EQ(FieldAt<const void*>(Data(), kAccessor), Data());
  converter->ConvertClientViZTemplate("t");
  EXPECT_NE(FieldAt<void*>(Data(), kHost), nullptr);
  EXPECT_EQ(FieldAt<JNIEnv*>(Data(), kWord), jvm.Env());
  EXPECT_EQ(jvm.Describe(FieldAt<jobject>(Data(), 4 * kWord)), "VizConverter@1");
}

TEST_F(GraphBoardConverterTest, TheBindingDropsItsEnvBeforeItsBaseEnds) {
  converter->ConvertClientViZTemplate("t");
  AccessorProbe::Get().Reset();
  delete converter;
  EXPECT_EQ(AccessorProbe::Get().Destructions(), 1);
  EXPECT_EQ(AccessorProbe::Get().LastEnv(), nullptr);
}

// ---- Conversions.

TEST_F(GraphBoardConverterTest, ConvertClientViZTemplate) {
  ToXml().Returns(jvm.MakeBytes("xml", "<chart/>"));
  EXPECT_EQ(converter->ConvertClientViZTemplate("template"), "<chart/>");
  EXPECT_TRUE(Happened(Seq(
      // Written out once; the other tests use the named steps. There is no lock.
      "fegetenv", "TeskJVM::GetInstance", "IsStarted", "IsStarted", "AttachCurrentThread",
      "TeskJVM::GetInstance", "AttachCurrentThread",
      "FindClass(com/tesk/vizconverter/VizConverter)",
      "GetMethodID(class com/tesk/vizconverter/VizConverter, <init>, ()V)",
      "NewObject(class com/tesk/vizconverter/VizConverter, <init>()V)", "fegetenv",
      "ExceptionOccurred() -> null", "fesetenv", "NewByteArray(8)", "fegetenv",
      "ExceptionOccurred() -> null", "fesetenv", "SetByteArrayRegion(byte[]#1, 0, 8, \"template\")",
      "fegetenv", "ExceptionOccurred() -> null", "fesetenv",
      "GetMethodID(class com/tesk/vizconverter/VizConverter, graphBoardConverterToXml, ([B)[B)",
      "CallObjectMethod(VizConverter@1, graphBoardConverterToXml([B)[B, byte[]#1 \"template\")",
      "fegetenv", "ExceptionOccurred() -> null", "fesetenv", "GetArrayLength(byte[] xml)",
      "GetByteArrayElements(byte[] xml)",
      "ReleaseByteArrayElements(byte[] xml, elements, JNI_ABORT)", "fegetenv",
      "ExceptionOccurred() -> null", "fesetenv", "fesetenv")));
  EXPECT_EQ(jvm.UnreleasedBuffers(), 0U);
}

TEST_F(GraphBoardConverterTest, EveryConversionMakesANewJavaObject) {
  converter->ConvertClientViZTemplate("a");
  EXPECT_TRUE(Happened(Guarded(FirstPrepared(), ToXmlCall(1, "a"))));
  converter->ConvertClientViZTemplate("b");
  EXPECT_TRUE(Happened(Guarded(Prepared(), ToXmlCall(2, "b"))));
}

TEST_F(GraphBoardConverterTest, AConversionStartsTheJvm) {
  FakePlatform::Get().started = false;
  converter->ConvertClientViZTemplate("a");
  EXPECT_TRUE(Happened(Guarded("TeskJVM::GetInstance", "IsStarted", "StartJVM", "IsStarted",
                               "AttachCurrentThread", Attach(), ToXmlCall(1, "a"))));
}

TEST_F(GraphBoardConverterTest, AJvmThatDoesNotStartIsFailure) {
  FakePlatform::Get().started = false;
  FakePlatform::Get().start_works = false;
  FakePlatform::Get().env = nullptr;
  EXPECT_EQ(converter->ConvertClientViZTemplate("a"), "");
  // The conversion goes on; its calls fail.
  EXPECT_TRUE(Happened(Source::kPlatform, Seq("TeskJVM::GetInstance", "IsStarted", "StartJVM",
                                              "IsStarted", Attach())));
  EXPECT_EQ(converter->applyStyleSheet("a", "b"), "");
  EXPECT_TRUE(Happened(Source::kJni, {}));
}

TEST_F(GraphBoardConverterTest, AHostWithoutAJvmObjectIsFailure) {
  FakePlatform::Get().has_jvm = false;
  ToXml().Returns(jvm.MakeBytes("xml", "<chart/>"));
  EXPECT_EQ(converter->ConvertClientViZTemplate("a"), "");
  EXPECT_TRUE(Happened(Source::kJni, {}));
  // Nothing of it is remembered.
  FakePlatform::Get().has_jvm = true;
  EXPECT_EQ(converter->ConvertClientViZTemplate("a"), "<chart/>");
  EXPECT_TRUE(Happened(Source::kPlatform, FirstPrepared()));
}

TEST_F(GraphBoardConverterTest, AnEmptyTemplateSendsAnEmptyArray) {
  ToXml().Returns(jvm.MakeBytes("xml", "<x/>"));
  EXPECT_EQ(converter->ConvertClientViZTemplate(""), "<x/>");
  EXPECT_TRUE(Happened(Guarded(FirstPrepared(), ToXmlCall(1, ""), ByteArrayResult("xml"))));
}

TEST_F(GraphBoardConverterTest, NullIsEmpty) {
  EXPECT_EQ(converter->ConvertClientViZTemplate("a"), "");
  EXPECT_TRUE(Happened(Guarded(FirstPrepared(), ToXmlCall(1, "a"))));
  EXPECT_EQ(converter->applyStyleSheet("a", "b"), "");
}

TEST_F(GraphBoardConverterTest, AnEmptyResultIsEmpty) {
  ToXml().Returns(jvm.MakeBytes("xml", ""));
  EXPECT_EQ(converter->ConvertClientViZTemplate("a"), "");
  EXPECT_EQ(jvm.UnreleasedBuffers(), 0U);
}

TEST_F(GraphBoardConverterTest, AJavaExceptionIsEmpty) {
  const jthrowable exception = jvm.MakeThrowable("java/lang/IllegalArgumentException", "line 1");
  ToXml().Throws(exception);
  EXPECT_EQ(converter->ConvertClientViZTemplate("a"), "");
  EXPECT_EQ(jvm.Pending(), nullptr);
  Style().Throws(exception);
  EXPECT_EQ(converter->applyStyleSheet("a", "b"), "");
  EXPECT_EQ(jvm.Pending(), nullptr);
}

TEST_F(GraphBoardConverterTest, ApplyStyleSheet) {
  const std::string styled("s\0t", 3);
  Style().Returns(jvm.MakeBytes("styled", styled));
  EXPECT_EQ(converter->applyStyleSheet("first", "second"), styled);
  EXPECT_TRUE(Happened(
      Guarded(FirstPrepared(), BindingConstruction(kClass), ByteArrayArgument(1, "first"),
              ByteArrayArgument(2, "second"),
              JavaCall("CallObjectMethod", kClass, "VizConverter@1", "graphBoardApplyStyleSheet",
                       kStyle, "byte[]#1 \"first\", byte[]#2 \"second\""),
              ByteArrayResult("styled"))));
}

TEST_F(GraphBoardConverterTest, ResultsThatJavaDoesNotGiveAreEmpty) {
  ToXml().Returns(jvm.MakeBytes("xml", "<chart/>"));
  jvm.Fail("GetByteArrayElements", 1);
  EXPECT_EQ(converter->ConvertClientViZTemplate("a"), "");
  Style().Returns(jvm.MakeBytes("styled", "<chart/>"));
  jvm.Fail("GetByteArrayElements", 1);
  EXPECT_EQ(converter->applyStyleSheet("a", "b"), "");
}

TEST_F(GraphBoardConverterTest, AMissingClassIsLoggedAndEmpty) {
  ToXml().Returns(jvm.MakeBytes("xml", "<chart/>"));
  jvm.Fail("FindClass", 1, jvm.MakeThrowable("java/lang/NoClassDefFoundError", kClass));
  EXPECT_EQ(converter->ConvertClientViZTemplate("a"), "");
  EXPECT_EQ(jvm.Pending(), nullptr);
  // The next conversion looks again.
  EXPECT_EQ(converter->ConvertClientViZTemplate("a"), "<chart/>");
}

TEST_F(GraphBoardConverterTest, ConversionsUseTheCallingThread) {
  ToXml().Returns(jvm.MakeBytes("xml", "<chart/>"));
  FakePlatform::Get().env = jvm.NewEnv("worker");
  EXPECT_EQ(converter->ConvertClientViZTemplate("a"), "<chart/>");
  for (const std::string& event : EventLog::Get().Texts(Source::kJni)) {
    EXPECT_NE(event.find(" on worker"), std::string::npos) << event;
  }
}

// ---- Exceptions and the floating-point environment.

TEST_F(GraphBoardConverterTest, ExceptionsOutOfTheAttachPropagateWithTheGuardRestored) {
  const struct {
    const char* seen;
    void (*raise)();
  } kinds[] = {
      {"JException(a, b, c)", [] { throw JException("a", "b", "c"); }},
      {"std::runtime_error(text)", [] { throw std::runtime_error("text"); }},
      {"std::bad_alloc", [] { throw std::bad_alloc(); }},
      {"int(7)", [] { throw 7; }},
  };
  converter->ConvertClientViZTemplate("");
  EventLog::Get().Clear();
  for (const auto& kind : kinds) {
    FakePlatform::Get().on_attach = kind.raise;
    EXPECT_EQ(Thrown([this] { converter->ConvertClientViZTemplate("a"); }), kind.seen);
    EXPECT_TRUE(Happened(Guarded("IsStarted", "IsStarted", "AttachCurrentThread")));
    EXPECT_EQ(Thrown([this] { converter->applyStyleSheet("a", "b"); }), kind.seen);
    EXPECT_TRUE(Happened(Guarded("IsStarted", "IsStarted", "AttachCurrentThread")));
    FakePlatform::Get().on_attach = nullptr;

    ToXml().Runs(kind.raise);
    EXPECT_EQ(Thrown([this] { converter->ConvertClientViZTemplate("a"); }), kind.seen);
    EXPECT_EQ(EventLog::Get().Texts().back(), "fesetenv");
    Style().Runs(kind.raise);
    EXPECT_EQ(Thrown([this] { converter->applyStyleSheet("a", "b"); }), kind.seen);
    EXPECT_EQ(EventLog::Get().Texts().back(), "fesetenv");
    EventLog::Get().Clear();
  }
}

TEST_F(GraphBoardConverterTest, TheRoundingModeIsBack) {
  FakePlatform::Get().on_attach = [] { std::fesetround(FE_DOWNWARD); };
  converter->ConvertClientViZTemplate("a");
  EXPECT_EQ(std::fegetround(), FE_TONEAREST);
  ToXml().Runs([] {
    std::fesetround(FE_UPWARD);
    throw JException("a", "b", "c");
  });
  EXPECT_THROW(converter->ConvertClientViZTemplate("a"), JException);
  EXPECT_EQ(std::fegetround(), FE_TONEAREST);
  Style().Runs([] { std::fesetround(FE_UPWARD); });
  converter->applyStyleSheet("a", "b");
  EXPECT_EQ(std::fegetround(), FE_TONEAREST);
}

TEST_F(GraphBoardConverterTest, AGuardThatCouldNotSaveRestoresNothing) {
  FloatEnvProbe::Get().Reset();
  FloatEnvProbe::Get().FailSave(1);
  converter->ConvertClientViZTemplate("a");
  const Events events = EventLog::Get().Texts();
  EXPECT_EQ(events.front(), "fegetenv fails");
  // The last restore is that of the last check.
  EXPECT_TRUE(SameEvents(NoPendingException(), Events(events.end() - 3, events.end())));
}

TEST_F(GraphBoardConverterTest, ConversionsTakeNoLock) {
  converter->ConvertClientViZTemplate("a");
  converter->applyStyleSheet("a", "b");
  for (const std::string& event : EventLog::Get().Texts(Source::kPlatform)) {
    EXPECT_EQ(event.find("lock"), std::string::npos) << event;
  }
}

}  // namespace
}  // namespace chartbridge::testing
