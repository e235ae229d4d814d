// SPDX-License-Identifier: Apache-2.0
// The guard's texts of strings over a JVM that gives nothing but units: JNI promises no more.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

#include "guard/ElementBuffers.h"
#include "guard/Guards.h"
#include "guard/ObtainedBuffers.h"
#include "guard/OwnEnv.h"
#include "guard/jniguard.h"

namespace chartbridge {
namespace {

// The JVM's one string.
std::u16string content;
int releasedByJvm = 0;
// What the JVM says that the string has, when that is not its content.
jsize told = 0;

// Every character of these tests is one byte of modified UTF-8.
jsize Length(JNIEnv*, jstring) { return told == 0 ? static_cast<jsize>(content.size()) : told; }

void Region(JNIEnv*, jstring, jsize start, jsize length, jchar* units) {
  std::copy_n(content.begin() + start, length, units);
}

void UtfRegion(JNIEnv*, jstring, jsize start, jsize length, char* bytes) {
  for (jsize i = 0; i < length; ++i) {
    bytes[i] = static_cast<char>(content[static_cast<std::size_t>(start + i)]);
  }
}

void ReleaseOwn(JNIEnv*, jstring, const jchar*) { ++releasedByJvm; }

const char* OwnBytes(JNIEnv*, jstring, jboolean*) {
  return static_cast<const char*>(std::calloc(1, 8));
}

void ReleaseOwnBytes(JNIEnv*, jstring, const char* bytes) {
  ++releasedByJvm;
  std::free(const_cast<char*>(bytes));
}

// Fills memory of that size with old bytes, and gives it back.
void Dirty(std::size_t bytes) {
  std::vector<void*> blocks;
  for (int i = 0; i < 12; ++i) {
    blocks.push_back(std::malloc(bytes));
    std::memset(blocks.back(), 0x7f, bytes);
  }
  for (void* block : blocks) std::free(block);
}

class GuardTextsTest : public testing::Test {
 protected:
  GuardTextsTest() {
    jvm.GetStringLength = Length;
    jvm.GetStringUTFLength = Length;
    jvm.GetStringRegion = Region;
    jvm.GetStringUTFRegion = UtfRegion;
    jvm.GetStringUTFChars = OwnBytes;
    jvm.ReleaseStringChars = ReleaseOwn;
    jvm.ReleaseStringUTFChars = ReleaseOwnBytes;
    GuardTexts(_table);
    _env.functions = &_table;
    knownOwnEnv = &_env;
    releasedByJvm = 0;
    told = 0;
  }
  ~GuardTextsTest() override { knownOwnEnv = nullptr; }

  JNIEnv* Env() { return &_env; }

  // Some address that is not null; nobody looks at what is there.
  jstring string = reinterpret_cast<jstring>(&content);

 private:
  JniTable _table{};
  JNIEnv _env{};
};

TEST_F(GuardTextsTest, UnitsAreTerminated) {
  for (std::size_t length = 0; length < 300; ++length) {
    content = std::u16string(length, u'\u20ac');
    Dirty(ElementBuffers::MemoryFor(2 * length));
    jboolean isCopy = JNI_FALSE;
    const jchar* units = Env()->GetStringChars(string, &isCopy);
    EXPECT_TRUE(std::equal(content.begin(), content.end(), units));
    EXPECT_EQ(units[length], 0) << length;
    EXPECT_EQ(isCopy, JNI_TRUE);
    Env()->ReleaseStringChars(string, units);
  }
  EXPECT_EQ(releasedByJvm, 0);
}

TEST_F(GuardTextsTest, BytesAreTerminated) {
  for (std::size_t length = 0; length < 300; ++length) {
    content = std::u16string(length, u'a');
    Dirty(ElementBuffers::MemoryFor(length));
    jboolean isCopy = JNI_FALSE;
    const char* bytes = Env()->GetStringUTFChars(string, &isCopy);
    EXPECT_EQ(std::string(bytes), std::string(length, 'a'));
    EXPECT_EQ(isCopy, JNI_TRUE);
    Env()->ReleaseStringUTFChars(string, bytes);
  }
}

TEST_F(GuardTextsTest, TextsAreFreedSinceAMark) {
  content = u"text";
  const std::uint64_t mark = ObtainedBuffers::Mark();
  Env()->GetStringChars(string, nullptr);
  Env()->GetStringUTFChars(string, nullptr);
  EXPECT_EQ(ElementBuffers::FreeObtainedSince(mark), 2U);
}

// Nobody can tell a text from before the guard from one that is free memory by now.
TEST_F(GuardTextsTest, WhatTheGuardDidNotGiveIsLeftAlone) {
  const unsigned long long before = jniguard_count(JNIGUARD_ELEMENTS_UNKNOWN);
  const jchar units[] = {'a', 0};
  Env()->ReleaseStringChars(string, units);
  Env()->ReleaseStringUTFChars(string, "a");
  EXPECT_EQ(releasedByJvm, 0);
  EXPECT_EQ(jniguard_count(JNIGUARD_ELEMENTS_UNKNOWN), before + 2);
}

TEST_F(GuardTextsTest, NoTextIsReleasedInSilence) {
  const unsigned long long before = jniguard_counts(nullptr, 0);
  Env()->ReleaseStringChars(string, nullptr);
  Env()->ReleaseStringUTFChars(string, nullptr);
  EXPECT_EQ(releasedByJvm, 0);
  EXPECT_EQ(jniguard_counts(nullptr, 0), before);
}

TEST_F(GuardTextsTest, ATextIsReleasedOnce) {
  content = u"text";
  const unsigned long long before = jniguard_count(JNIGUARD_ELEMENTS_UNKNOWN);
  const jchar* units = Env()->GetStringChars(string, nullptr);
  const char* bytes = Env()->GetStringUTFChars(string, nullptr);
  for (int i = 0; i < 2; ++i) {
    Env()->ReleaseStringChars(string, units);
    Env()->ReleaseStringUTFChars(string, bytes);
  }
  EXPECT_EQ(releasedByJvm, 0);
  EXPECT_EQ(jniguard_count(JNIGUARD_ELEMENTS_UNKNOWN), before + 2);
}

TEST_F(GuardTextsTest, ATextThatWasFreedIsNotReleased) {
  content = u"text";
  const unsigned long long before = jniguard_count(JNIGUARD_ELEMENTS_UNKNOWN);
  const std::uint64_t mark = ObtainedBuffers::Mark();
  const jchar* units = Env()->GetStringChars(string, nullptr);
  const char* bytes = Env()->GetStringUTFChars(string, nullptr);
  EXPECT_EQ(ElementBuffers::FreeObtainedSince(mark), 2U);
  Env()->ReleaseStringChars(string, units);
  Env()->ReleaseStringUTFChars(string, bytes);
  EXPECT_EQ(releasedByJvm, 0);
  EXPECT_EQ(jniguard_count(JNIGUARD_ELEMENTS_UNKNOWN), before + 2);
}

// More than 2147483647 bytes at the worst: the JVM's own text, which goes back to it, once.
TEST_F(GuardTextsTest, ATextThatIsTooLongForTheGuardGoesBackToTheJvm) {
  const unsigned long long before = jniguard_count(JNIGUARD_ELEMENTS_UNKNOWN);
  told = 800000000;
  const char* first = Env()->GetStringUTFChars(string, nullptr);
  const char* second = Env()->GetStringUTFChars(string, nullptr);
  Env()->ReleaseStringUTFChars(string, first);
  EXPECT_EQ(releasedByJvm, 1);
  Env()->ReleaseStringUTFChars(string, first);
  EXPECT_EQ(releasedByJvm, 1);
  EXPECT_EQ(jniguard_count(JNIGUARD_ELEMENTS_UNKNOWN), before + 1);
  Env()->ReleaseStringUTFChars(string, second);
  EXPECT_EQ(releasedByJvm, 2);
}

// The wrong function frees it all the same, and is counted.
TEST_F(GuardTextsTest, UnitsThatAreReleasedAsBytesAreCounted) {
  content = u"text";
  const unsigned long long before = jniguard_count(JNIGUARD_ELEMENTS_ARRAY);
  const std::uint64_t mark = ObtainedBuffers::Mark();
  const jchar* units = Env()->GetStringChars(string, nullptr);
  Env()->ReleaseStringUTFChars(string, reinterpret_cast<const char*>(units));
  EXPECT_EQ(jniguard_count(JNIGUARD_ELEMENTS_ARRAY), before + 1);
  EXPECT_EQ(ElementBuffers::FreeObtainedSince(mark), 0U);
}

}  // namespace
}  // namespace chartbridge
