// SPDX-License-Identifier: Apache-2.0
// Java strings out of native text, on a real JVM.
#include <gtest/gtest.h>

#include <string>

#include "host/JvmSettings.h"
#include "platform/JNIAccessor.h"
#include "platform/TeskJVM.h"

namespace chartbridge {
namespace {

class JString : public testing::Test {
 protected:
  void SetUp() override {
    ASSERT_TRUE(TeskJVM::GetInstance()->StartJVM());
    _env = TeskJVM::GetInstance()->GetEnv();
  }

  std::u16string Made(const char* text, const char* encoding) {
    jstring made = JNIAccessor(_env).ToJString(text, encoding);
    if (made == nullptr) return u"(null)";
    std::u16string units(static_cast<std::size_t>(_env->GetStringLength(made)), u' ');
    _env->GetStringRegion(made, 0, static_cast<jsize>(units.size()),
                          reinterpret_cast<jchar*>(units.data()));
    return units;
  }

  JNIEnv* _env = nullptr;
};

TEST_F(JString, DecodesUtf8OfAllPlanes) {
  EXPECT_EQ(Made("", "UTF-8"), u"");
  EXPECT_EQ(Made("a\xC3\xBC\xE2\x82\xAC\xF0\x9F\x98\x80z", "UTF-8"), u"aü€\U0001F600z");
}

TEST_F(JString, ReplacesMalformedBytes) {
  EXPECT_EQ(Made("a\xFFz", "UTF-8"), u"a\uFFFDz");
  EXPECT_EQ(Made("a\xF0\x9F\x98", "UTF-8"), u"a\uFFFD");
  // Modified UTF-8 is not UTF-8: surrogates have no bytes of their own.
  EXPECT_EQ(Made("\xED\xA0\xBD", "UTF-8").find(u'\xD83D'), std::u16string::npos);
}

TEST_F(JString, DecodesNamedEncoding) {
  EXPECT_EQ(Made("m\xFCll", "ISO-8859-1"), u"müll");
  EXPECT_EQ(Made("\x80", "windows-1252"), u"€");
  EXPECT_EQ(Made("\x83\x41", "Shift_JIS"), u"ア");
}

TEST_F(JString, RaisesForUnknownEncoding) {
  EXPECT_EQ(Made("a", "no such encoding"), u"(null)");
  jthrowable pending = _env->ExceptionOccurred();
  ASSERT_NE(pending, nullptr);
  _env->ExceptionClear();
  EXPECT_TRUE(_env->IsInstanceOf(pending, _env->FindClass("java/io/UnsupportedEncodingException")));
}

TEST_F(JString, MakesNothingOfNothing) {
  EXPECT_EQ(Made(nullptr, "UTF-8"), u"(null)");
  EXPECT_EQ(JNIAccessor(nullptr).ToJString("a", "UTF-8"), nullptr);
  EXPECT_FALSE(_env->ExceptionCheck());
}

}  // namespace
}  // namespace chartbridge
