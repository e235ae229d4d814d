// SPDX-License-Identifier: Apache-2.0
#include <limits>

#include "guard/Guards.h"
#include "guard/NullChecks.h"

namespace chartbridge {
namespace {

jstring NewString(JNIEnv* env, const jchar* text, jsize length) {
  env = OwnEnv(env);
  if (text == nullptr && length > 0) {
    Refuse(env, JNIGUARD_BAD_INPUT, JavaError::kNullPointer, "NewString", "the text is null");
    return nullptr;
  }
  return jvm.NewString(env, text, length);
}

// Releasing text that was never obtained is what native code does after a failed Get, and needs no
// exception of its own.
void ReleaseStringChars(JNIEnv* env, jstring text, const jchar* chars) {
  if (chars != nullptr) jvm.ReleaseStringChars(OwnEnv(env), text, chars);
}

void ReleaseStringUTFChars(JNIEnv* env, jstring text, const char* chars) {
  if (chars != nullptr) jvm.ReleaseStringUTFChars(OwnEnv(env), text, chars);
}

// JVMs up to 17 cut a longer capacity to 32 bits in silence, and memory at address null ends the
// process as soon as Java reads.
jobject NewDirectByteBuffer(JNIEnv* env, void* address, jlong capacity) {
  env = OwnEnv(env);
  if (capacity < 0 || capacity > std::numeric_limits<jint>::max()) {
    Refuse(env, JNIGUARD_BAD_INPUT, JavaError::kIllegalArgument, "NewDirectByteBuffer",
           "a buffer holds 0 to 2147483647 bytes");
    return nullptr;
  }
  if (address == nullptr && capacity > 0) {
    Refuse(env, JNIGUARD_BAD_INPUT, JavaError::kNullPointer, "NewDirectByteBuffer",
           "the memory is null");
    return nullptr;
  }
  return jvm.NewDirectByteBuffer(env, address, capacity);
}

}  // namespace

void GuardTexts(JniTable& table) {
  table.NewString = NewString;
  table.ReleaseStringChars = ReleaseStringChars;
  table.ReleaseStringUTFChars = ReleaseStringUTFChars;
  table.NewDirectByteBuffer = NewDirectByteBuffer;
  UseOwnEnv<&JniTable::NewStringUTF>(table);
  UseOwnEnv<&JniTable::GetDirectBufferAddress>(table);
  UseOwnEnv<&JniTable::GetDirectBufferCapacity>(table);
  RefuseNull<&JniTable::GetStringLength>(table, "GetStringLength");
  RefuseNull<&JniTable::GetStringChars>(table, "GetStringChars");
  RefuseNull<&JniTable::GetStringUTFLength>(table, "GetStringUTFLength");
  RefuseNull<&JniTable::GetStringUTFChars>(table, "GetStringUTFChars");
  RefuseNull<&JniTable::GetStringCritical>(table, "GetStringCritical");
  RefuseNull<&JniTable::ReleaseStringCritical>(table, "ReleaseStringCritical");
}

}  // namespace chartbridge
