// SPDX-License-Identifier: Apache-2.0
#include <cfenv>
#include <memory>

#include "chart/ViZEditor.h"
#include "tests/support/AllocationProbe.h"
#include "tests/support/ContractTest.h"
#include "tests/support/FakePlatform.h"
#include "tests/support/FieldAt.h"
#include "tests/support/FloatEnvProbe.h"
#include "tests/support/Steps.h"
#include "tests/support/Thrown.h"

namespace chartbridge::testing {
namespace {

constexpr char kClass[] = "com/tesk/charteditor/ChartImager";

class ViZEditorLifecycleTest : public ContractTest {
 protected:
  ViZEditorLifecycleTest() { jvm.ClassWithConstructor(kClass); }

  ViZEditor editor;
};

Events LockOnly() { return Seq("lock depth=1", "unlock depth=0"); }

TEST_F(ViZEditorLifecycleTest, StartGuardsThenLocksAndMakesTheBinding) {
  EXPECT_TRUE(editor.StartEditorHeadless(jvm.Env()));
  EXPECT_TRUE(Happened(Guarded("lock depth=1", "FindClass(com/tesk/charteditor/ChartImager)",
                               "GetMethodID(class com/tesk/charteditor/ChartImager, <init>, ()V)",
                               "NewObject(class com/tesk/charteditor/ChartImager, <init>()V)",
                               NoPendingException(), "unlock depth=0")));
}

TEST_F(ViZEditorLifecycleTest, StartUsesTheEnvThatItIsGiven) {
  editor.StartEditorHeadless(jvm.NewEnv("worker"));
  const Events events = EventLog::Get().Texts(Source::kJni);
  EXPECT_EQ(events.size(), 4U);
  for (const std::string& event : events) {
    EXPECT_NE(event.find(" on worker"), std::string::npos) << event;
  }
}

TEST_F(ViZEditorLifecycleTest, ASecondStartKeepsTheFirstBinding) {
  editor.StartEditorHeadless(jvm.Env());
  EventLog::Get().Clear();
  EXPECT_TRUE(editor.StartEditorHeadless(jvm.NewEnv("worker")));
  EXPECT_TRUE(Happened(Guarded(LockOnly())));
  EXPECT_TRUE(editor.IsStartedHeadless());
}

TEST_F(ViZEditorLifecycleTest, IsStartedFollowsStartAndStop) {
  EXPECT_FALSE(editor.IsStartedHeadless());
  editor.StartEditorHeadless(jvm.Env());
  EXPECT_TRUE(editor.IsStartedHeadless());
  editor.StopHeadless();
  EXPECT_FALSE(editor.IsStartedHeadless());
}

TEST_F(ViZEditorLifecycleTest, IsStartedOnlyLocks) {
  editor.IsStartedHeadless();
  EXPECT_TRUE(Happened(LockOnly()));
}

TEST_F(ViZEditorLifecycleTest, StopOnlyLocksAndReleasesNothingInJava) {
  editor.StartEditorHeadless(jvm.Env());
  EventLog::Get().Clear();
  editor.StopHeadless();
  EXPECT_TRUE(Happened(LockOnly()));
}

TEST_F(ViZEditorLifecycleTest, StopTwiceIsHarmless) {
  editor.StartEditorHeadless(jvm.Env());
  editor.StopHeadless();
  EventLog::Get().Clear();
  editor.StopHeadless();
  EXPECT_TRUE(Happened(LockOnly()));
  EXPECT_FALSE(editor.IsStartedHeadless());
}

TEST_F(ViZEditorLifecycleTest, StartAfterStopMakesANewObject) {
  editor.StartEditorHeadless(jvm.Env());
  editor.StopHeadless();
  EventLog::Get().Clear();
  EXPECT_TRUE(editor.StartEditorHeadless(jvm.NewEnv("worker")));
  EXPECT_EQ(EventLog::Get().Texts(Source::kJni).size(), 4U);
  EXPECT_TRUE(editor.IsStartedHeadless());
}

TEST_F(ViZEditorLifecycleTest, SetEnvGuardsWithoutALock) {
  editor.StartEditorHeadless(jvm.Env());
  EventLog::Get().Clear();
  editor.SetEnv(jvm.NewEnv("worker"));
  EXPECT_TRUE(Happened(Guarded()));
}

TEST_F(ViZEditorLifecycleTest, SetEnvBeforeStartDoesNothing) {
  editor.SetEnv(jvm.NewEnv("worker"));
  EXPECT_TRUE(Happened(Guarded()));
  EXPECT_FALSE(editor.IsStartedHeadless());
}

TEST_F(ViZEditorLifecycleTest, SetCodepageOnlyLocks) {
  EXPECT_TRUE(editor.SetCodepage("ISO-8859-1"));
  EXPECT_TRUE(Happened(LockOnly()));
  EXPECT_FALSE(editor.SetCodepage(""));
  EXPECT_TRUE(Happened(LockOnly()));
}

TEST_F(ViZEditorLifecycleTest, AnyCodepageNameIsStoredUnchecked) {
  EXPECT_TRUE(editor.SetCodepage("no-such-codepage"));
  EXPECT_TRUE(editor.SetCodepage(" "));
  EXPECT_TRUE(Happened(Source::kIcu, {}));
}

TEST_F(ViZEditorLifecycleTest, AnEmptyCodepageKeepsTheStoredName) {
  // The name is the second field, after the virtual pointer and the binding, and nothing reads it.
  const auto& codepage = FieldReferenceAt<std::string>(&editor, 2 * sizeof(void*));
  EXPECT_EQ(codepage, "");
  editor.SetCodepage("ISO-8859-1");
  EXPECT_EQ(codepage, "ISO-8859-1");
  EXPECT_FALSE(editor.SetCodepage(""));
  EXPECT_EQ(codepage, "ISO-8859-1");
  editor.SetCodepage("UTF-8");
  EXPECT_EQ(codepage, "UTF-8");
}

TEST_F(ViZEditorLifecycleTest, TheDestructorTakesNoLockAndDropsTheBinding) {
  auto started = std::make_unique<ViZEditor>();
  started->StartEditorHeadless(jvm.Env());
  EventLog::Get().Clear();
  started.reset();
  EXPECT_TRUE(Happened({}));
}

TEST_F(ViZEditorLifecycleTest, AJavaFailureInStartIsLoggedAndTrue) {
  const jthrowable exception = jvm.MakeThrowable("java/lang/IllegalStateException", "no fonts");
  jvm.Fail("NewObject", 1, exception);
  EXPECT_TRUE(editor.StartEditorHeadless(jvm.Env()));
  EXPECT_TRUE(Happened(Guarded("lock depth=1", "FindClass(com/tesk/charteditor/ChartImager)",
                               "GetMethodID(class com/tesk/charteditor/ChartImager, <init>, ()V)",
                               "NewObject(class com/tesk/charteditor/ChartImager, <init>()V)",
                               PendingException(exception), "unlock depth=0")));
  EXPECT_TRUE(editor.IsStartedHeadless());
}

TEST_F(ViZEditorLifecycleTest, AStartThatThrowsReleasesLockAndGuardInOrder) {
  jvm.On("NewObject", 1, [] { throw JException("a", "b", "c"); });
  EXPECT_EQ(Thrown([this] { editor.StartEditorHeadless(jvm.Env()); }), "JException(a, b, c)");
  EXPECT_TRUE(Happened(Guarded("lock depth=1", "FindClass(com/tesk/charteditor/ChartImager)",
                               "GetMethodID(class com/tesk/charteditor/ChartImager, <init>, ()V)",
                               "NewObject(class com/tesk/charteditor/ChartImager, <init>()V)",
                               "unlock depth=0")));
  EXPECT_FALSE(editor.IsStartedHeadless());
}

TEST_F(ViZEditorLifecycleTest, AStartWithoutMemoryReleasesLockAndGuardInOrder) {
  AllocationProbe::Get().FailNew(1);
  EXPECT_EQ(Thrown([this] { editor.StartEditorHeadless(jvm.Env()); }), "std::bad_alloc");
  EXPECT_TRUE(Happened(Guarded(LockOnly())));
  EXPECT_FALSE(editor.IsStartedHeadless());
}

TEST_F(ViZEditorLifecycleTest, AStartWhoseGuardCannotSaveRestoresNothing) {
  FloatEnvProbe::Get().FailEverySave();
  EXPECT_TRUE(editor.StartEditorHeadless(jvm.Env()));
  EXPECT_TRUE(
      Happened(Seq("fegetenv fails", "lock depth=1", "FindClass(com/tesk/charteditor/ChartImager)",
                   "GetMethodID(class com/tesk/charteditor/ChartImager, <init>, ()V)",
                   "NewObject(class com/tesk/charteditor/ChartImager, <init>()V)", "fegetenv fails",
                   "ExceptionOccurred() -> null", "unlock depth=0")));
}

TEST_F(ViZEditorLifecycleTest, TheRoundingModeIsBackAfterStart) {
  jvm.Method(kClass, "<init>", "()V").Runs([] { std::fesetround(FE_UPWARD); });
  editor.StartEditorHeadless(jvm.Env());
  EXPECT_EQ(std::fegetround(), FE_TONEAREST);
}

TEST_F(ViZEditorLifecycleTest, TheRoundingModeIsBackAfterAStartThatThrows) {
  jvm.On("NewObject", 1, [] {
    std::fesetround(FE_UPWARD);
    throw std::bad_alloc();
  });
  EXPECT_EQ(Thrown([this] { editor.StartEditorHeadless(jvm.Env()); }), "std::bad_alloc");
  EXPECT_EQ(std::fegetround(), FE_TONEAREST);
}

TEST_F(ViZEditorLifecycleTest, StartNeitherAttachesNorStartsTheJvm) {
  editor.StartEditorHeadless(jvm.Env());
  EXPECT_TRUE(Happened(Source::kPlatform, LockOnly()));
}

TEST_F(ViZEditorLifecycleTest, TheImageMapTypeIsSeven) {
  EXPECT_EQ(static_cast<int>(ViZEditor::IMAGE_MAP), 7);
  EXPECT_EQ(static_cast<int>(static_cast<ViZEditor::IMAGE_TYPE>(99)), 99);
}

}  // namespace
}  // namespace chartbridge::testing
