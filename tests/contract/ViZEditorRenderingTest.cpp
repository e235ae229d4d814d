// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <cfenv>
#include <functional>
#include <memory>
#include <new>

#include "chart/ViZEditor.h"
#include "tests/support/AllocationProbe.h"
#include "tests/support/ContractTest.h"
#include "tests/support/FakePlatform.h"
#include "tests/support/FloatEnvProbe.h"
#include "tests/support/IcuProbe.h"
#include "tests/support/Steps.h"
#include "tests/support/Thrown.h"

namespace chartbridge::testing {
namespace {

constexpr char kClass[] = "com/tesk/charteditor/ChartImager";
constexpr char kObject[] = "ChartImager@1";

constexpr char kFileFromBuffer[] =
    "([BLjava/nio/ByteBuffer;Ljava/lang/String;IDLjava/lang/String;[BLjava/lang/String;[B)Z";
constexpr char kMapToFile[] =
    "([BLjava/nio/ByteBuffer;Ljava/lang/String;IDZLjava/lang/String;[BLjava/lang/String;[B)Z";
constexpr char kFileFromBytes[] =
    "([B[BLjava/lang/String;IDLjava/lang/String;[BLjava/lang/String;[B)Z";
constexpr char kToMem[] = "([BLjava/nio/ByteBuffer;IDLjava/lang/String;[BLjava/lang/String;[B)[B";
constexpr char kMapToMemory[] =
    "([BLjava/nio/ByteBuffer;IDZLjava/lang/String;[BLjava/lang/String;[B)[B";

const unsigned char kData[4] = {'d', 'a', 't', 'a'};
const JException kThrown("first", "second", "third");

// What an operation wrote.
struct Outputs {
  unsigned int image_size = 77;
  std::string one;
  std::string two;
  std::string three;
};

// One of the four operations, with arguments that tell them apart, and what it does around Java.
struct Operation {
  const char* name;
  std::function<bool(ViZEditor&, Outputs&, int type)> run;
  // The texts in the order of their conversion: those before the binding is tested, and those
  // after.
  std::vector<std::string> before_test;
  std::vector<std::string> after_test;
  const char* java_method;
  const char* signature;
  const char* call;
};

std::vector<Operation> Operations() {
  return {{"FileFromBuffer",
           [](ViZEditor& editor, Outputs&, int type) {
             return editor.RenderToFileHeadless("chart", kData, sizeof kData, "out.png",
                                                static_cast<ViZEditor::IMAGE_TYPE>(type), 62.5,
                                                "aux1", "aux2", "text-1", "text--2", true);
           },
           {"out.png", "text-1", "text--2"},
           {},
           "RenderToFile",
           kFileFromBuffer,
           "CallBooleanMethod"},
          {"FileFromBytes",
           [](ViZEditor& editor, Outputs&, int type) {
             return editor.RenderToFileHeadless("chart", "data", "out.png",
                                                static_cast<ViZEditor::IMAGE_TYPE>(type), "aux1",
                                                "aux2", "text-1", "text--2", 62.5);
           },
           {"out.png"},
           {"text-1", "text--2"},
           "RenderToFile",
           kFileFromBytes,
           "CallBooleanMethod"},
          {"MemoryFromBytes",
           [](ViZEditor& editor, Outputs& out, int type) {
             return editor.RenderImageToMemoryHeadless(
                 "chart", "data", out.image_size, static_cast<ViZEditor::IMAGE_TYPE>(type), 62.5,
                 "aux1", "aux2", "text-1", "text--2", out.one);
           },
           {},
           {"text-1", "text--2"},
           "RenderToMem",
           kToMem,
           "CallObjectMethod"},
          {"MemoryFromBuffer",
           [](ViZEditor& editor, Outputs& out, int type) {
             return editor.RenderImageToMemoryHeadless(
                 "chart", kData, sizeof kData, static_cast<ViZEditor::IMAGE_TYPE>(type), 62.5,
                 out.one, out.two, out.three, "aux1", "aux2", "text-1", "text--2", true);
           },
           {},
           {"text-1", "text--2"},
           "RenderImageMapToMemory",
           kMapToMemory,
           "CallObjectMethod"}};
}

class ViZEditorRenderingTest : public ContractTest {
 protected:
  ViZEditorRenderingTest() {
    jvm.ClassWithConstructor(kClass);
    jvm.Method(kClass, "RenderToFile", kFileFromBuffer);
    jvm.Method(kClass, "RenderImageMapToFile", kMapToFile);
    jvm.Method(kClass, "RenderToFile", kFileFromBytes);
    jvm.Method(kClass, "RenderToMem", kToMem);
    jvm.Method(kClass, "RenderImageMapToMemory", kMapToMemory);
    jvm.NameMemory(kData, "data");
    editor = std::make_unique<ViZEditor>();
    ViZEditor::_instance = editor.get();
    EventLog::Get().Include(Source::kMemory);
  }
  ~ViZEditorRenderingTest() override { ViZEditor::_instance = nullptr; }

  // Started on the test's thread, with the events of the start forgotten.
  void Start() {
    editor->StartEditorHeadless(jvm.Env());
    Forget();
  }

  void Forget() {
    AllocationProbe::Get().Reset();
    FloatEnvProbe::Get().Reset();
    EventLog::Get().Clear();
  }

  static Events Conversions(const std::vector<std::string>& texts, int first_buffer) {
    Events events;
    for (const std::string& text : texts) Append(events, Utf16Conversion(text, first_buffer++));
    return events;
  }

  // The latest buffer first.
  static Events Freed(std::size_t buffers) {
    Events events;
    for (std::size_t n = buffers; n > 0; --n) {
      Append(events, "delete[] buffer " + std::to_string(n));
    }
    return events;
  }

  static std::size_t Buffers(const Operation& operation) {
    return operation.before_test.size() + operation.after_test.size();
  }

  static Events AllConversions(const Operation& operation) {
    return Seq(
        Conversions(operation.before_test, 1),
        Conversions(operation.after_test, static_cast<int>(operation.before_test.size()) + 1));
  }

  // What an operation does around its Java work.
  static Events Framed(const Operation& operation, const Events& java_work) {
    return Seq("lock depth=1", "fegetenv", AllConversions(operation), AttachEditor(), java_work,
               Freed(Buffers(operation)), "fesetenv", "unlock depth=0");
  }

  std::unique_ptr<ViZEditor> editor;
  Outputs outputs;
};

// ---- The four operations, whole.

TEST_F(ViZEditorRenderingTest, FileFromBuffer) {
  Start();
  jvm.Method(kClass, "RenderToFile", kFileFromBuffer).ReturnsBoolean(true);
  const Operation operation = Operations()[0];
  EXPECT_TRUE(operation.run(*editor, outputs, 2));
  EXPECT_TRUE(Happened(Framed(
      operation,
      Seq(ByteArrayArgument(1, "chart"), StringArgument("out.png"), ByteArrayArgument(2, "aux1"),
          ByteArrayArgument(3, "aux2"), StringArgument("text-1"), StringArgument("text--2"),
          "NewDirectByteBuffer(data, 4)",
          JavaCall("CallBooleanMethod", kClass, kObject, "RenderToFile", kFileFromBuffer,
                   "byte[]#1 \"chart\", ByteBuffer(data, 4), \"out.png\", 2, 62.5, \"text-1\", "
                   "byte[]#2 \"aux1\", \"text--2\", byte[]#3 \"aux2\"")))));
}

TEST_F(ViZEditorRenderingTest, FileFromBufferCallByCall) {
  Start();
  EXPECT_FALSE(editor->RenderToFileHeadless("c", kData, 4, "p", ViZEditor::IMAGE_MAP, 100, "", "",
                                            "", "", false));
  const std::string check[] = {"fegetenv", "ExceptionOccurred() -> null", "fesetenv"};
  const Events ok(check, check + 3);
  EXPECT_TRUE(Happened(Seq(
      "lock depth=1", "fegetenv",
      // The path and the two texts.
      "ucnv_open(null)", "new[] 8 bytes: buffer 1", "ucnv_toUChars(4, \"p\")",
      "ucnv_fixFileSeparator(4)", "ucnv_close", "ucnv_open(null)", "new[] 0 bytes: buffer 2",
      "ucnv_toUChars(0, \"\")", "ucnv_fixFileSeparator(0)", "ucnv_close", "ucnv_open(null)",
      "new[] 0 bytes: buffer 3", "ucnv_toUChars(0, \"\")", "ucnv_fixFileSeparator(0)", "ucnv_close",
      // The thread, with the environment back before Java works.
      "fegetenv", "TeskJVM::GetInstance", "AttachCurrentThread", "lock depth=2", "unlock depth=1",
      "fegetenv", "fesetenv", "fesetenv",
      // Java.
      "NewByteArray(1)", ok, "SetByteArrayRegion(byte[]#1, 0, 1, \"c\")", ok, "NewString(\"p\", 1)",
      ok, "NewByteArray(0)", ok, "SetByteArrayRegion(byte[]#2, 0, 0, \"\")", ok, "NewByteArray(0)",
      ok, "SetByteArrayRegion(byte[]#3, 0, 0, \"\")", ok, "NewString(\"\", 0)", ok,
      "NewString(\"\", 0)", ok, "NewDirectByteBuffer(data, 4)",
      std::string("GetMethodID(class com/tesk/charteditor/ChartImager, RenderImageMapToFile, ") +
          kMapToFile + ")",
      std::string("CallBooleanMethod(ChartImager@1, RenderImageMapToFile") + kMapToFile +
          ", byte[]#1 \"c\", ByteBuffer(data, 4), \"p\", 7, 100, true, \"\", byte[]#2 \"\", "
          "\"\", byte[]#3 \"\")",
      ok, "delete[] buffer 3", "delete[] buffer 2", "delete[] buffer 1", "fesetenv",
      "unlock depth=0")));
}

TEST_F(ViZEditorRenderingTest, FileFromBufferOfAnImageMapNegatesTheFlag) {
  Start();
  jvm.Method(kClass, "RenderImageMapToFile", kMapToFile).ReturnsBoolean(true);
  EXPECT_TRUE(Operations()[0].run(*editor, outputs, 7));
  const Events events = EventLog::Get().Texts(Source::kJni);
  EXPECT_EQ(events[events.size() - 2],
            std::string("CallBooleanMethod(ChartImager@1, RenderImageMapToFile") + kMapToFile +
                ", byte[]#1 \"chart\", ByteBuffer(data, 4), \"out.png\", 7, 62.5, false, "
                "\"text-1\", byte[]#2 \"aux1\", \"text--2\", byte[]#3 \"aux2\")");
}

TEST_F(ViZEditorRenderingTest, FileFromBytes) {
  Start();
  jvm.Method(kClass, "RenderToFile", kFileFromBytes).ReturnsBoolean(true);
  const Operation operation = Operations()[1];
  EXPECT_TRUE(operation.run(*editor, outputs, 7));
  EXPECT_TRUE(Happened(Framed(
      operation,
      Seq(ByteArrayArgument(1, "chart"), ByteArrayArgument(2, "aux1"),
          "SetByteArrayRegion(byte[]#2, 0, 4, \"aux1\")", NoPendingException(),
          StringArgument("text-1"), ByteArrayArgument(3, "aux2"), ByteArrayArgument(4, "data"),
          StringArgument("text--2"), StringArgument("out.png"),
          JavaCall("CallBooleanMethod", kClass, kObject, "RenderToFile", kFileFromBytes,
                   "byte[]#1 \"chart\", byte[]#4 \"data\", \"out.png\", 7, 62.5, \"text-1\", "
                   "byte[]#2 \"aux1\", \"text--2\", byte[]#3 \"aux2\"")))));
}

TEST_F(ViZEditorRenderingTest, MemoryFromBytes) {
  Start();
  jvm.Method(kClass, "RenderToMem", kToMem).Returns(jvm.MakeBytes("picture", "PNG"));
  const Operation operation = Operations()[2];
  EXPECT_TRUE(operation.run(*editor, outputs, 2));
  EXPECT_EQ(outputs.one, "PNG");
  EXPECT_EQ(outputs.image_size, 77U);
  EXPECT_TRUE(Happened(Framed(
      operation,
      Seq(ByteArrayArgument(1, "chart"), ByteArrayArgument(2, "aux1"), ByteArrayArgument(3, "aux2"),
          ByteArrayArgument(4, "data"), StringArgument("text-1"), StringArgument("text--2"),
          JavaCall("CallObjectMethod", kClass, kObject, "RenderToMem", kToMem,
                   "byte[]#1 \"chart\", byte[]#4 \"data\", 2, 62.5, \"text-1\", "
                   "byte[]#2 \"aux1\", \"text--2\", byte[]#3 \"aux2\""),
          "GetArrayLength(byte[] picture)", "GetByteArrayElements(byte[] picture)",
          NoPendingException(), "ReleaseByteArrayElements(byte[] picture, elements, JNI_ABORT)",
          NoPendingException()))));
}

TEST_F(ViZEditorRenderingTest, MemoryFromBuffer) {
  Start();
  const std::string blocks("\0\0\0\3PNG\0\0\0\1m\0\0\0\1j", 17);
  jvm.Method(kClass, "RenderImageMapToMemory", kMapToMemory)
      .Returns(jvm.MakeBytes("blocks", blocks));
  const Operation operation = Operations()[3];
  EXPECT_TRUE(operation.run(*editor, outputs, 7));
  EXPECT_EQ(outputs.one, "PNG");
  EXPECT_EQ(outputs.two, "m");
  EXPECT_EQ(outputs.three, "j");
  EXPECT_TRUE(Happened(Framed(
      operation,
      Seq(ByteArrayArgument(1, "chart"), ByteArrayArgument(2, "aux1"), ByteArrayArgument(3, "aux2"),
          StringArgument("text-1"), StringArgument("text--2"), "NewDirectByteBuffer(data, 4)",
          JavaCall("CallObjectMethod", kClass, kObject, "RenderImageMapToMemory", kMapToMemory,
                   "byte[]#1 \"chart\", ByteBuffer(data, 4), 7, 62.5, false, \"text-1\", "
                   "byte[]#2 \"aux1\", \"text--2\", byte[]#3 \"aux2\""),
          "GetArrayLength(byte[] blocks)", "GetByteArrayElements(byte[] blocks)",
          "ReleaseByteArrayElements(byte[] blocks, elements, JNI_ABORT)", NoPendingException()))));
}

TEST_F(ViZEditorRenderingTest, MemoryFromBufferOfAnotherTypeFillsOneOutput) {
  Start();
  outputs.two = "old2";
  outputs.three = "old3";
  jvm.Method(kClass, "RenderImageMapToMemory", kMapToMemory)
      .Returns(jvm.MakeBytes("blocks", std::string("\0\0\0\3PNG", 7)));
  EXPECT_TRUE(Operations()[3].run(*editor, outputs, 2));
  EXPECT_EQ(outputs.one, "PNG");
  EXPECT_EQ(outputs.two, "old2");
  EXPECT_EQ(outputs.three, "old3");
  EXPECT_EQ(jvm.UnreleasedBuffers(), 1U);
}

TEST_F(ViZEditorRenderingTest, OutputsAreNeverCleared) {
  Start();
  outputs.one = "old";
  EXPECT_TRUE(Operations()[2].run(*editor, outputs, 2));
  EXPECT_TRUE(Operations()[3].run(*editor, outputs, 7));
  EXPECT_EQ(outputs.one, "old");
  outputs.one.clear();
  EXPECT_FALSE(Operations()[2].run(*editor, outputs, 2));
  EXPECT_FALSE(Operations()[3].run(*editor, outputs, 7));
}

TEST_F(ViZEditorRenderingTest, WithoutADirectBufferJavaIsNotCalled) {
  Start();
  jvm.Fail("NewDirectByteBuffer", 1);
  EXPECT_FALSE(Operations()[0].run(*editor, outputs, 2));
  Events events = EventLog::Get().Texts(Source::kJni);
  EXPECT_EQ(events.back(), "NewDirectByteBuffer(data, 4)");
  jvm.Fail("NewDirectByteBuffer", 1);
  EXPECT_FALSE(Operations()[3].run(*editor, outputs, 2));
  outputs.one = "old";
  jvm.Fail("NewDirectByteBuffer", 1);
  EXPECT_TRUE(Operations()[3].run(*editor, outputs, 2));
  events = EventLog::Get().Texts(Source::kJni);
  EXPECT_EQ(events.back(), "NewDirectByteBuffer(data, 4)");
}

TEST_F(ViZEditorRenderingTest, AnEmptyPathIsAnEmptyString) {
  Start();
  editor->RenderToFileHeadless("c", "d", "", ViZEditor::IMAGE_PNG, "", "", "", "", 100);
  const Events events = EventLog::Get().Texts(Source::kJni);
  EXPECT_EQ(events[events.size() - 2],
            std::string("CallBooleanMethod(ChartImager@1, RenderToFile") + kFileFromBytes +
                ", byte[]#1 \"c\", byte[]#4 \"d\", \"\", 2, 100, \"\", byte[]#2 \"\", \"\", "
                "byte[]#3 \"\")");
}

TEST_F(ViZEditorRenderingTest, TheStoredCodepageConvertsNothing) {
  Start();
  editor->SetCodepage("ISO-8859-1");
  Forget();
  editor->RenderToFileHeadless("c", "d", "caf\xC3\xA9", ViZEditor::IMAGE_PNG, "", "", "", "", 100);
  const Events events = EventLog::Get().Texts();
  EXPECT_EQ(std::count(events.begin(), events.end(), "NewString(\"caf\\xC3\\xA9\", 4)"), 1);
  EXPECT_EQ(std::count(events.begin(), events.end(), "ucnv_open(null)"), 3);
}

TEST_F(ViZEditorRenderingTest, AFailedConversionIsNotReported) {
  Start();
  jvm.Method(kClass, "RenderToFile", kFileFromBytes).ReturnsBoolean(true);
  IcuProbe::Get().FailToUChars(U_INVALID_CHAR_FOUND);
  EXPECT_TRUE(Operations()[1].run(*editor, outputs, 2));
  const Events events = EventLog::Get().Texts(Source::kIcu);
  EXPECT_TRUE(SameEvents(Seq("ucnv_open(null)", "ucnv_toUChars(28, \"out.png\")", "ucnv_close"),
                         Events(events.begin(), events.begin() + 3)));
}

TEST_F(ViZEditorRenderingTest, TheEnvGoesToTheSingleton) {
  Start();
  // Another editor's operation points the one editor at its thread, and keeps its own env.
  ViZEditor other;
  other.StartEditorHeadless(jvm.NewEnv("other"));
  FakePlatform::Get().env = jvm.NewEnv("worker");
  Forget();
  Operations()[1].run(other, outputs, 2);
  for (const std::string& event : EventLog::Get().Texts(Source::kJni)) {
    EXPECT_NE(event.find(" on other"), std::string::npos) << event;
  }
  Forget();
  FakePlatform::Get().env = jvm.Env();
  Operations()[1].run(*editor, outputs, 2);
  for (const std::string& event : EventLog::Get().Texts(Source::kJni)) {
    EXPECT_EQ(event.find(" on "), std::string::npos) << event;
  }
}

// ---- What holds for each of the four.

class EveryRenderingTest : public ViZEditorRenderingTest,
                           public ::testing::WithParamInterface<int> {
 protected:
  const Operation operation = Operations()[static_cast<std::size_t>(GetParam())];

  bool Run() { return operation.run(*editor, outputs, 2); }

  // Works as Java does, up to the native code that the test runs inside it.
  FakeMethod& JavaMethod() {
    return jvm.Method(kClass, operation.java_method, operation.signature);
  }

  // The events of a run that ends with an exception in the Java work, from the lock to the lock.
  void ExpectReleasedInOrder(const Events& events) {
    const Events end = Seq(Freed(Buffers(operation)), "fesetenv", "unlock depth=0");
    ASSERT_GT(events.size(), end.size());
    EXPECT_TRUE(
        SameEvents(end, Events(events.end() - static_cast<long>(end.size()), events.end())));
    EXPECT_EQ(FakePlatform::LockDepth(), 0);
    EXPECT_EQ(std::fegetround(), FE_TONEAREST);
  }
};

TEST_P(EveryRenderingTest, BeforeStartIsFalseWithoutJava) {
  outputs.one = "old";
  EXPECT_FALSE(Run());
  const std::vector<std::string>& texts = operation.before_test;
  EXPECT_TRUE(Happened(Seq("lock depth=1", "fegetenv", Conversions(texts, 1), Freed(texts.size()),
                           "fesetenv", "unlock depth=0")));
  EXPECT_EQ(outputs.one, "old");
}

TEST_P(EveryRenderingTest, AfterStopIsFalseWithoutJava) {
  Start();
  editor->StopHeadless();
  Forget();
  EXPECT_FALSE(Run());
  EXPECT_TRUE(Happened(Source::kJni, {}));
}

TEST_P(EveryRenderingTest, AFailedOuterSaveRestoresTheInnerOnesOnly) {
  Start();
  FloatEnvProbe::Get().FailSave(1);
  Run();
  Events events = EventLog::Get().Texts(Source::kFloatEnv);
  EXPECT_EQ(events.front(), "fegetenv fails");
  // The rest is pairs: the outer restore is missing.
  events.erase(events.begin());
  EXPECT_EQ(std::count(events.begin(), events.end(), "fegetenv"),
            std::count(events.begin(), events.end(), "fesetenv"));
  EXPECT_EQ(std::count(events.begin(), events.end(), "fesetenv of another environment"), 0);
}

TEST_P(EveryRenderingTest, FailedSavesNeverRestore) {
  Start();
  FloatEnvProbe::Get().FailEverySave();
  Run();
  const Events events = EventLog::Get().Texts(Source::kFloatEnv);
  EXPECT_EQ(static_cast<std::size_t>(std::count(events.begin(), events.end(), "fegetenv fails")),
            events.size());
}

TEST_P(EveryRenderingTest, AFailedInnerSaveRestoresTheOthers) {
  Start();
  FloatEnvProbe::Get().FailSave(2);
  Run();
  const Events events = EventLog::Get().Texts(Source::kFloatEnv);
  EXPECT_TRUE(SameEvents(Seq("fegetenv", "fegetenv fails", "fegetenv", "fesetenv"),
                         Events(events.begin(), events.begin() + 4)));
  EXPECT_EQ(events.back(), "fesetenv");
}

TEST_P(EveryRenderingTest, WhatTheAttachChangesIsBackBeforeJavaWorks) {
  Start();
  FakePlatform::Get().on_attach = [] { std::fesetround(FE_UPWARD); };
  int mode = -1;
  JavaMethod().Runs([&] { mode = std::fegetround(); });
  Run();
  EXPECT_EQ(mode, FE_TONEAREST);
}

TEST_P(EveryRenderingTest, WhatJavaChangesIsBackAtTheEnd) {
  Start();
  JavaMethod().Runs([] { std::fesetround(FE_DOWNWARD); });
  std::fesetround(FE_UPWARD);
  Run();
  const int mode = std::fegetround();
  std::fesetround(FE_TONEAREST);
  EXPECT_EQ(mode, FE_UPWARD);
}

TEST_P(EveryRenderingTest, AJavaExceptionIsLoggedClearedAndFalse) {
  Start();
  const jthrowable exception = jvm.MakeThrowable("java/io/IOException", "disk full");
  JavaMethod().Throws(exception);
  EXPECT_FALSE(Run());
  EXPECT_EQ(jvm.Pending(), nullptr);
  const Events events = EventLog::Get().Texts(Source::kJni);
  EXPECT_EQ(std::count(events.begin(), events.end(), "ExceptionOccurred() -> IOException@1"), 1);
  EXPECT_EQ(std::count(events.begin(), events.end(), "ExceptionClear()"), 1);
}

TEST_P(EveryRenderingTest, AJExceptionOutOfJavaReachesTheHostUnchanged) {
  Start();
  JavaMethod().Runs([] {
    std::fesetround(FE_UPWARD);
    throw JException("first", "second", "third");
  });
  EXPECT_EQ(Thrown([this] { Run(); }), "JException(first, second, third)");
  ExpectReleasedInOrder(EventLog::Get().Texts());
}

TEST_P(EveryRenderingTest, AJExceptionPointerOutOfJavaBecomesItsThirdText) {
  Start();
  JavaMethod().Runs([] {
    std::fesetround(FE_UPWARD);
    throw &kThrown;
  });
  EXPECT_EQ(Thrown([this] { Run(); }), "std::string(third)");
  ExpectReleasedInOrder(EventLog::Get().Texts());
}

TEST_P(EveryRenderingTest, AnotherExceptionOutOfJavaPropagates) {
  Start();
  JavaMethod().Runs([] { throw std::runtime_error("other"); });
  EXPECT_EQ(Thrown([this] { Run(); }), "std::runtime_error(other)");
  ExpectReleasedInOrder(EventLog::Get().Texts());
}

TEST_P(EveryRenderingTest, BadAllocOutOfTheBindingPropagates) {
  Start();
  jvm.On("NewByteArray", 2, [] { throw std::bad_alloc(); });
  EXPECT_EQ(Thrown([this] { Run(); }), "std::bad_alloc");
  ExpectReleasedInOrder(EventLog::Get().Texts());
}

TEST_P(EveryRenderingTest, NothingIsPrintedForAnyException) {
  Start();
  JavaMethod().Runs([] { throw &kThrown; });
  EXPECT_EQ(Thrown([this] { Run(); }), "std::string(third)");
  for (const std::string& event : EventLog::Get().Texts(Source::kPlatform)) {
    EXPECT_EQ(event.find("printDebugInfo"), std::string::npos) << event;
  }
}

TEST_P(EveryRenderingTest, ExceptionsOutOfTheAttach) {
  Start();
  const std::pair<std::function<void()>, std::string> cases[] = {
      {[] { throw JException("first", "second", "third"); }, "JException(first, second, third)"},
      {[] { throw &kThrown; }, "std::string(third)"},
      {[] { throw std::runtime_error("other"); }, "std::runtime_error(other)"},
      {[] { throw std::bad_alloc(); }, "std::bad_alloc"}};
  for (const auto& [action, expected] : cases) {
    Forget();
    FakePlatform::Get().on_attach = [act = action] {
      std::fesetround(FE_UPWARD);
      act();
    };
    EXPECT_EQ(Thrown([this] { Run(); }), expected);
    EXPECT_EQ(std::fegetround(), FE_TONEAREST);
    // The inner guard first, then the buffers, the outer guard and the lock.
    EXPECT_TRUE(
        Happened(Seq("lock depth=1", "fegetenv", AllConversions(operation), Guarded(Attach()),
                     Freed(Buffers(operation)), "fesetenv", "unlock depth=0")));
  }
}

TEST_P(EveryRenderingTest, BadAllocInEachConversionFreesTheEarlierBuffers) {
  Start();
  for (std::size_t failing = 1; failing <= Buffers(operation); ++failing) {
    Forget();
    AllocationProbe::Get().FailNewArray(static_cast<int>(failing));
    EXPECT_EQ(Thrown([this] { Run(); }), "std::bad_alloc");
    const Events events = EventLog::Get().Texts();
    const Events end = Seq(Freed(failing - 1), "fesetenv", "unlock depth=0");
    ASSERT_GT(events.size(), end.size());
    EXPECT_TRUE(
        SameEvents(end, Events(events.end() - static_cast<long>(end.size()), events.end())));
    EXPECT_EQ(IcuProbe::Get().OpenConverters(), 0U);
  }
}

TEST_P(EveryRenderingTest, UsesTheEnvOfItsThread) {
  Start();
  FakePlatform::Get().env = jvm.NewEnv("worker");
  Run();
  const Events events = EventLog::Get().Texts(Source::kJni);
  ASSERT_FALSE(events.empty());
  for (const std::string& event : events) {
    EXPECT_NE(event.find(" on worker"), std::string::npos) << event;
  }
}

TEST_P(EveryRenderingTest, NeverStartsTheJvmNorAsksForIt) {
  FakePlatform::Get().started = false;
  Start();
  Run();
  for (const std::string& event : EventLog::Get().Texts(Source::kPlatform)) {
    EXPECT_NE(event, "IsStarted");
    EXPECT_NE(event, "StartJVM");
  }
}

TEST_P(EveryRenderingTest, TwoRunsAreAlike) {
  Start();
  Run();
  const auto without_numbers = [](Events events) {
    for (std::string& event : events) {
      event.erase(
          std::remove_if(event.begin(), event.end(), [](char c) { return c >= '0' && c <= '9'; }),
          event.end());
    }
    return events;
  };
  const Events first = without_numbers(EventLog::Get().Texts());
  Forget();
  Run();
  EXPECT_TRUE(SameEvents(first, without_numbers(EventLog::Get().Texts())));
}

INSTANTIATE_TEST_SUITE_P(All, EveryRenderingTest, ::testing::Range(0, 4),
                         [](const ::testing::TestParamInfo<int>& parameter) {
                           return Operations()[static_cast<std::size_t>(parameter.param)].name;
                         });

}  // namespace
}  // namespace chartbridge::testing
