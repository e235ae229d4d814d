// SPDX-License-Identifier: Apache-2.0
#include <cfenv>

#include "tests/support/AllocationProbe.h"
#include "tests/support/FakePlatform.h"
#include "tests/support/FieldAt.h"
#include "tests/support/FloatEnvProbe.h"
#include "tests/support/ObjectLayout.h"
#include "tests/support/Thrown.h"
#include "tests/support/TreeFixture.h"
#include "tree/JTreeEditor.h"
#include "tree/JTreeImager.h"

namespace chartbridge::testing {
namespace {

constexpr char kSetSchemaPath[] = "setSchemaPath";
constexpr char kTakesString[] = "(Ljava/lang/String;)V";

// Where the editor keeps its bindings, and a binding its env.
constexpr std::size_t kEditorOffset = sizeof(void*);
constexpr std::size_t kImagerOffset = 2 * sizeof(void*);
constexpr std::size_t kEnvOffset = sizeof(void*);

// Bindings that report their end.
class WatchedEditor : public JTreeEditor {
 public:
  using JTreeEditor::JTreeEditor;
  ~WatchedEditor() override { EventLog::Get().Record(Source::kMemory, "~JTreeEditor"); }
};

class WatchedImager : public JTreeImager {
 public:
  using JTreeImager::JTreeImager;
  ~WatchedImager() override { EventLog::Get().Record(Source::kMemory, "~JTreeImager"); }
};

class TreeEditorLifecycleTest : public TreeEditorFixture {
 protected:
  // The env that a binding of the editor calls Java through.
  static JNIEnv* EnvAt(const TreeEditor& owner, std::size_t offset) {
    const JAccessor* binding = FieldAt<JAccessor*>(&owner, offset);
    return FieldAt<JNIEnv*>(binding, kEnvOffset);
  }

  static Events Start(const Events& schema_path) {
    return TreeFrame(Attach(), BindingConstruction(kTreeEditorClass),
                     Seq("lock depth=2", Guarded(schema_path), "unlock depth=1"));
  }
};

// ---- The singleton.

TEST_F(TreeEditorLifecycleTest, GetInstanceTakesTheLockAndThenTheGuard) {
  TreeEditor* first = TreeEditor::GetInstance();
  EXPECT_EQ(first, &editor);
  EXPECT_EQ(TreeEditor::_instance, first);
  EXPECT_TRUE(Happened(Seq("lock depth=1", "fegetenv", "fesetenv", "unlock depth=0")));
}

TEST_F(TreeEditorLifecycleTest, GetInstanceCreatesAnEditorThatIsNotStarted) {
  TreeEditor* const used = TreeEditor::_instance;
  TreeEditor::_instance = nullptr;
  TreeEditor* const fresh = TreeEditor::GetInstance();
  EXPECT_TRUE(Happened(TreeFrame()));
  EXPECT_NE(fresh, used);
  EXPECT_FALSE(fresh->IsStarted());
  EXPECT_FALSE(fresh->IsStartedHeadless());
  delete fresh;
  TreeEditor::_instance = used;
}

TEST_F(TreeEditorLifecycleTest, AnEditorThatCannotBeMadeLeavesNone) {
  TreeEditor* const used = TreeEditor::_instance;
  TreeEditor::_instance = nullptr;
  AllocationProbe::Get().FailNew(1);
  EXPECT_EQ(Thrown([] { TreeEditor::GetInstance(); }), "std::bad_alloc");
  EXPECT_EQ(TreeEditor::_instance, nullptr);
  EXPECT_TRUE(Happened(TreeFrame()));
  TreeEditor::_instance = used;
}

TEST_F(TreeEditorLifecycleTest, MakingAndDeletingAnEditorTouchesNothing) {
  { const TreeEditor other; }
  EXPECT_TRUE(Happened({}));
  EXPECT_EQ(TreeEditor::_instance, &editor);
}

TEST_F(TreeEditorLifecycleTest, TheDestructorDeletesTheInteractiveBindingFirst) {
  auto* other = new TreeEditor();
  PutPointer(*other, kEditorOffset, new WatchedEditor(jvm.Env()));
  PutPointer(*other, kImagerOffset, new WatchedImager(jvm.Env()));
  EventLog::Get().Clear();
  EventLog::Get().Include(Source::kMemory);
  delete other;
  EXPECT_TRUE(Happened(Seq("~JTreeEditor", "~JTreeImager")));
}

TEST_F(TreeEditorLifecycleTest, TheDestructorLeavesTheRegistration) {
  auto* other = new TreeEditor();
  TreeEditor* const used = TreeEditor::_instance;
  TreeEditor::_instance = other;
  delete other;
  EXPECT_EQ(TreeEditor::_instance, other);
  TreeEditor::_instance = used;
}

// ---- Starting the interactive editor.

TEST_F(TreeEditorLifecycleTest, StartEditorMakesTheBindingAndHandsOnTheSchemaPath) {
  EXPECT_TRUE(editor.StartEditor(jvm.Env(), "UTF-8", "schema.xsd"));
  EXPECT_TRUE(Happened(Seq(
      // Written out once; the other tests use the named steps.
      "lock depth=1", "fegetenv", "TeskJVM::GetInstance", "AttachCurrentThread",
      "FindClass(com/tesk/treemodeleditor/TreeEditor)",
      "GetMethodID(class com/tesk/treemodeleditor/TreeEditor, <init>, ()V)",
      "NewObject(class com/tesk/treemodeleditor/TreeEditor, <init>()V)", "fegetenv",
      "ExceptionOccurred() -> null", "fesetenv",
      // The schema path, as an operation of its own.
      "lock depth=2", "fegetenv", "ucnv_open(null)", "ucnv_toUChars(40, \"schema.xsd\")",
      "ucnv_fixFileSeparator(40)", "ucnv_close",
      // Once more the thread, this time for both bindings.
      "fegetenv", "TeskJVM::GetInstance", "AttachCurrentThread", "lock depth=3", "fegetenv",
      "fesetenv", "unlock depth=2", "fesetenv",
      "GetMethodID(class com/tesk/treemodeleditor/TreeEditor, setSchemaPath, "
      "(Ljava/lang/String;)V)",
      "NewString(\"schema.xsd\", 10)",
      "CallVoidMethod(TreeEditor@1, setSchemaPath(Ljava/lang/String;)V, \"schema.xsd\")",
      "fegetenv", "ExceptionOccurred() -> null", "fesetenv", "fesetenv", "unlock depth=1",
      "fesetenv", "unlock depth=0")));
  EXPECT_TRUE(editor.IsStarted());
  EXPECT_FALSE(editor.IsStartedHeadless());
}

TEST_F(TreeEditorLifecycleTest, StartEditorIgnoresItsEnvAndUsesThatOfTheThread) {
  FakePlatform::Get().env = jvm.NewEnv("thread");
  editor.StartEditor(jvm.NewEnv("argument"), "UTF-8", "s");
  const Events events = EventLog::Get().Texts(Source::kJni);
  EXPECT_FALSE(events.empty());
  for (const std::string& event : events) {
    EXPECT_NE(event.find(" on thread"), std::string::npos) << event;
  }
}

TEST_F(TreeEditorLifecycleTest, StartEditorWithoutACodepageHandsOnNoSchemaPath) {
  EXPECT_TRUE(editor.StartEditor(jvm.Env(), "", "schema.xsd"));
  EXPECT_TRUE(Happened(Start({})));
  EXPECT_TRUE(editor.IsStarted());
  EventLog::Get().Clear();

  EXPECT_TRUE(editor.SetCodepage("any"));
  EXPECT_TRUE(editor.SetSchemaPath("schema.xsd"));
  EXPECT_TRUE(Happened(Source::kJni, Seq("GetMethodID(class com/tesk/treemodeleditor/TreeEditor, "
                                         "setSchemaPath, (Ljava/lang/String;)V)",
                                         "NewString(\"schema.xsd\", 10)",
                                         "CallVoidMethod(TreeEditor@1, setSchemaPath("
                                         "Ljava/lang/String;)V, \"schema.xsd\")",
                                         "ExceptionOccurred() -> null")));
}

TEST_F(TreeEditorLifecycleTest, ASecondStartReplacesTheCodepageAndNothingElse) {
  editor.StartEditor(jvm.Env(), "UTF-8", "schema.xsd");
  EventLog::Get().Clear();
  EXPECT_TRUE(editor.StartEditor(jvm.NewEnv("other"), "", "other.xsd"));
  EXPECT_TRUE(Happened(TreeFrame()));
  // The codepage is empty now, so no schema path is handed on.
  EXPECT_FALSE(editor.SetSchemaPath("schema.xsd"));
  EXPECT_TRUE(Happened(TreeFrame()));

  EXPECT_TRUE(editor.StartEditor(jvm.Env(), "latin1", "other.xsd"));
  EXPECT_TRUE(Happened(TreeFrame()));
  EXPECT_TRUE(editor.SetSchemaPath("schema.xsd"));
}

TEST_F(TreeEditorLifecycleTest, StartEditorHandsTheSchemaPathToAHeadlessBindingToo) {
  StartHeadless();
  editor.StartEditor(jvm.Env(), "UTF-8", "s");
  EXPECT_TRUE(
      Happened(Start(Seq(Utf16Conversion("s"), AttachTree(2), SchemaPathCall("TreeEditor@1", "s"),
                         AttachTree(2), SchemaPathCall("TreeImager@1", "s")))));
}

TEST_F(TreeEditorLifecycleTest, StartEditorOfAJavaObjectThatThrowsIsTrueAndLogged) {
  const jthrowable exception = jvm.MakeThrowable("java/lang/IllegalStateException", "no screen");
  jvm.Fail("NewObject", 1, exception);
  EXPECT_TRUE(editor.StartEditor(jvm.Env(), "", ""));
  EXPECT_TRUE(Happened(
      TreeFrame(Attach(), "FindClass(com/tesk/treemodeleditor/TreeEditor)",
                "GetMethodID(class com/tesk/treemodeleditor/TreeEditor, <init>, ()V)",
                "NewObject(class com/tesk/treemodeleditor/TreeEditor, <init>()V)",
                PendingException(exception), Seq("lock depth=2", Guarded(), "unlock depth=1"))));
  EXPECT_TRUE(editor.IsStarted());
}

TEST_F(TreeEditorLifecycleTest, StartEditorOfAMissingClassIsTrueAndLogged) {
  const jthrowable missing = jvm.MakeThrowable("java/lang/NoClassDefFoundError", "TreeEditor");
  const jthrowable no_object = jvm.MakeThrowable("java/lang/NoClassDefFoundError", "null");
  jvm.Fail("FindClass", 1, missing);
  // The first call of the two readers of the class's own exception are the two before.
  jvm.Fail("NewObject", 3, no_object);
  EXPECT_TRUE(editor.StartEditor(jvm.Env(), "", ""));
  EXPECT_TRUE(Happened(TreeFrame(Attach(), "FindClass(com/tesk/treemodeleditor/TreeEditor)",
                                 PendingException(missing), "NewObject(null, null)",
                                 PendingException(no_object, 2),
                                 Seq("lock depth=2", Guarded(), "unlock depth=1"))));
  EXPECT_TRUE(editor.IsStarted());
}

TEST_F(TreeEditorLifecycleTest, StartEditorOnAThreadThatCannotBeAttachedIsTrueWithoutJava) {
  FakePlatform::Get().env = nullptr;
  EXPECT_TRUE(editor.StartEditor(jvm.Env(), "UTF-8", "s"));
  EXPECT_TRUE(Happened(Source::kJni, {}));
  EXPECT_TRUE(editor.IsStarted());
}

TEST_F(TreeEditorLifecycleTest, StartEditorWithoutAJvmIsTrueWithoutJava) {
  FakePlatform::Get().has_jvm = false;
  EXPECT_TRUE(editor.StartEditor(jvm.Env(), "UTF-8", "s"));
  EXPECT_TRUE(Happened(Source::kJni, {}));
  EXPECT_TRUE(editor.IsStarted());
}

TEST_F(TreeEditorLifecycleTest, StartEditorNeverStartsTheJvmNorAsksForIt) {
  FakePlatform::Get().started = false;
  editor.StartEditor(jvm.Env(), "UTF-8", "s");
  editor.StartEditorHeadless(jvm.Env());
  for (const std::string& event : EventLog::Get().Texts(Source::kPlatform)) {
    EXPECT_NE(event, "IsStarted");
    EXPECT_NE(event, "StartJVM");
  }
}

TEST_F(TreeEditorLifecycleTest, StartEditorWhoseAttachThrowsLeavesNoBinding) {
  FakePlatform::Get().on_attach = [] { throw JException("a", "b", "c"); };
  EXPECT_EQ(Thrown([this] { editor.StartEditor(jvm.Env(), "UTF-8", "s"); }), "JException(a, b, c)");
  EXPECT_TRUE(Happened(TreeFrame(Attach())));
  EXPECT_FALSE(editor.IsStarted());
}

TEST_F(TreeEditorLifecycleTest, StartEditorWithoutMemoryAttachesAndLeavesNoBinding) {
  AllocationProbe::Get().FailNew(1);
  EXPECT_EQ(Thrown([this] { editor.StartEditor(jvm.Env(), "UTF-8", "s"); }), "std::bad_alloc");
  EXPECT_TRUE(Happened(TreeFrame(Attach())));
  EXPECT_FALSE(editor.IsStarted());
}

TEST_F(TreeEditorLifecycleTest, StartEditorWhoseConstructionThrowsLeavesNoBinding) {
  jvm.On("NewObject", 1, [] { throw JException("a", "b", "c"); });
  EXPECT_EQ(Thrown([this] { editor.StartEditor(jvm.Env(), "UTF-8", "s"); }), "JException(a, b, c)");
  EXPECT_TRUE(
      Happened(TreeFrame(Attach(), "FindClass(com/tesk/treemodeleditor/TreeEditor)",
                         "GetMethodID(class com/tesk/treemodeleditor/TreeEditor, <init>, ()V)",
                         "NewObject(class com/tesk/treemodeleditor/TreeEditor, <init>()V)")));
  EXPECT_FALSE(editor.IsStarted());
}

TEST_F(TreeEditorLifecycleTest, StartEditorWhoseSchemaPathThrowsKeepsTheBinding) {
  EditorMethod(kSetSchemaPath, kTakesString).Runs([] { throw JException("a", "b", "c"); });
  EventLog::Get().Include(Source::kMemory);
  EXPECT_EQ(Thrown([this] { editor.StartEditor(jvm.Env(), "UTF-8", "s"); }), "JException(a, b, c)");
  const Events events = EventLog::Get().Texts();
  const Events tail(events.end() - 5, events.end());
  EXPECT_TRUE(SameEvents(
      Seq("delete[] buffer 1", "fesetenv", "unlock depth=1", "fesetenv", "unlock depth=0"), tail));
  EXPECT_TRUE(editor.IsStarted());
}

// ---- Starting and stopping the headless imager.

TEST_F(TreeEditorLifecycleTest, StartEditorHeadlessMakesTheBindingWithoutAnAttach) {
  EXPECT_TRUE(editor.StartEditorHeadless(jvm.Env()));
  EXPECT_TRUE(Happened(TreeFrame(BindingConstruction(kTreeImagerClass))));
  EXPECT_TRUE(editor.IsStartedHeadless());
  EXPECT_FALSE(editor.IsStarted());
}

TEST_F(TreeEditorLifecycleTest, StartEditorHeadlessUsesItsEnv) {
  JNIEnv* worker = jvm.NewEnv("worker");
  editor.StartEditorHeadless(worker);
  for (const std::string& event : EventLog::Get().Texts(Source::kJni)) {
    EXPECT_NE(event.find(" on worker"), std::string::npos) << event;
  }
  EXPECT_EQ(EnvAt(editor, kImagerOffset), worker);
}

TEST_F(TreeEditorLifecycleTest, StartEditorHeadlessHandsOnNoSchemaPath) {
  editor.SetCodepage("UTF-8");
  editor.StartEditor(jvm.Env(), "UTF-8", "s");
  EventLog::Get().Clear();
  editor.StartEditorHeadless(jvm.Env());
  EXPECT_TRUE(Happened(TreeFrame(BindingConstruction(kTreeImagerClass))));
}

TEST_F(TreeEditorLifecycleTest, ASecondHeadlessStartKeepsTheFirstBinding) {
  StartHeadless();
  const void* first = FieldAt<void*>(&editor, kImagerOffset);
  EXPECT_TRUE(editor.StartEditorHeadless(jvm.NewEnv("other")));
  EXPECT_TRUE(Happened(TreeFrame()));
  EXPECT_EQ(FieldAt<void*>(&editor, kImagerOffset), first);
  EXPECT_EQ(EnvAt(editor, kImagerOffset), jvm.Env());
}

TEST_F(TreeEditorLifecycleTest, StartEditorHeadlessOfAJavaObjectThatThrowsIsTrueAndLogged) {
  const jthrowable exception = jvm.MakeThrowable("java/lang/IllegalStateException", "no fonts");
  jvm.Fail("NewObject", 1, exception);
  EXPECT_TRUE(editor.StartEditorHeadless(jvm.Env()));
  EXPECT_TRUE(
      Happened(TreeFrame("FindClass(com/tesk/treemodeleditor/TreeImager)",
                         "GetMethodID(class com/tesk/treemodeleditor/TreeImager, <init>, ()V)",
                         "NewObject(class com/tesk/treemodeleditor/TreeImager, <init>()V)",
                         PendingException(exception))));
  EXPECT_TRUE(editor.IsStartedHeadless());
}

TEST_F(TreeEditorLifecycleTest, StartEditorHeadlessWithoutAnEnvIsTrueWithoutJava) {
  EXPECT_TRUE(editor.StartEditorHeadless(nullptr));
  EXPECT_TRUE(Happened(Source::kJni, {}));
  EXPECT_TRUE(editor.IsStartedHeadless());
}

TEST_F(TreeEditorLifecycleTest, StartEditorHeadlessThatThrowsLeavesNoBinding) {
  AllocationProbe::Get().FailNew(1);
  EXPECT_EQ(Thrown([this] { editor.StartEditorHeadless(jvm.Env()); }), "std::bad_alloc");
  EXPECT_TRUE(Happened(TreeFrame()));
  EXPECT_FALSE(editor.IsStartedHeadless());

  EventLog::Get().Clear();
  jvm.On("FindClass", 1, [] { throw JException("a", "b", "c"); });
  EXPECT_EQ(Thrown([this] { editor.StartEditorHeadless(jvm.Env()); }), "JException(a, b, c)");
  EXPECT_TRUE(Happened(TreeFrame("FindClass(com/tesk/treemodeleditor/TreeImager)")));
  EXPECT_FALSE(editor.IsStartedHeadless());
}

TEST_F(TreeEditorLifecycleTest, AskingWhetherAnEditorIsStartedAttachesNothing) {
  EXPECT_FALSE(editor.IsStarted());
  EXPECT_TRUE(Happened(TreeFrame()));
  EXPECT_FALSE(editor.IsStartedHeadless());
  EXPECT_TRUE(Happened(TreeFrame()));
}

TEST_F(TreeEditorLifecycleTest, StopHeadlessDeletesTheBinding) {
  PutPointer(editor, kImagerOffset, new WatchedImager(jvm.Env()));
  EventLog::Get().Clear();
  EventLog::Get().Include(Source::kMemory);
  editor.StopHeadless();
  EXPECT_TRUE(Happened(TreeFrame("~JTreeImager")));
  EXPECT_FALSE(editor.IsStartedHeadless());
}

TEST_F(TreeEditorLifecycleTest, StopHeadlessWithoutABindingDoesNothing) {
  StartInteractive();
  editor.StopHeadless();
  EXPECT_TRUE(Happened(TreeFrame()));
  EXPECT_FALSE(editor.IsStartedHeadless());
  EXPECT_TRUE(editor.IsStarted());
}

TEST_F(TreeEditorLifecycleTest, AStartAfterAStopMakesANewJavaObject) {
  StartHeadless();
  editor.StopHeadless();
  StartHeadless();
  EXPECT_TRUE(editor.IsStartedHeadless());
  long width = 0;
  long height = 0;
  EventLog::Get().Clear();
  editor.CalculateSizeHeadless("", "", width, height);
  const Events events = EventLog::Get().Texts(Source::kJni);
  bool second = false;
  for (const std::string& event : events) {
    second = second || event.find("CallObjectMethod(TreeImager@2, ") == 0;
  }
  EXPECT_TRUE(second);
}

TEST_F(TreeEditorLifecycleTest, TheBindingsStartAndStopIndependently) {
  StartInteractive();
  StartHeadless();
  EXPECT_TRUE(editor.IsStarted());
  EXPECT_TRUE(editor.IsStartedHeadless());
  editor.StopHeadless();
  EXPECT_TRUE(editor.IsStarted());
  EXPECT_FALSE(editor.IsStartedHeadless());
}

// ---- The env.

TEST_F(TreeEditorLifecycleTest, SetEnvPushesTheEnvIntoBothBindingsAndDoesNothingElse) {
  StartInteractive();
  StartHeadless();
  JNIEnv* worker = jvm.NewEnv("worker");
  editor.SetEnv(worker);
  EXPECT_TRUE(Happened({}));
  EXPECT_EQ(EnvAt(editor, kEditorOffset), worker);
  EXPECT_EQ(EnvAt(editor, kImagerOffset), worker);
}

TEST_F(TreeEditorLifecycleTest, SetEnvPushesTheEnvIntoTheOneBindingThatIsThere) {
  JNIEnv* worker = jvm.NewEnv("worker");
  editor.SetEnv(worker);
  StartHeadless();
  EXPECT_EQ(EnvAt(editor, kImagerOffset), jvm.Env());
  editor.SetEnv(worker);
  EXPECT_EQ(EnvAt(editor, kImagerOffset), worker);
  editor.StopHeadless();
  StartInteractive();
  editor.SetEnv(worker);
  EXPECT_EQ(EnvAt(editor, kEditorOffset), worker);
}

// ---- Codepage and schema path.

TEST_F(TreeEditorLifecycleTest, SetCodepage) {
  EXPECT_TRUE(editor.SetCodepage("UTF-8"));
  EXPECT_TRUE(Happened(TreeFrame()));
  EXPECT_FALSE(editor.SetCodepage(""));
  EXPECT_TRUE(Happened(TreeFrame()));
  // The first name is still there: the path is converted.
  EXPECT_FALSE(editor.SetSchemaPath("s"));
  EXPECT_TRUE(Happened(TreeFrame(Utf16Conversion("s"))));
}

TEST_F(TreeEditorLifecycleTest, SetCodepageTakesAnyName) {
  EXPECT_TRUE(editor.SetCodepage("no such codepage"));
  StartInteractive();
  editor.SetCodepage("no such codepage");
  EventLog::Get().Clear();
  // The name opens no converter.
  EXPECT_TRUE(editor.SetSchemaPath("caf\xC3\xA9"));
  EXPECT_TRUE(Happened(TreeFrame(Utf16Conversion("caf\xC3\xA9"), AttachTree(),
                                 SchemaPathCall("TreeEditor@1", "caf\xC3\xA9"))));
}

TEST_F(TreeEditorLifecycleTest, SetSchemaPathWithoutACodepageDoesNothing) {
  StartInteractive();
  StartHeadless();
  EXPECT_FALSE(editor.SetSchemaPath("s"));
  EXPECT_TRUE(Happened(TreeFrame()));
}

TEST_F(TreeEditorLifecycleTest, SetSchemaPathWithoutABindingConvertsThePath) {
  editor.SetCodepage("UTF-8");
  EventLog::Get().Clear();
  EventLog::Get().Include(Source::kMemory);
  EXPECT_FALSE(editor.SetSchemaPath("path"));
  EXPECT_TRUE(Happened(TreeFrame(Utf16Conversion("path", 1), "delete[] buffer 1")));
}

TEST_F(TreeEditorLifecycleTest, SetSchemaPathCallsBothBindings) {
  StartInteractive();
  StartHeadless();
  editor.SetCodepage("UTF-8");
  EventLog::Get().Clear();
  EventLog::Get().Include(Source::kMemory);
  EXPECT_TRUE(editor.SetSchemaPath("path"));
  EXPECT_TRUE(Happened(TreeFrame(Utf16Conversion("path", 1), AttachTree(),
                                 SchemaPathCall("TreeEditor@1", "path"), AttachTree(),
                                 SchemaPathCall("TreeImager@1", "path"), "delete[] buffer 1")));
}

TEST_F(TreeEditorLifecycleTest, SetSchemaPathCallsTheOneBindingThatIsThere) {
  StartHeadless();
  editor.SetCodepage("UTF-8");
  EventLog::Get().Clear();
  EXPECT_TRUE(editor.SetSchemaPath("path"));
  EXPECT_TRUE(Happened(
      TreeFrame(Utf16Conversion("path"), AttachTree(), SchemaPathCall("TreeImager@1", "path"))));
}

TEST_F(TreeEditorLifecycleTest, AnEmptySchemaPathIsAJavaStringOfLengthZero) {
  StartHeadless();
  editor.SetCodepage("UTF-8");
  EventLog::Get().Clear();
  EXPECT_TRUE(editor.SetSchemaPath(""));
  EXPECT_TRUE(
      Happened(TreeFrame(Utf16Conversion(""), AttachTree(), SchemaPathCall("TreeImager@1", ""))));
}

TEST_F(TreeEditorLifecycleTest, SetSchemaPathIsTrueWhateverJavaDoes) {
  StartInteractive();
  StartHeadless();
  editor.SetCodepage("UTF-8");
  EventLog::Get().Clear();
  const jthrowable exception = jvm.MakeThrowable("java/io/IOException", "no such schema");
  EditorMethod(kSetSchemaPath, kTakesString).Throws(exception);
  EXPECT_TRUE(editor.SetSchemaPath("s"));
  Events failed = SchemaPathCall("TreeEditor@1", "s");
  failed.resize(3);
  EXPECT_TRUE(
      Happened(TreeFrame(Utf16Conversion("s"), AttachTree(), failed, PendingException(exception),
                         AttachTree(), SchemaPathCall("TreeImager@1", "s"))));
}

TEST_F(TreeEditorLifecycleTest, SetSchemaPathLooksForAFailedStringOnlyAfterTheCall) {
  StartHeadless();
  editor.SetCodepage("UTF-8");
  EventLog::Get().Clear();
  const jthrowable memory = jvm.MakeThrowable("java/lang/OutOfMemoryError", "heap");
  jvm.Fail("NewString", 1, memory);
  EXPECT_TRUE(editor.SetSchemaPath("s"));
  EXPECT_TRUE(
      Happened(TreeFrame(Utf16Conversion("s"), AttachTree(),
                         "GetMethodID(class com/tesk/treemodeleditor/TreeImager, setSchemaPath, "
                         "(Ljava/lang/String;)V)",
                         "NewString(\"s\", 1)",
                         "CallVoidMethod(TreeImager@1, setSchemaPath(Ljava/lang/String;)V, null)",
                         PendingException(memory))));
}

TEST_F(TreeEditorLifecycleTest, SetSchemaPathOnAThreadThatCannotBeAttachedCallsNoJava) {
  StartInteractive();
  StartHeadless();
  editor.SetCodepage("UTF-8");
  FakePlatform::Get().env = nullptr;
  EventLog::Get().Clear();
  EXPECT_TRUE(editor.SetSchemaPath("s"));
  EXPECT_TRUE(Happened(Source::kJni, {}));
}

TEST_F(TreeEditorLifecycleTest, ExceptionsOutOfSetSchemaPathFreeTheBufferFirst) {
  StartInteractive();
  StartHeadless();
  editor.SetCodepage("UTF-8");
  EventLog::Get().Clear();
  EventLog::Get().Include(Source::kMemory);
  // Out of the second attach, when the interactive binding has its path already.
  int attached = 0;
  FakePlatform::Get().on_attach = [&attached] {
    if (++attached == 2) throw JException("a", "b", "c");
  };
  EXPECT_EQ(Thrown([this] { editor.SetSchemaPath("path"); }), "JException(a, b, c)");
  EXPECT_TRUE(Happened(TreeFrame(Utf16Conversion("path", 1), AttachTree(),
                                 SchemaPathCall("TreeEditor@1", "path"), Guarded(Attach()),
                                 "delete[] buffer 1")));
  FakePlatform::Get().on_attach = nullptr;

  AllocationProbe::Get().Reset();
  AllocationProbe::Get().FailNewArray(1);
  EXPECT_EQ(Thrown([this] { editor.SetSchemaPath("path"); }), "std::bad_alloc");
  EXPECT_TRUE(Happened(TreeFrame("ucnv_open(null)", "ucnv_close")));
}

// ---- The floating-point environment.

TEST_F(TreeEditorLifecycleTest, AGuardThatCouldNotSaveRestoresNothing) {
  FloatEnvProbe::Get().FailEverySave();
  editor.StartEditor(jvm.Env(), "UTF-8", "s");
  editor.StartEditorHeadless(jvm.Env());
  editor.SetSchemaPath("s");
  editor.SetCodepage("x");
  editor.IsStarted();
  editor.IsStartedHeadless();
  editor.StopHeadless();
  TreeEditor::GetInstance();
  for (const std::string& event : EventLog::Get().Texts(Source::kFloatEnv)) {
    EXPECT_EQ(event, "fegetenv fails");
  }
}

TEST_F(TreeEditorLifecycleTest, TheRoundingModeIsBackAfterAStart) {
  FakePlatform::Get().on_attach = [] { std::fesetround(FE_UPWARD); };
  jvm.Method(kTreeEditorClass, "<init>", "()V").Runs([] { std::fesetround(FE_DOWNWARD); });
  editor.StartEditor(jvm.Env(), "", "");
  EXPECT_EQ(std::fegetround(), FE_TONEAREST);
  jvm.Method(kTreeImagerClass, "<init>", "()V").Runs([] { std::fesetround(FE_DOWNWARD); });
  editor.StartEditorHeadless(jvm.Env());
  EXPECT_EQ(std::fegetround(), FE_TONEAREST);
}

}  // namespace
}  // namespace chartbridge::testing
