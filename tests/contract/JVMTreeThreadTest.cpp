// SPDX-License-Identifier: Apache-2.0
#include "tree/JVMTreeThread.h"

#include <cfenv>
#include <type_traits>

#include "bridge/JAccessor.h"
#include "platform/TeskJVM.h"
#include "tests/support/FakePlatform.h"
#include "tests/support/FieldAt.h"
#include "tests/support/FloatEnvProbe.h"
#include "tests/support/ObjectLayout.h"
#include "tests/support/Thrown.h"
#include "tests/support/TreeFixture.h"

namespace chartbridge::testing {
namespace {

// The scope lives below the lock of the operation that opens it.
class JVMTreeThreadTest : public TreeEditorFixture {
 protected:
  JNIEnv* EnvOf(std::size_t binding) const {
    const JAccessor* accessor = FieldAt<JAccessor*>(&editor, binding * sizeof(void*));
    return FieldAt<JNIEnv*>(accessor, sizeof(void*));
  }
};

TEST_F(JVMTreeThreadTest, AttachesTheThreadAndPointsTheEditorAtItInsideAGuard) {
  {
    const CriticalSection::Lock lock(TeskJVM::CritSect());
    EventLog::Get().Clear();
    const JVMTreeThread thread;
    EXPECT_TRUE(
        Happened(Seq("fegetenv", "TeskJVM::GetInstance", "AttachCurrentThread", "lock depth=2",
                     "fegetenv", "fesetenv", "unlock depth=1", "fesetenv")));
  }
  EXPECT_TRUE(Happened(Seq("unlock depth=0")));
}

TEST_F(JVMTreeThreadTest, PointsBothBindingsAtTheThread) {
  StartInteractive();
  StartHeadless();
  JNIEnv* worker = jvm.NewEnv("worker");
  FakePlatform::Get().env = worker;
  const JVMTreeThread thread;
  EXPECT_EQ(EnvOf(1), worker);
  EXPECT_EQ(EnvOf(2), worker);
}

TEST_F(JVMTreeThreadTest, ItsEndDoesNothing) {
  StartInteractive();
  JNIEnv* worker = jvm.NewEnv("worker");
  FakePlatform::Get().env = worker;
  {
    const JVMTreeThread thread;
    EventLog::Get().Clear();
  }
  EXPECT_TRUE(Happened({}));
  EXPECT_EQ(EnvOf(1), worker);
}

TEST_F(JVMTreeThreadTest, AThreadThatCannotBeAttachedLeavesTheBindingsWithoutAnEnv) {
  StartInteractive();
  FakePlatform::Get().env = nullptr;
  const JVMTreeThread thread;
  EXPECT_EQ(EnvOf(1), nullptr);
}

TEST_F(JVMTreeThreadTest, AnExceptionOfTheAttachRestoresTheGuardAndLeavesTheBindings) {
  StartInteractive();
  FakePlatform::Get().on_attach = [] { throw JException("a", "b", "c"); };
  EXPECT_EQ(Thrown([] { const JVMTreeThread thread; }), "JException(a, b, c)");
  EXPECT_TRUE(Happened(Guarded(Attach())));
  EXPECT_EQ(EnvOf(1), jvm.Env());
}

TEST_F(JVMTreeThreadTest, WhatTheAttachChangesIsBackBeforeTheScopeBegins) {
  FakePlatform::Get().on_attach = [] { std::fesetround(FE_UPWARD); };
  const JVMTreeThread thread;
  EXPECT_EQ(std::fegetround(), FE_TONEAREST);
}

TEST_F(JVMTreeThreadTest, AGuardThatCouldNotSaveRestoresNothing) {
  FloatEnvProbe::Get().Reset();
  FloatEnvProbe::Get().FailSave(2);
  const JVMTreeThread thread;
  // The save of the editor's own GetInstance fails here.
  EXPECT_TRUE(Happened(Source::kFloatEnv, Seq("fegetenv", "fegetenv fails", "fesetenv")));
}

TEST(JVMTreeThreadLayoutTest, HasNoFieldsAndOnlyItsDestructorIsVirtual) {
  EXPECT_EQ(sizeof(JVMTreeThread), sizeof(void*));
  EXPECT_EQ(VirtualSlots<JVMTreeThread>(), 2U);
  EXPECT_TRUE(std::has_virtual_destructor_v<JVMTreeThread>);
}

}  // namespace
}  // namespace chartbridge::testing
