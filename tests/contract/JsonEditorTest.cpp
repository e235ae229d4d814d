// SPDX-License-Identifier: Apache-2.0
#include <cfenv>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <vector>

#include "json/jsonEditor.h"
#include "json/jsonImager.h"
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

constexpr char kClass[] = "com/tesk/java_client/core/documents/output/export/JsonImager";
constexpr char kObject[] = "JsonImager@1";
constexpr char kChart[] = "(Ljava/lang/String;[BZLjava/lang/String;I)Z";
constexpr char kInteractive[] =
    "(Ljava/lang/String;[BLjava/lang/String;Ljava/lang/String;Ljava/lang/String;I)Z";
constexpr char kGeo[] = "([B)V";

// Where the editor keeps what it is told.
constexpr std::size_t kImager = sizeof(void*);
constexpr std::size_t kCodepage = kImager + sizeof(void*);
constexpr std::size_t kJsonPath = kCodepage + sizeof(std::string);
constexpr std::size_t kOptions = kJsonPath + sizeof(std::string);
constexpr std::size_t kFilePath = kOptions + sizeof(std::string);
constexpr std::size_t kSize = kFilePath + sizeof(std::string);
constexpr std::size_t kFormat = kSize + sizeof(double);
constexpr std::size_t kTemplate = kFormat + sizeof(int);

const JException kThrown("a", "b", "c");

// A binding that reports its end.
class WatchedImager : public jsonImager {
 public:
  using jsonImager::jsonImager;
  ~WatchedImager() override { EventLog::Get().Record(Source::kMemory, "~jsonImager"); }
};

class JsonEditorTest : public ContractTest {
 protected:
  JsonEditorTest() {
    jsonEditor::_instance = nullptr;
    editor = jsonEditor::GetInstance();
    jvm.ClassWithConstructor(kClass);
    jvm.Method(kClass, "exportChartJsonToFile", kChart);
    jvm.Method(kClass, "exportInteractiveJsonToFile", kInteractive);
    jvm.Method(kClass, "addGeoJson", kGeo);
    EventLog::Get().Clear();
  }
  ~JsonEditorTest() override {
    delete jsonEditor::_instance;
    jsonEditor::_instance = nullptr;
  }

  void Start() {
    editor->StartEditorHeadless(jvm.Env());
    EventLog::Get().Clear();
  }

  FakeMethod& Chart() { return jvm.Method(kClass, "exportChartJsonToFile", kChart); }
  FakeMethod& Interactive() {
    return jvm.Method(kClass, "exportInteractiveJsonToFile", kInteractive);
  }

  // Settings that tell each other apart, without those that only an interactive export needs.
  void Configure() {
    editor->SetCodepage("U8");
    editor->setFilePath("f.js");
    editor->setOptions("opt");
    EventLog::Get().Clear();
  }

  static Events LockOnly() { return Seq("lock depth=1", "unlock depth=0"); }

  static Events CheckedCall(const std::string& call, const std::string& name,
                            const std::string& signature, const std::string& arguments) {
    return Seq(std::string("GetMethodID(class ") + kClass + ", " + name + ", " + signature + ")",
               NoPendingException(),
               call + "(" + kObject + ", " + name + signature + ", " + arguments + ")",
               NoPendingException());
  }

  static Events ChartCall(const std::string& codepage, const std::string& file, bool is_template,
                          int format) {
    return Seq(
        ByteArrayArgument(1, "chart"), StringArgument(file), StringArgument(codepage),
        CheckedCall("CallBooleanMethod", "exportChartJsonToFile", kChart,
                    Quoted(codepage) + ", byte[]#1 \"chart\", " + (is_template ? "true" : "false") +
                        ", " + Quoted(file) + ", " + std::to_string(format)));
  }

  // The four texts, converted in this order and freed the other way round.
  static Events Conversions(const std::string& file, const std::string& options,
                            const std::string& codepage, const std::string& json_path) {
    return Seq(Utf16Conversion(file, 1), Utf16Conversion(options, 2), Utf16Conversion(codepage, 3),
               Utf16Conversion(json_path, 4));
  }

  static Events Releases() {
    return Seq("delete[] buffer 4", "delete[] buffer 3", "delete[] buffer 2", "delete[] buffer 1");
  }

  static Events Around(const Events& conversions, const Events& work) {
    return Seq("lock depth=1", Guarded(conversions, Guarded(Attach()), work, Releases()),
               "unlock depth=0");
  }

  jsonEditor* editor;
};

// ---- The singleton and its settings.

TEST_F(JsonEditorTest, GetInstanceTakesTheLockAlone) {
  EXPECT_EQ(jsonEditor::GetInstance(), editor);
  EXPECT_TRUE(Happened(LockOnly()));
}

TEST_F(JsonEditorTest, AnEditorThatCannotBeMadeLeavesNone) {
  jsonEditor::_instance = nullptr;
  AllocationProbe::Get().FailNew(1);
  EXPECT_EQ(Thrown([] { jsonEditor::GetInstance(); }), "std::bad_alloc");
  EXPECT_TRUE(Happened(LockOnly()));
  EXPECT_EQ(jsonEditor::_instance, nullptr);
  jsonEditor::_instance = editor;
}

TEST_F(JsonEditorTest, Layout) {
  EXPECT_EQ(sizeof(jsonEditor), kTemplate + sizeof(int));
  EXPECT_EQ(VirtualSlots<jsonEditor>(), 2U);
  EXPECT_TRUE(std::has_virtual_destructor_v<jsonEditor>);
  EXPECT_EQ(sizeof(jsonEditor::IMAGE_TYPE), sizeof(int));
  editor->SetCodepage("codepage");
  editor->setJsonPath("json path");
  editor->setOptions("options");
  editor->setFilePath("file path");
  editor->setSize(62.5);
  editor->setImageFormat(static_cast<jsonEditor::IMAGE_TYPE>(-7));
  editor->setIsChartTemplate();
  EXPECT_EQ(FieldReferenceAt<std::string>(editor, kCodepage), "codepage");
  EXPECT_EQ(FieldReferenceAt<std::string>(editor, kJsonPath), "json path");
  EXPECT_EQ(FieldReferenceAt<std::string>(editor, kOptions), "options");
  EXPECT_EQ(FieldReferenceAt<std::string>(editor, kFilePath), "file path");
  EXPECT_EQ(FieldAt<double>(editor, kSize), 62.5);
  EXPECT_EQ(FieldAt<int>(editor, kFormat), -7);
  EXPECT_EQ(FieldAt<unsigned char>(editor, kTemplate), 1);
  EXPECT_EQ(FieldAt<void*>(editor, kImager), nullptr);
}

void ExpectDefaults(const jsonEditor& editor) {
  EXPECT_EQ(FieldReferenceAt<std::string>(&editor, kCodepage), "");
  EXPECT_EQ(FieldReferenceAt<std::string>(&editor, kJsonPath), "");
  EXPECT_EQ(FieldReferenceAt<std::string>(&editor, kOptions), "");
  EXPECT_EQ(FieldReferenceAt<std::string>(&editor, kFilePath), "");
  EXPECT_EQ(FieldAt<double>(&editor, kSize), 100.0);
  EXPECT_EQ(FieldAt<int>(&editor, kFormat), 2);
  EXPECT_EQ(FieldAt<unsigned char>(&editor, kTemplate), 0);
}

TEST_F(JsonEditorTest, ANewEditorHasTheDefaults) {
  const jsonEditor other;
  ExpectDefaults(other);
  EXPECT_EQ(FieldAt<void*>(&other, kImager), nullptr);
  EXPECT_TRUE(Happened({}));
}

TEST_F(JsonEditorTest, EveryGetInstanceResetsTheSettingsAndLeavesTheBinding) {
  Start();
  const void* imager = FieldAt<void*>(editor, kImager);
  editor->SetCodepage("codepage");
  editor->setJsonPath("json path");
  editor->setOptions("options");
  editor->setFilePath("x");
  editor->setSize(1);
  editor->setImageFormat(jsonEditor::IMAGE_SVG);
  editor->setIsChartTemplate();
  EventLog::Get().Clear();
  EXPECT_EQ(jsonEditor::GetInstance(), editor);
  EXPECT_TRUE(Happened(LockOnly()));
  ExpectDefaults(*editor);
  EXPECT_EQ(FieldAt<void*>(editor, kImager), imager);
  EXPECT_TRUE(editor->IsStartedHeadless());
}

TEST_F(JsonEditorTest, SettersTakeNoLockAndNoGuard) {
  editor->setIsChartTemplate();
  editor->setImageFormat(jsonEditor::IMAGE_GIF);
  editor->setSize(50);
  editor->setFilePath("f");
  editor->setOptions("o");
  editor->setJsonPath("p");
  EXPECT_TRUE(Happened({}));
}

TEST_F(JsonEditorTest, SetCodepage) {
  EXPECT_TRUE(editor->SetCodepage("first"));
  EXPECT_TRUE(Happened(LockOnly()));
  EXPECT_FALSE(editor->SetCodepage(""));
  EXPECT_TRUE(Happened(LockOnly()));
  EXPECT_EQ(FieldReferenceAt<std::string>(editor, kCodepage), "first");
}

// ---- Life cycle.

TEST_F(JsonEditorTest, StartTakesTheGuardBeforeTheLock) {
  EXPECT_TRUE(editor->StartEditorHeadless(jvm.Env()));
  EXPECT_TRUE(Happened(Guarded("lock depth=1", BindingConstruction(kClass), "unlock depth=0")));
  EXPECT_TRUE(editor->IsStartedHeadless());
}

TEST_F(JsonEditorTest, ASecondStartKeepsTheFirstBinding) {
  Start();
  const void* first = FieldAt<void*>(editor, kImager);
  EXPECT_TRUE(editor->StartEditorHeadless(jvm.NewEnv("other")));
  EXPECT_TRUE(Happened(Guarded(LockOnly())));
  EXPECT_EQ(FieldAt<void*>(editor, kImager), first);
}

TEST_F(JsonEditorTest, AStartWhoseJavaFailsIsTrue) {
  jvm.Fail("NewObject", 1, jvm.MakeThrowable("java/lang/IllegalStateException", "x"));
  EXPECT_TRUE(editor->StartEditorHeadless(jvm.Env()));
  EXPECT_TRUE(editor->IsStartedHeadless());
}

TEST_F(JsonEditorTest, AStartThatThrowsLeavesNoBinding) {
  AllocationProbe::Get().FailNew(1);
  EXPECT_EQ(Thrown([this] { editor->StartEditorHeadless(jvm.Env()); }), "std::bad_alloc");
  EXPECT_TRUE(Happened(Guarded(LockOnly())));
  EXPECT_FALSE(editor->IsStartedHeadless());
  EventLog::Get().Clear();
  jvm.On("FindClass", 1, [] { throw JException("a", "b", "c"); });
  EXPECT_EQ(Thrown([this] { editor->StartEditorHeadless(jvm.Env()); }), "JException(a, b, c)");
  EXPECT_TRUE(Happened(
      Guarded("lock depth=1", std::string("FindClass(") + kClass + ")", "unlock depth=0")));
  EXPECT_FALSE(editor->IsStartedHeadless());
}

TEST_F(JsonEditorTest, IsStartedHeadlessTakesTheLockAlone) {
  EXPECT_FALSE(editor->IsStartedHeadless());
  EXPECT_TRUE(Happened(LockOnly()));
}

TEST_F(JsonEditorTest, StopHeadlessDeletesTheBinding) {
  PutPointer(*editor, kImager, new WatchedImager(jvm.Env()));
  EventLog::Get().Clear();
  EventLog::Get().Include(Source::kMemory);
  editor->StopHeadless();
  EXPECT_TRUE(Happened(Seq("lock depth=1", "~jsonImager", "unlock depth=0")));
  EXPECT_FALSE(editor->IsStartedHeadless());
  EventLog::Get().Clear();
  editor->StopHeadless();
  EXPECT_TRUE(Happened(LockOnly()));
}

TEST_F(JsonEditorTest, StopKeepsTheSettings) {
  Start();
  editor->setFilePath("f");
  editor->StopHeadless();
  EXPECT_EQ(FieldReferenceAt<std::string>(editor, kFilePath), "f");
}

TEST_F(JsonEditorTest, TheDestructorDeletesTheBindingWithoutALock) {
  auto* other = new jsonEditor();
  PutPointer(*other, kImager, new WatchedImager(jvm.Env()));
  EventLog::Get().Clear();
  EventLog::Get().Include(Source::kMemory);
  delete other;
  EXPECT_TRUE(Happened(Seq("~jsonImager")));
  EXPECT_EQ(jsonEditor::_instance, editor);
}

TEST_F(JsonEditorTest, SetEnvTakesAGuardAndNoLock) {
  editor->SetEnv(jvm.Env());
  EXPECT_TRUE(Happened(Guarded()));
  Start();
  JNIEnv* worker = jvm.NewEnv("worker");
  editor->SetEnv(worker);
  EXPECT_TRUE(Happened(Guarded()));
  const auto* imager = FieldAt<void*>(editor, kImager);
  EXPECT_EQ(FieldAt<JNIEnv*>(imager, sizeof(void*)), worker);
}

// ---- Exports.

TEST_F(JsonEditorTest, AnExportOfAStoppedEditorConvertsNothing) {
  Configure();
  editor->setJsonPath("path");
  EXPECT_FALSE(editor->RenderChartJSON("chart", {"geo"}, {}));
  EXPECT_TRUE(Happened(Seq("lock depth=1", Guarded(), "unlock depth=0")));
}

TEST_F(JsonEditorTest, ThePlainExport) {
  Start();
  Configure();
  Chart().ReturnsBoolean(true);
  EventLog::Get().Include(Source::kMemory);
  EXPECT_TRUE(editor->RenderChartJSON("chart", {"geo"}, {"never", "read"}));
  EXPECT_TRUE(
      Happened(Seq("lock depth=1", "fegetenv", Conversions("f.js", "opt", "U8", ""),
                   // The thread is attached and the binding left alone.
                   "fegetenv", "TeskJVM::GetInstance", "AttachCurrentThread", "fesetenv",
                   ChartCall("U8", "f.js", false, 2), Releases(), "fesetenv", "unlock depth=0")));
}

TEST_F(JsonEditorTest, ThePlainExportPassesTemplateAndFormat) {
  Start();
  Configure();
  editor->setIsChartTemplate();
  editor->setImageFormat(static_cast<jsonEditor::IMAGE_TYPE>(-3));
  editor->setSize(9);
  EventLog::Get().Include(Source::kMemory);
  EXPECT_FALSE(editor->RenderChartJSON("chart", {}, {}));
  EXPECT_TRUE(
      Happened(Around(Conversions("f.js", "opt", "U8", ""), ChartCall("U8", "f.js", true, -3))));
}

TEST_F(JsonEditorTest, AnExportWithoutSettings) {
  Start();
  Chart().ReturnsBoolean(true);
  EventLog::Get().Include(Source::kMemory);
  EXPECT_TRUE(editor->RenderChartJSON("chart", {}, {}));
  EXPECT_TRUE(Happened(Around(Conversions("", "", "", ""), ChartCall("", "", false, 2))));
}

TEST_F(JsonEditorTest, TheInteractiveExport) {
  Start();
  Configure();
  editor->setJsonPath("path");
  editor->setIsChartTemplate();
  Interactive().ReturnsBoolean(true);
  EventLog::Get().Include(Source::kMemory);
  EXPECT_TRUE(editor->RenderChartJSON("chart", {"one", "two", ""}, {}));
  Events documents;
  const std::vector<std::string> geo = {"one", "two", ""};
  for (int nth = 1; nth <= 3; ++nth) {
    const std::string& document = geo[static_cast<std::size_t>(nth) - 1];
    Append(documents, ByteArrayArgument(nth, document));
    Append(documents, CheckedCall("CallVoidMethod", "addGeoJson", kGeo,
                                  "byte[]#" + std::to_string(nth) + " " + Quoted(document)));
  }
  EXPECT_TRUE(Happened(
      Around(Conversions("f.js", "opt", "U8", "path"),
             Seq(documents, ByteArrayArgument(4, "chart"), StringArgument("opt"),
                 StringArgument("path"), StringArgument("f.js"), StringArgument("U8"),
                 CheckedCall("CallBooleanMethod", "exportInteractiveJsonToFile", kInteractive,
                             "\"U8\", byte[]#4 \"chart\", \"path\", \"opt\", \"f.js\", 2")))));
}

TEST_F(JsonEditorTest, TheSettingsStayForTheNextExport) {
  Start();
  Configure();
  editor->RenderChartJSON("chart", {}, {});
  const Events first = EventLog::Get().Texts(Source::kIcu);
  EventLog::Get().Clear();
  editor->RenderChartJSON("chart", {}, {});
  EXPECT_TRUE(Happened(Source::kIcu, first));
  EXPECT_EQ(FieldReferenceAt<std::string>(editor, kFilePath), "f.js");
}

TEST_F(JsonEditorTest, AnExportKeepsTheEnvOfTheBinding) {
  Start();
  // Another thread exports; only SetEnv would point the binding at it.
  FakePlatform::Get().env = jvm.NewEnv("worker");
  editor->RenderChartJSON("chart", {}, {});
  for (const std::string& event : EventLog::Get().Texts(Source::kJni)) {
    EXPECT_EQ(event.find(" on worker"), std::string::npos) << event;
  }
  EventLog::Get().Clear();
  editor->SetEnv(FakePlatform::Get().env);
  editor->RenderChartJSON("chart", {}, {});
  for (const std::string& event : EventLog::Get().Texts(Source::kJni)) {
    EXPECT_NE(event.find(" on worker"), std::string::npos) << event;
  }
}

TEST_F(JsonEditorTest, AFailedAttachDoesNotReachTheBinding) {
  Start();
  Chart().ReturnsBoolean(true);
  FakePlatform::Get().env = nullptr;
  EXPECT_TRUE(editor->RenderChartJSON("chart", {}, {}));
  FakePlatform::Get().has_jvm = false;
  EXPECT_TRUE(editor->RenderChartJSON("chart", {}, {}));
}

TEST_F(JsonEditorTest, ABindingWithoutAnEnvFailsWithoutJava) {
  Start();
  Chart().ReturnsBoolean(true);
  editor->SetEnv(nullptr);
  EXPECT_FALSE(editor->RenderChartJSON("chart", {}, {}));
  EXPECT_TRUE(Happened(Source::kJni, {}));
}

TEST_F(JsonEditorTest, ExceptionsOutOfTheAttach) {
  Start();
  Configure();
  EventLog::Get().Include(Source::kMemory);
  const struct {
    const char* seen;
    void (*raise)();
  } kinds[] = {
      // By value it passes; only a pointer becomes its third text.
      {"JException(a, b, c)", [] { throw JException("a", "b", "c"); }},
      {"std::string(c)", [] { throw &kThrown; }},
      {"std::runtime_error(text)", [] { throw std::runtime_error("text"); }},
      {"std::bad_alloc", [] { throw std::bad_alloc(); }},
  };
  for (const auto& kind : kinds) {
    AllocationProbe::Get().Reset();
    FakePlatform::Get().on_attach = kind.raise;
    EXPECT_EQ(Thrown([this] { editor->RenderChartJSON("chart", {}, {}); }), kind.seen);
    EXPECT_TRUE(Happened(Around(Conversions("f.js", "opt", "U8", ""), {}))) << kind.seen;
  }
}

TEST_F(JsonEditorTest, ExceptionsOutOfTheBinding) {
  Start();
  Configure();
  EventLog::Get().Include(Source::kMemory);
  const struct {
    const char* seen;
    void (*raise)();
  } kinds[] = {
      {"JException(a, b, c)", [] { throw JException("a", "b", "c"); }},
      {"std::string(c)", [] { throw &kThrown; }},
      {"std::runtime_error(text)", [] { throw std::runtime_error("text"); }},
      {"std::bad_alloc", [] { throw std::bad_alloc(); }},
  };
  for (const bool interactive : {false, true}) {
    editor->setJsonPath(interactive ? "path" : "");
    for (const auto& kind : kinds) {
      AllocationProbe::Get().Reset();
      Chart().Runs(kind.raise);
      Interactive().Runs(kind.raise);
      EXPECT_EQ(Thrown([this] { editor->RenderChartJSON("chart", {}, {}); }), kind.seen);
      const Events events = EventLog::Get().Texts();
      EventLog::Get().Clear();
      EXPECT_TRUE(SameEvents(Seq(Releases(), "fesetenv", "unlock depth=0"),
                             Events(events.end() - 6, events.end())));
    }
  }
  for (const std::string& event : EventLog::Get().Texts(Source::kPlatform)) {
    EXPECT_EQ(event.find("printDebugInfo"), std::string::npos);
  }
}

TEST_F(JsonEditorTest, AFailedConversionFreesWhatThereIs) {
  Start();
  Configure();
  EventLog::Get().Include(Source::kMemory);
  for (int failing = 1; failing <= 4; ++failing) {
    AllocationProbe::Get().Reset();
    AllocationProbe::Get().FailNewArray(failing);
    EXPECT_EQ(Thrown([this] { editor->RenderChartJSON("chart", {}, {}); }), "std::bad_alloc");
    int balance = 0;
    for (const std::string& event : EventLog::Get().Texts(Source::kMemory)) {
      balance += event.find("new[]") == 0 ? 1 : -1;
    }
    EXPECT_EQ(balance, 0);
    const Events events = EventLog::Get().Texts();
    EXPECT_TRUE(
        SameEvents(Seq("fesetenv", "unlock depth=0"), Events(events.end() - 2, events.end())));
    EventLog::Get().Clear();
  }
}

TEST_F(JsonEditorTest, TheRoundingModeIsBack) {
  Start();
  FakePlatform::Get().on_attach = [] { std::fesetround(FE_DOWNWARD); };
  Chart().Runs([] {
    EXPECT_EQ(std::fegetround(), FE_TONEAREST);
    std::fesetround(FE_UPWARD);
  });
  editor->RenderChartJSON("chart", {}, {});
  EXPECT_EQ(std::fegetround(), FE_TONEAREST);
  Chart().Runs([] {
    std::fesetround(FE_UPWARD);
    throw JException("a", "b", "c");
  });
  EXPECT_THROW(editor->RenderChartJSON("chart", {}, {}), JException);
  EXPECT_EQ(std::fegetround(), FE_TONEAREST);
}

TEST_F(JsonEditorTest, AGuardThatCouldNotSaveRestoresNothing) {
  Start();
  FloatEnvProbe::Get().FailEverySave();
  editor->RenderChartJSON("chart", {}, {});
  editor->SetEnv(jvm.Env());
  editor->StartEditorHeadless(jvm.Env());
  for (const std::string& event : EventLog::Get().Texts(Source::kFloatEnv)) {
    EXPECT_EQ(event, "fegetenv fails");
  }
}

}  // namespace
}  // namespace chartbridge::testing
