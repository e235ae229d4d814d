// SPDX-License-Identifier: Apache-2.0
#include <cfenv>
#include <functional>
#include <iterator>
#include <memory>
#include <new>
#include <stdexcept>
#include <string>
#include <vector>

#include "chart/ViZEditor.h"
#include "tests/support/AllocationProbe.h"
#include "tests/support/ContractTest.h"
#include "tests/support/FakePlatform.h"
#include "tests/support/FloatEnvProbe.h"
#include "tests/support/Steps.h"
#include "tests/support/Thrown.h"

namespace chartbridge::testing {
namespace {

constexpr char kClass[] = "com/tesk/charteditor/ChartImager";
constexpr char kObject[] = "ChartImager@1";
constexpr char kEmbed[] = "([B[BLjava/nio/ByteBuffer;I)[B";
constexpr char kConvert[] = "([BLjava/lang/String;I)Z";
constexpr char kStyle[] = "([B[B)[B";

const JException kThrown("first", "second", "third");
unsigned char histogram[3] = {'h', 'i', 's'};

class ViZEditorUtilitiesTest : public ContractTest {
 protected:
  ViZEditorUtilitiesTest() {
    jvm.ClassWithConstructor(kClass);
    Embed();
    Convert();
    Style();
    jvm.NameMemory(histogram, "histogram");
    editor = std::make_unique<ViZEditor>();
    ViZEditor::_instance = editor.get();
  }
  ~ViZEditorUtilitiesTest() override { ViZEditor::_instance = nullptr; }

  void Start() {
    editor->StartEditorHeadless(jvm.Env());
    AllocationProbe::Get().Reset();
    EventLog::Get().Clear();
  }

  FakeMethod& Embed() { return jvm.Method(kClass, "EmbedHistogramInGraph", kEmbed); }
  FakeMethod& Convert() { return jvm.Method(kClass, "ConvertImage", kConvert); }
  FakeMethod& Style() { return jvm.Method(kClass, "ApplyStyleSheet", kStyle); }

  std::string EmbedHistogram(unsigned int count = 5) {
    return editor->EmbedHistogramInGraph("one", "two", histogram, sizeof histogram, count);
  }

  bool ConvertImage() { return editor->ConvertImage("image", "out", ViZEditor::IMAGE_GIF); }

  template <typename... Parts>
  static Events Frame(const Parts&... parts) {
    return Seq("lock depth=1", Guarded(parts...), "unlock depth=0");
  }

  static Events EmbedArguments() {
    // No check follows the buffer.
    return Seq(ByteArrayArgument(1, "one"), ByteArrayArgument(2, "two"),
               "NewDirectByteBuffer(histogram, 3)");
  }

  static Events EmbedCall(const std::string& count) {
    return JavaCall("CallObjectMethod", kClass, kObject, "EmbedHistogramInGraph", kEmbed,
                    "byte[]#1 \"one\", byte[]#2 \"two\", ByteBuffer(histogram, 3), " + count);
  }

  static Events StyleCall(const std::string& document, const std::string& sheet) {
    return Seq(ByteArrayArgument(1, document), ByteArrayArgument(2, sheet),
               JavaCall("CallObjectMethod", kClass, kObject, "ApplyStyleSheet", kStyle,
                        "byte[]#1 " + Quoted(document) + ", byte[]#2 " + Quoted(sheet)));
  }

  std::unique_ptr<ViZEditor> editor;
};

// ---- Embedding a histogram.

TEST_F(ViZEditorUtilitiesTest, EmbedHistogramInGraph) {
  Start();
  const std::string bytes("g\0r", 3);
  Embed().Returns(jvm.MakeBytes("graph", bytes));
  EXPECT_EQ(EmbedHistogram(), bytes);
  EXPECT_TRUE(Happened(Frame(AttachEditor(), EmbedArguments(), EmbedCall("5"),
                             "GetArrayLength(byte[] graph)", "GetByteArrayElements(byte[] graph)",
                             NoPendingException())));
  // Kept, unlike everywhere else.
  EXPECT_EQ(jvm.UnreleasedBuffers(), 1U);
}

TEST_F(ViZEditorUtilitiesTest, TheCountGoesToJavaAsItsInt) {
  Start();
  EmbedHistogram(4294967295U);
  EXPECT_TRUE(Happened(Frame(AttachEditor(), EmbedArguments(), EmbedCall("-1"))));
}

TEST_F(ViZEditorUtilitiesTest, JavaWritesIntoTheHostsHistogram) {
  Start();
  Embed().Does([](const FakeCall& call) {
    const FakeObject* buffer = ObjectOf(call.arguments.at(2).value.l);
    static_cast<unsigned char*>(buffer->address)[1] = 'X';
    return jvalue{};
  });
  EmbedHistogram();
  EXPECT_EQ(histogram[1], 'X');
  histogram[1] = 'i';
}

TEST_F(ViZEditorUtilitiesTest, AHistogramThatCannotBeSharedIsEmptyWithoutJava) {
  Start();
  Embed().Returns(jvm.MakeBytes("graph", "bytes"));
  jvm.Fail("NewDirectByteBuffer", 1);
  EXPECT_EQ(EmbedHistogram(), "");
  EXPECT_TRUE(Happened(Frame(AttachEditor(), EmbedArguments())));
}

TEST_F(ViZEditorUtilitiesTest, NullInsteadOfAGraphIsEmpty) {
  Start();
  EXPECT_EQ(EmbedHistogram(), "");
  EXPECT_TRUE(Happened(Frame(AttachEditor(), EmbedArguments(), EmbedCall("5"))));
}

// ---- Converting an image.

TEST_F(ViZEditorUtilitiesTest, ConvertImage) {
  Start();
  EventLog::Get().Include(Source::kMemory);
  for (const bool answer : {true, false}) {
    AllocationProbe::Get().Reset();
    Convert().ReturnsBoolean(answer);
    EXPECT_EQ(ConvertImage(), answer);
    const int nth = answer ? 1 : 2;
    EXPECT_TRUE(
        Happened(Frame(Utf16Conversion("out", 1), AttachEditor(), ByteArrayArgument(nth, "image"),
                       StringArgument("out"),
                       JavaCall("CallBooleanMethod", kClass, kObject, "ConvertImage", kConvert,
                                "byte[]#" + std::to_string(nth) + " \"image\", \"out\", 4"),
                       "delete[] buffer 1")));
  }
}

TEST_F(ViZEditorUtilitiesTest, ConvertImageOfAnEmptyPathPassesAnEmptyString) {
  Start();
  Convert().ReturnsBoolean(true);
  EXPECT_TRUE(editor->ConvertImage("", "", static_cast<ViZEditor::IMAGE_TYPE>(-1)));
  EXPECT_TRUE(Happened(Frame(Utf16Conversion(""), AttachEditor(), ByteArrayArgument(1, ""),
                             StringArgument(""),
                             JavaCall("CallBooleanMethod", kClass, kObject, "ConvertImage",
                                      kConvert, "byte[]#1 \"\", \"\", -1"))));
}

// ---- Applying a style sheet.

TEST_F(ViZEditorUtilitiesTest, ApplyStyleSheet) {
  Start();
  const std::string styled("s\0t", 3);
  Style().Returns(jvm.MakeBytes("styled", styled));
  std::string document = "document";
  EXPECT_TRUE(editor->ApplyStyleSheet(document, "sheet"));
  EXPECT_EQ(document, styled);
  EXPECT_TRUE(Happened(
      Frame(AttachEditor(), StyleCall("document", "sheet"), "GetArrayLength(byte[] styled)",
            NoPendingException(), "GetByteArrayElements(byte[] styled)", NoPendingException(),
            "ReleaseByteArrayElements(byte[] styled, elements, JNI_ABORT)", NoPendingException())));
  EXPECT_EQ(jvm.UnreleasedBuffers(), 0U);
}

TEST_F(ViZEditorUtilitiesTest, AnEmptyResultEmptiesTheDocumentAndIsFalse) {
  Start();
  Style().Returns(jvm.MakeBytes("styled", ""));
  std::string document = "document";
  EXPECT_FALSE(editor->ApplyStyleSheet(document, "sheet"));
  EXPECT_EQ(document, "");
  EXPECT_EQ(jvm.UnreleasedBuffers(), 0U);
}

TEST_F(ViZEditorUtilitiesTest, ANullResultIsReadAsItIs) {
  Start();
  Style().Returns(nullptr);
  std::string document = "document";
  EXPECT_FALSE(editor->ApplyStyleSheet(document, "sheet"));
  EXPECT_EQ(jvm.Pending(), nullptr);
  Events calls;
  for (const std::string& event : EventLog::Get().Texts(Source::kJni)) {
    if (event.find("(null") != std::string::npos) calls.push_back(event);
  }
  EXPECT_TRUE(SameEvents(Seq("GetArrayLength(null)", "GetByteArrayElements(null)",
                             "ReleaseByteArrayElements(null, null, JNI_ABORT)"),
                         calls));
}

TEST_F(ViZEditorUtilitiesTest, AResultThatJavaDoesNotGiveKeepsTheDocument) {
  Start();
  Style().Returns(jvm.MakeBytes("styled", "new"));
  jvm.Fail("GetByteArrayElements", 1, jvm.MakeThrowable("java/lang/OutOfMemoryError", "heap"));
  std::string document = "document";
  EXPECT_FALSE(editor->ApplyStyleSheet(document, "sheet"));
  EXPECT_EQ(document, "document");
}

struct Kind {
  const char* seen;
  const char* told;
  void (*raise)();
};

// By value a JException is as unknown as any other; only a pointer is told.
constexpr char kUnknown[] = "printDebugInfo(\"Caught Unknown Exception\")";
const Kind kKinds[] = {
    {"JException(a, b, c)", kUnknown, [] { throw JException("a", "b", "c"); }},
    {"std::string(third)", "printDebugInfo(\"Caught JException: first\\x0Athird\")",
     [] { throw &kThrown; }},
    {"std::runtime_error(text)", kUnknown, [] { throw std::runtime_error("text"); }},
    {"std::bad_alloc", kUnknown, [] { throw std::bad_alloc(); }},
    {"int(7)", kUnknown, [] { throw 7; }},
};

TEST_F(ViZEditorUtilitiesTest, ApplyStyleSheetTellsWhatTheAttachThrows) {
  Start();
  for (const Kind& kind : kKinds) {
    FakePlatform::Get().on_attach = kind.raise;
    std::string document = "document";
    EXPECT_FALSE(editor->ApplyStyleSheet(document, "sheet"));
    EXPECT_EQ(document, "document");
    EXPECT_TRUE(Happened(Frame(Guarded(Attach()), kind.told))) << kind.seen;
  }
}

TEST_F(ViZEditorUtilitiesTest, ApplyStyleSheetTellsWhatTheBindingThrows) {
  Start();
  for (const Kind& kind : kKinds) {
    Style().Runs(kind.raise);
    std::string document = "document";
    EXPECT_FALSE(editor->ApplyStyleSheet(document, "sheet"));
    EXPECT_EQ(document, "document");
    const Events events = EventLog::Get().Texts();
    EventLog::Get().Clear();
    EXPECT_TRUE(SameEvents(Seq(kind.told, "fesetenv", "unlock depth=0"),
                           Events(events.end() - 3, events.end())));
    int told = 0;
    for (const std::string& event : events) told += event.find("printDebugInfo") == 0 ? 1 : 0;
    EXPECT_EQ(told, 1);
  }
}

TEST_F(ViZEditorUtilitiesTest, ApplyStyleSheetKeepsWhatWasWrittenBeforeAnException) {
  Start();
  Style().Returns(jvm.MakeBytes("styled", "new"));
  jvm.On("ReleaseByteArrayElements", 1, [] { throw std::bad_alloc(); });
  std::string document = "document";
  EXPECT_FALSE(editor->ApplyStyleSheet(document, "sheet"));
  EXPECT_EQ(document, "new");
}

// ---- What the first two have in common.

struct Utility {
  const char* name;
  std::function<std::string(ViZEditor&)> run;
  // What was converted before the binding was looked for.
  std::vector<std::string> texts;
  std::string success;
  std::string failure;
};

std::vector<Utility> Utilities() {
  return {{"EmbedHistogramInGraph",
           [](ViZEditor& editor) {
             return editor.EmbedHistogramInGraph("one", "two", histogram, sizeof histogram, 5);
           },
           {},
           "graph",
           ""},
          {"ConvertImage",
           [](ViZEditor& editor) -> std::string {
             return editor.ConvertImage("image", "out", ViZEditor::IMAGE_GIF) ? "true" : "false";
           },
           {"out"},
           "true",
           "false"},
          {"ApplyStyleSheet",
           [](ViZEditor& editor) {
             std::string document = "document";
             const bool result = editor.ApplyStyleSheet(document, "sheet");
             return (result ? "true " : "false ") + document;
           },
           {},
           "true styled",
           "false document"}};
}

class EveryUtilityTest : public ViZEditorUtilitiesTest,
                         public ::testing::WithParamInterface<Utility> {
 protected:
  void Succeed() {
    Embed().Returns(jvm.MakeBytes("graph", "graph"));
    Convert().ReturnsBoolean(true);
    Style().Returns(jvm.MakeBytes("styled", "styled"));
  }

  Events Conversions() const {
    Events events;
    int buffer = 0;
    for (const std::string& text : GetParam().texts) {
      Append(events, Utf16Conversion(text, ++buffer));
    }
    return events;
  }

  Events Releases() const { return GetParam().texts.empty() ? Events{} : Seq("delete[] buffer 1"); }

  bool KeepsExceptions() const { return std::string(GetParam().name) == "ApplyStyleSheet"; }
};

TEST_P(EveryUtilityTest, OfAStoppedEditorTouchesNoJvmAndPrintsNothing) {
  EventLog::Get().Include(Source::kMemory);
  EXPECT_EQ(GetParam().run(*editor), GetParam().failure);
  EXPECT_TRUE(Happened(Frame(Conversions(), Releases())));
}

TEST_P(EveryUtilityTest, CallsJavaOnTheCallingThread) {
  Start();
  Succeed();
  FakePlatform::Get().env = jvm.NewEnv("worker");
  EXPECT_EQ(GetParam().run(*editor), GetParam().success);
  for (const std::string& event : EventLog::Get().Texts(Source::kJni)) {
    EXPECT_NE(event.find(" on worker"), std::string::npos) << event;
  }
}

TEST_P(EveryUtilityTest, OnAThreadThatCannotBeAttachedCallsNoJava) {
  Start();
  Succeed();
  FakePlatform::Get().env = nullptr;
  const std::string result = GetParam().run(*editor);
  EXPECT_EQ(result, GetParam().failure);
  EXPECT_TRUE(Happened(Source::kJni, {}));
}

TEST_P(EveryUtilityTest, ExceptionsLeaveAfterBuffersGuardsAndLock) {
  if (KeepsExceptions()) return;
  Start();
  EventLog::Get().Include(Source::kMemory);
  for (const Kind& kind : kKinds) {
    AllocationProbe::Get().Reset();
    FakePlatform::Get().on_attach = kind.raise;
    EXPECT_EQ(Thrown([this] { GetParam().run(*editor); }), kind.seen);
    EXPECT_TRUE(Happened(Frame(Conversions(), Guarded(Attach()), Releases()))) << kind.seen;
    FakePlatform::Get().on_attach = nullptr;

    AllocationProbe::Get().Reset();
    Embed().Runs(kind.raise);
    Convert().Runs(kind.raise);
    EXPECT_EQ(Thrown([this] { GetParam().run(*editor); }), kind.seen);
    const Events events = EventLog::Get().Texts();
    EventLog::Get().Clear();
    const Events tail = Seq(Releases(), "fesetenv", "unlock depth=0");
    EXPECT_TRUE(SameEvents(
        tail, Events(events.end() - static_cast<std::ptrdiff_t>(tail.size()), events.end())));
    for (const std::string& event : events) {
      EXPECT_EQ(event.find("printDebugInfo"), std::string::npos) << event;
    }
  }
}

TEST_P(EveryUtilityTest, TheRoundingModeIsBack) {
  Start();
  Succeed();
  FakePlatform::Get().on_attach = [] { std::fesetround(FE_DOWNWARD); };
  const auto change = [] {
    EXPECT_EQ(std::fegetround(), FE_TONEAREST);
    std::fesetround(FE_UPWARD);
  };
  Embed().Runs(change);
  Convert().Runs(change);
  Style().Runs(change);
  EXPECT_EQ(GetParam().run(*editor), GetParam().success);
  EXPECT_EQ(std::fegetround(), FE_TONEAREST);

  const auto change_and_throw = [] {
    std::fesetround(FE_UPWARD);
    throw std::runtime_error("text");
  };
  Embed().Runs(change_and_throw);
  Convert().Runs(change_and_throw);
  Style().Runs(change_and_throw);
  Thrown([this] { GetParam().run(*editor); });
  EXPECT_EQ(std::fegetround(), FE_TONEAREST);
}

TEST_P(EveryUtilityTest, AGuardThatCouldNotSaveRestoresNothing) {
  Start();
  Succeed();
  FloatEnvProbe::Get().Reset();
  FloatEnvProbe::Get().FailSave(1);
  EXPECT_EQ(GetParam().run(*editor), GetParam().success);
  const Events outer = EventLog::Get().Texts(Source::kFloatEnv);
  EXPECT_EQ(outer.front(), "fegetenv fails");
  EXPECT_EQ(outer.size() % 2, 1U);

  EventLog::Get().Clear();
  FloatEnvProbe::Get().Reset();
  FloatEnvProbe::Get().FailEverySave();
  EXPECT_EQ(GetParam().run(*editor), GetParam().success);
  for (const std::string& event : EventLog::Get().Texts(Source::kFloatEnv)) {
    EXPECT_EQ(event, "fegetenv fails");
  }
}

INSTANTIATE_TEST_SUITE_P(Utilities, EveryUtilityTest, ::testing::ValuesIn(Utilities()),
                         [](const auto& test) { return std::string(test.param.name); });

}  // namespace
}  // namespace chartbridge::testing
