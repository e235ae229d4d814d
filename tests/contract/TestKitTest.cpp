// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest-spi.h>

#include <cstddef>
#include <cstring>

#include "platform/CriticalSection.h"
#include "platform/TeskJVM.h"
#include "tests/support/ContractTest.h"
#include "tests/support/FakePlatform.h"
#include "tests/support/JniNames.h"
#include "tests/support/Steps.h"

// The kit itself: a test that compares events is worth as much as the events.
namespace chartbridge::testing {
namespace {

using TestKitTest = ContractTest;

TEST_F(TestKitTest, NamesStandAtTheirSlots) {
  const auto name = [](std::size_t offset) {
    return std::string(kJniNames[offset / sizeof(void*)]);
  };
  EXPECT_EQ(name(offsetof(JNINativeInterface_, GetVersion)), "GetVersion");
  EXPECT_EQ(name(offsetof(JNINativeInterface_, CallObjectMethodV)), "CallObjectMethodV");
  EXPECT_EQ(name(offsetof(JNINativeInterface_, GetStaticMethodID)), "GetStaticMethodID");
  EXPECT_EQ(name(offsetof(JNINativeInterface_, NewString)), "NewString");
  EXPECT_EQ(name(offsetof(JNINativeInterface_, SetByteArrayRegion)), "SetByteArrayRegion");
  EXPECT_EQ(name(offsetof(JNINativeInterface_, GetModule)), "GetModule");
}

TEST_F(TestKitTest, AFunctionOutsideTheModelFailsTheTestByItsName) {
  static JNIEnv* env = nullptr;
  env = jvm.Env();
  EXPECT_NONFATAL_FAILURE(env->GetVersion(), "GetVersion");
  EXPECT_NONFATAL_FAILURE(env->MonitorEnter(nullptr), "MonitorEnter");
  EXPECT_NONFATAL_FAILURE(EXPECT_EQ(env->GetDoubleField(nullptr, nullptr), 0.0), "GetDoubleField");
  EXPECT_NONFATAL_FAILURE(env->CallObjectMethodA(nullptr, nullptr, nullptr), "CallObjectMethodA");
  EXPECT_TRUE(Happened(Seq("GetVersion(unscripted)", "MonitorEnter(unscripted)",
                           "GetDoubleField(unscripted)", "CallObjectMethodA(unscripted)")));
}

TEST_F(TestKitTest, NoSlotIsEmpty) {
  const void* slots[kJniSlots];
  std::memcpy(slots, jvm.Env()->functions, sizeof slots);
  for (std::size_t slot = kReservedJniSlots; slot < kJniSlots; ++slot) {
    EXPECT_NE(slots[slot], nullptr) << kJniNames[slot];
  }
}

TEST_F(TestKitTest, AWrongReferenceFailsTheTest) {
  static FakeJvm* fake = nullptr;
  fake = &jvm;
  static int stranger = 0;
  EXPECT_NONFATAL_FAILURE(fake->Env()->GetArrayLength(nullptr);
                          fake->Describe(reinterpret_cast<jobject>(&stranger)),
                          "a reference that this JVM never gave");
}

TEST_F(TestKitTest, AReleaseOfForeignMemoryFailsTheTest) {
  static JNIEnv* env = nullptr;
  static jbyteArray array = nullptr;
  env = jvm.Env();
  array = jvm.MakeBytes("a", "x");
  static jbyte foreign = 0;
  EXPECT_NONFATAL_FAILURE(env->ReleaseByteArrayElements(array, &foreign, JNI_ABORT),
                          "memory that this JVM did not give");
}

TEST_F(TestKitTest, AMismatchShowsBothListsAndTheFirstDifference) {
  const ::testing::AssertionResult result = SameEvents(Seq("a", "b", "c"), Seq("a", "x"));
  EXPECT_FALSE(result);
  const std::string message = result.message();
  EXPECT_NE(message.find("differ from number 1 on"), std::string::npos) << message;
  EXPECT_NE(message.find(">>> 1: b"), std::string::npos) << message;
  EXPECT_NE(message.find(">>> 1: x"), std::string::npos) << message;
  EXPECT_FALSE(SameEvents(Seq("a"), Seq("a", "b")));
  EXPECT_FALSE(SameEvents(Seq("a", "b"), Seq("a")));
  EXPECT_TRUE(SameEvents(Seq("a", "b"), Seq("a", "b")));
}

TEST_F(TestKitTest, ArgumentsAreReadBySignature) {
  jvm.Method("x/Y", "all", "(ZBCSIJFDLjava/lang/String;[B[[I)V");
  const jobject receiver = jvm.MakeObject("x/Y");
  jvm.Env()->CallVoidMethod(
      receiver, jvm.MethodID("x/Y", "all", "(ZBCSIJFDLjava/lang/String;[B[[I)V"), JNI_TRUE, -1, 65,
      -2, 3, jlong{1} << 40, 0.5, 1.25, jvm.MakeString("s"), jvm.MakeBytes("b", "bb"), nullptr);
  EXPECT_TRUE(Happened(
      Seq("CallVoidMethod(Y@1, all(ZBCSIJFDLjava/lang/String;[B[[I)V, true, -1, 65, -2, 3, "
          "1099511627776, 0.5, 1.25, \"s\", byte[] b \"bb\", null)")));
}

TEST_F(TestKitTest, CallsAnswerByTheirType) {
  JNIEnv* env = jvm.Env();
  const jobject receiver = jvm.MakeObject("x/Y");
  jvm.Method("x/Y", "z", "()Z").ReturnsBoolean(true);
  jvm.Method("x/Y", "j", "()J").Does([](const FakeCall&) {
    jvalue value{};
    value.j = jlong{1} << 40;
    return value;
  });
  EXPECT_EQ(env->CallBooleanMethod(receiver, jvm.MethodID("x/Y", "z", "()Z")), JNI_TRUE);
  EXPECT_EQ(env->CallLongMethod(receiver, jvm.MethodID("x/Y", "j", "()J")), jlong{1} << 40);
  EXPECT_EQ(env->CallIntMethod(receiver, jvm.MethodID("x/Y", "i", "()I")), 0);
}

TEST_F(TestKitTest, NullReceiversAndMethodsLeaveAnExceptionPending) {
  JNIEnv* env = jvm.Env();
  EXPECT_EQ(env->CallObjectMethod(nullptr, nullptr), nullptr);
  ASSERT_NE(jvm.Pending(), nullptr);
  EXPECT_EQ(jvm.Describe(jvm.Pending()), "NullPointerException@1");
  jvm.SetPending(nullptr);
  EXPECT_EQ(env->NewObject(nullptr, nullptr), nullptr);
  EXPECT_EQ(jvm.Describe(jvm.Pending()), "NoClassDefFoundError@1");
  jvm.SetPending(nullptr);
  EXPECT_EQ(env->FindClass("no/Such"), nullptr);
  EXPECT_EQ(jvm.Describe(jvm.Pending()), "NoClassDefFoundError@2");
}

TEST_F(TestKitTest, ForbiddenCallsAreNotedOnDemand) {
  jvm.NoteForbiddenCalls();
  jvm.SetPending(jvm.MakeThrowable("java/io/IOException", "x"));
  jvm.Env()->NewByteArray(1);
  jvm.Env()->ExceptionOccurred();
  jvm.Env()->ExceptionClear();
  jvm.Env()->NewByteArray(1);
  EXPECT_TRUE(
      Happened(Seq("NewByteArray(1) [exception pending]", "ExceptionOccurred() -> IOException@1",
                   "ExceptionClear()", "NewByteArray(1)")));
}

TEST_F(TestKitTest, ElementsGoBackAsTheModeSays) {
  JNIEnv* env = jvm.Env();
  const jbyteArray array = jvm.MakeBytes("a", "abc");
  jbyte* elements = env->GetByteArrayElements(array, nullptr);
  elements[0] = 'x';
  env->ReleaseByteArrayElements(array, elements, JNI_COMMIT);
  EXPECT_EQ(ObjectOf(array)->bytes, "xbc");
  elements[1] = 'y';
  env->ReleaseByteArrayElements(array, elements, JNI_ABORT);
  EXPECT_EQ(ObjectOf(array)->bytes, "xbc");
  elements = env->GetByteArrayElements(array, nullptr);
  elements[2] = 'z';
  env->ReleaseByteArrayElements(array, elements, 0);
  EXPECT_EQ(ObjectOf(array)->bytes, "xbz");
  EXPECT_EQ(jvm.UnreleasedBuffers(), 0U);
}

TEST_F(TestKitTest, AReleaseAgainstAnotherArrayIsNamed) {
  JNIEnv* env = jvm.Env();
  const jbyteArray array = jvm.MakeBytes("a", "abc");
  jbyte* elements = env->GetByteArrayElements(array, nullptr);
  EventLog::Get().Clear();
  env->ReleaseByteArrayElements(jvm.MakeBytes("b", "d"), elements, JNI_ABORT);
  EXPECT_TRUE(Happened(Seq("ReleaseByteArrayElements(byte[] b, elements of byte[] a, JNI_ABORT)")));
}

TEST_F(TestKitTest, LongArraysAndObjectArraysAnswer) {
  JNIEnv* env = jvm.Env();
  const jlongArray longs = jvm.MakeLongs("size", {120, 0});
  EXPECT_EQ(env->GetArrayLength(longs), 2);
  jlong* elements = env->GetLongArrayElements(longs, nullptr);
  EXPECT_EQ(elements[0], 120);
  env->ReleaseLongArrayElements(longs, elements, JNI_ABORT);
  const jobjectArray names = jvm.MakeObjects("names", {jvm.MakeString("one"), nullptr});
  EXPECT_EQ(env->GetArrayLength(names), 2);
  EXPECT_EQ(env->GetObjectArrayElement(names, 1), nullptr);
  env->DeleteGlobalRef(names);
  EXPECT_TRUE(
      Happened(Seq("GetArrayLength(long[] size)", "GetLongArrayElements(long[] size)",
                   "ReleaseLongArrayElements(long[] size, elements, JNI_ABORT)",
                   "GetArrayLength(Object[] names)", "GetObjectArrayElement(Object[] names, 1)",
                   "DeleteGlobalRef(Object[] names)")));
}

TEST_F(TestKitTest, MapsIterateInOrder) {
  JNIEnv* env = jvm.Env();
  const jobject map = jvm.MakeMap({{"b", jvm.MakeBytes("v1", "1")}, {"a", nullptr}});
  const jobject set = env->CallObjectMethod(
      map, jvm.MethodID("java/util/HashMap", "entrySet", "()Ljava/util/Set;"));
  const jobject iterator = env->CallObjectMethod(
      set, jvm.MethodID("java/util/Set", "iterator", "()Ljava/util/Iterator;"));
  const jmethodID has_next = jvm.MethodID("java/util/Iterator", "hasNext", "()Z");
  const jmethodID next = jvm.MethodID("java/util/Iterator", "next", "()Ljava/lang/Object;");
  std::string keys;
  while (env->CallBooleanMethod(iterator, has_next) == JNI_TRUE) {
    const jobject entry = env->CallObjectMethod(iterator, next);
    const jmethodID get_key =
        env->GetMethodID(env->GetObjectClass(entry), "getKey", "()Ljava/lang/Object;");
    const jobject key = env->CallObjectMethod(entry, get_key);
    const auto bytes = static_cast<jbyteArray>(env->CallObjectMethod(
        key, env->GetMethodID(env->FindClass("java/lang/String"), "getBytes", "()[B")));
    keys += ObjectOf(bytes)->bytes;
  }
  EXPECT_EQ(keys, "ba");
}

TEST_F(TestKitTest, TheNthCallFails) {
  JNIEnv* env = jvm.Env();
  jvm.Fail("NewByteArray", 2);
  EXPECT_NE(env->NewByteArray(1), nullptr);
  EXPECT_EQ(env->NewByteArray(1), nullptr);
  EXPECT_NE(env->NewByteArray(1), nullptr);
}

TEST_F(TestKitTest, TheLockIsRecursiveAndCountsItsDepth) {
  {
    const CriticalSection::Lock outer(TeskJVM::CritSect());
    const CriticalSection::Lock inner(TeskJVM::CritSect());
    EXPECT_EQ(FakePlatform::LockDepth(), 2);
  }
  EXPECT_TRUE(Happened(Seq("lock depth=1", "lock depth=2", "unlock depth=1", "unlock depth=0")));
}

}  // namespace
}  // namespace chartbridge::testing
