// SPDX-License-Identifier: Apache-2.0
// What the end of a local frame gives back, on a real JVM under the guard, with stand-ins for the
// Java classes.
#include "host/LocalFrame.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <cstdlib>
#include <cstring>
#include <new>
#include <string>
#include <thread>
#include <vector>

#include "chart/ViZEditor.h"
#include "guard/jniguard.h"
#include "host/DebugOutput.h"
#include "host/JvmSettings.h"
#include "platform/TeskJVM.h"

namespace {

// While it is set, this thread gets no memory, here and in the libraries.
thread_local bool noMemory = false;

void* Memory(std::size_t size) { return noMemory ? nullptr : std::malloc(size == 0 ? 1 : size); }

}  // namespace

void* operator new(std::size_t size) {
  void* memory = Memory(size);
  if (memory == nullptr) throw std::bad_alloc();
  return memory;
}

void* operator new(std::size_t size, const std::nothrow_t&) noexcept { return Memory(size); }

void operator delete(void* memory) noexcept { std::free(memory); }

void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }

namespace chartbridge {
namespace {

class LocalFrameOnJvm : public testing::Test {
 protected:
  static void SetUpTestSuite() {
    JvmSettings settings;
    settings.classPath = {CHARTBRIDGE_TEST_JAR};
    settings.options = {"-Xmx256m"};
    SetJvmSettings(settings);
    ASSERT_TRUE(TeskJVM::GetInstance()->StartJVM());
    ViZEditor::GetInstance()->StartEditorHeadless(TeskJVM::GetInstance()->GetEnv());
  }

  void SetUp() override {
    SetDebugOutput([this](const std::string& text) { told.push_back(text); });
  }
  void TearDown() override { SetDebugOutput(nullptr); }

  // Each keeps the elements of one array.
  static void RenderFromBuffer() {
    const unsigned char data[4] = {'d', 'a', 't', 'a'};
    std::string picture;
    std::string unused;
    EXPECT_TRUE(ViZEditor::GetInstance()->RenderImageToMemoryHeadless(
        "blocks picture", data, sizeof data, ViZEditor::IMAGE_PNG, 100, picture, unused, unused, "",
        "", "", "", false));
    EXPECT_EQ(picture, "picture");
  }
  static void Embed() {
    unsigned char histogram[4] = {'d', 'a', 't', 'a'};
    EXPECT_EQ(ViZEditor::GetInstance()->EmbedHistogramInGraph("a", "b", histogram, 4, 3),
              "abdirect:data3");
  }

  JNIEnv* const env = TeskJVM::GetInstance()->GetEnv();
  std::vector<std::string> told;
};

jbyteArray Bytes(JNIEnv* env, jsize length) {
  const jbyteArray array = env->NewByteArray(length);
  std::vector<jbyte> values(static_cast<std::size_t>(length), 7);
  env->SetByteArrayRegion(array, 0, length, values.data());
  return array;
}

jbyte FirstByte(JNIEnv* env, jbyteArray array) {
  jbyte value = 0;
  env->GetByteArrayRegion(array, 0, 1, &value);
  return value;
}

TEST_F(LocalFrameOnJvm, OperationsKeepTheirElementsWithoutAFrame) {
  const unsigned long long mark = jniguard_mark();
  RenderFromBuffer();
  RenderFromBuffer();
  Embed();
  EXPECT_EQ(jniguard_free_unreleased(mark), 3U);
  EXPECT_EQ(jniguard_free_unreleased(mark), 0U);
}

TEST_F(LocalFrameOnJvm, GivesBackWhatOperationsKeep) {
  const unsigned long long mark = jniguard_mark();
  for (int i = 0; i < 1000; ++i) {
    const LocalFrame frame;
    RenderFromBuffer();
    Embed();
  }
  EXPECT_EQ(jniguard_free_unreleased(mark), 0U);
  EXPECT_TRUE(told.empty());
}

TEST_F(LocalFrameOnJvm, AnInnerFrameGivesBackItsOwn) {
  const unsigned long long mark = jniguard_mark();
  jbyteArray array = Bytes(env, 100);
  jbyte* before = env->GetByteArrayElements(array, nullptr);
  {
    const LocalFrame outer;
    jbyte* between = env->GetByteArrayElements(array, nullptr);
    Embed();
    {
      const LocalFrame inner;
      Embed();
    }
    // Still out: an inner frame's end is no word about what the outer one uses.
    between[0] = 8;
    env->ReleaseByteArrayElements(array, between, 0);
    EXPECT_EQ(FirstByte(env, array), 8);
  }
  before[0] = 9;
  env->ReleaseByteArrayElements(array, before, 0);
  EXPECT_EQ(FirstByte(env, array), 9);
  EXPECT_EQ(jniguard_free_unreleased(mark), 0U);
  EXPECT_EQ(jniguard_count(JNIGUARD_ELEMENTS_UNKNOWN), 0U);
}

TEST_F(LocalFrameOnJvm, AFrameEndsInTheMiddleOfAnother) {
  const unsigned long long mark = jniguard_mark();
  {
    const LocalFrame outer;
    Embed();
    { const LocalFrame inner; }
    // The inner one left it.
    EXPECT_EQ(jniguard_free_unreleased(mark), 1U);
  }
}

TEST_F(LocalFrameOnJvm, OtherThreadsKeepTheirs) {
  std::atomic<int> step{0};
  std::atomic<bool> right{false};
  std::thread other([&] {
    JNIEnv* own = TeskJVM::GetInstance()->GetEnv();
    jbyteArray array = Bytes(own, 64);
    jbyte* elements = own->GetByteArrayElements(array, nullptr);
    step = 1;
    while (step == 1) std::this_thread::yield();
    elements[0] = 11;
    own->ReleaseByteArrayElements(array, elements, 0);
    right = FirstByte(own, array) == 11;
  });
  {
    const LocalFrame frame;
    while (step == 0) std::this_thread::yield();
    Embed();
  }
  step = 2;
  other.join();
  EXPECT_TRUE(right);
  EXPECT_EQ(jniguard_count(JNIGUARD_ELEMENTS_UNKNOWN), 0U);
}

TEST_F(LocalFrameOnJvm, WhatAnotherThreadReleasedIsGone) {
  jbyteArray array = Bytes(env, 64);
  auto global = static_cast<jbyteArray>(env->NewGlobalRef(array));
  const unsigned long long mark = jniguard_mark();
  jbyte* elements = env->GetByteArrayElements(global, nullptr);
  std::thread([&] {
    JNIEnv* own = TeskJVM::GetInstance()->GetEnv();
    own->ReleaseByteArrayElements(global, elements, JNI_ABORT);
  }).join();
  EXPECT_EQ(jniguard_free_unreleased(mark), 0U);
  env->DeleteGlobalRef(global);
}

TEST_F(LocalFrameOnJvm, TextsThatAreNotReleasedAreGivenBackToo) {
  const unsigned long long mark = jniguard_mark();
  {
    const LocalFrame frame;
    env->GetStringChars(env->NewStringUTF("text"), nullptr);
    env->GetStringUTFChars(env->NewStringUTF("text"), nullptr);
  }
  EXPECT_EQ(jniguard_free_unreleased(mark), 0U);
}

TEST_F(LocalFrameOnJvm, APendingExceptionIsClearedAndTold) {
  {
    const LocalFrame frame;
    env->ThrowNew(env->FindClass("java/lang/IllegalStateException"), "left behind");
  }
  EXPECT_EQ(env->ExceptionCheck(), JNI_FALSE);
  EXPECT_EQ(told, (std::vector<std::string>{
                      "LocalFrame: a Java exception was still pending and is cleared: "
                      "java.lang.IllegalStateException: left behind"}));
}

// The operation records the exception by asking it for its text, which throws the next one.
TEST_F(LocalFrameOnJvm, AnExceptionThatThrowsWhenItIsReadIsClearedAndTold) {
  const auto render = [] {
    unsigned int unused = 0;
    std::string picture;
    return ViZEditor::GetInstance()->RenderImageToMemoryHeadless(
        "throw unspeakable", "", unused, ViZEditor::IMAGE_PNG, 100, "", "", "", "", picture);
  };
  EXPECT_FALSE(render());
  EXPECT_EQ(env->ExceptionCheck(), JNI_TRUE);
  env->ExceptionClear();
  {
    const LocalFrame frame;
    EXPECT_FALSE(render());
  }
  EXPECT_EQ(env->ExceptionCheck(), JNI_FALSE);
  ASSERT_EQ(told.size(), 1U);
  EXPECT_NE(told[0].find("java.lang.IllegalStateException: there are no words"), std::string::npos)
      << told[0];
}

TEST_F(LocalFrameOnJvm, AnExceptionWithoutATextIsToldByItsClass) {
  {
    const LocalFrame frame;
    const jclass type = env->FindClass("com/tesk/charteditor/ChartImager$Unspeakable");
    const jmethodID make = env->GetMethodID(type, "<init>", "()V");
    env->Throw(static_cast<jthrowable>(env->NewObject(type, make)));
  }
  EXPECT_EQ(env->ExceptionCheck(), JNI_FALSE);
  EXPECT_EQ(told, (std::vector<std::string>{
                      "LocalFrame: a Java exception was still pending and is cleared: "
                      "com.tesk.charteditor.ChartImager$Unspeakable, whose text cannot be had"}));
}

TEST_F(LocalFrameOnJvm, AnOutputThatThrowsEndsNothing) {
  SetDebugOutput([](const std::string&) { throw std::string("the host's log is full"); });
  {
    const LocalFrame frame;
    env->ThrowNew(env->FindClass("java/lang/IllegalStateException"), "left behind");
  }
  EXPECT_EQ(env->ExceptionCheck(), JNI_FALSE);
}

TEST_F(LocalFrameOnJvm, DoesNothingWithoutMemory) {
  noMemory = true;
  bool isActive = true;
  {
    const LocalFrame frame;
    isActive = frame.IsActive();
  }
  noMemory = false;
  EXPECT_FALSE(isActive);
}

TEST_F(LocalFrameOnJvm, EndsWithoutMemory) {
  const unsigned long long mark = jniguard_mark();
  // So long that the end of the frame looks for files of Java's.
  std::this_thread::sleep_for(std::chrono::milliseconds(1100));
  {
    const LocalFrame frame;
    Embed();
    env->ThrowNew(env->FindClass("java/lang/IllegalStateException"), "left behind");
    noMemory = true;
  }
  noMemory = false;
  EXPECT_EQ(env->ExceptionCheck(), JNI_FALSE);
  EXPECT_EQ(jniguard_free_unreleased(mark), 0U);
}

}  // namespace
}  // namespace chartbridge
