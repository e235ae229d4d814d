// SPDX-License-Identifier: Apache-2.0
#include <cstddef>
#include <limits>

#include "guard/Caught.h"
#include "guard/ElementBuffers.h"
#include "guard/Guards.h"
#include "guard/JvmTexts.h"
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

// What the texts of strings are known by among the element buffers.
constexpr char kUnits = 'u';
constexpr char kModifiedUtf8 = 'm';

// JNI does not promise that a text ends in a zero unit, and native code reads it as if it did. So
// texts are copies of the guard's, with zeros behind them.
void* NewText(JNIEnv* env, const char* function, char type, jsize length, std::size_t bytes) {
  void* buffer = ElementBuffers::New({nullptr, length, type, 0}, bytes);
  if (buffer == nullptr) {
    Raise(env, JavaError::kOutOfMemory, function, "no memory for the text");
  }
  return buffer;
}

// The JVM's own text, remembered until it goes back there.
const char* GetJvmText(JNIEnv* env, jstring text, jboolean* isCopy) {
  const char* chars = jvm.GetStringUTFChars(env, text, isCopy);
  if (chars == nullptr || JvmTexts::Add(chars)) return chars;
  jvm.ReleaseStringUTFChars(env, text, chars);
  Raise(env, JavaError::kOutOfMemory, "GetStringUTFChars", "no memory for the text");
  return nullptr;
}

// A text that is not out is left alone: it may have been released before, and then its address is
// free memory or somebody else's, which the JVM would free again.
void RefuseRelease(const char* function) {
  Caught(JNIGUARD_ELEMENTS_UNKNOWN, function, "this text is not out");
}

// Whether the text was the guard's, which has freed it then.
bool FreeText(void* buffer, char type, const char* function) {
  ElementSource source;
  if (!ElementBuffers::Take(buffer, source)) return false;
  if (source.type != type) {
    Caught(JNIGUARD_ELEMENTS_ARRAY, function, "this is not the text of a string");
  }
  ElementBuffers::Free(buffer);
  return true;
}

bool RefuseNullText(JNIEnv* env, jstring text, const char* function) {
  if (__builtin_expect(text != nullptr, 1)) return false;
  Refuse(env, JNIGUARD_NULL_ARRAY_OR_STRING, JavaError::kNullPointer, function,
         "the array or string is null");
  return true;
}

const jchar* GetStringChars(JNIEnv* env, jstring text, jboolean* isCopy) {
  env = OwnEnv(env);
  if (RefuseNullText(env, text, "GetStringChars")) return nullptr;
  const jsize length = jvm.GetStringLength(env, text);
  auto* units = static_cast<jchar*>(NewText(env, "GetStringChars", kUnits, length,
                                            static_cast<std::size_t>(length) * sizeof(jchar)));
  if (units == nullptr) return nullptr;
  if (length > 0) jvm.GetStringRegion(env, text, 0, length, units);
  if (isCopy != nullptr) *isCopy = JNI_TRUE;
  return units;
}

const char* GetStringUTFChars(JNIEnv* env, jstring text, jboolean* isCopy) {
  env = OwnEnv(env);
  if (RefuseNullText(env, text, "GetStringUTFChars")) return nullptr;
  const jsize length = jvm.GetStringLength(env, text);
  // Each unit takes up to three bytes, and the JVM tells their number in 32 bits. It knows best
  // what to do with a text that is too long for that.
  if (length > std::numeric_limits<jsize>::max() / 3) {
    return GetJvmText(env, text, isCopy);
  }
  const jsize bytes = jvm.GetStringUTFLength(env, text);
  auto* chars = static_cast<char*>(
      NewText(env, "GetStringUTFChars", kModifiedUtf8, bytes, static_cast<std::size_t>(bytes)));
  if (chars == nullptr) return nullptr;
  if (length > 0) jvm.GetStringUTFRegion(env, text, 0, length, chars);
  if (isCopy != nullptr) *isCopy = JNI_TRUE;
  return chars;
}

// Releasing text that was never obtained is what native code does after a failed Get, and needs no
// exception of its own. Another thread's env is counted here as everywhere.
void ReleaseStringChars(JNIEnv* env, jstring, const jchar* chars) {
  if (chars == nullptr) return;
  OwnEnv(env);
  const char* function = "ReleaseStringChars";
  if (FreeText(const_cast<jchar*>(chars), kUnits, function)) return;
  RefuseRelease(function);
}

void ReleaseStringUTFChars(JNIEnv* env, jstring text, const char* chars) {
  if (chars == nullptr) return;
  env = OwnEnv(env);
  const char* function = "ReleaseStringUTFChars";
  if (FreeText(const_cast<char*>(chars), kModifiedUtf8, function)) return;
  if (JvmTexts::Take(chars)) {
    jvm.ReleaseStringUTFChars(env, text, chars);
    return;
  }
  RefuseRelease(function);
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
  table.GetStringChars = GetStringChars;
  table.GetStringUTFChars = GetStringUTFChars;
  table.ReleaseStringChars = ReleaseStringChars;
  table.ReleaseStringUTFChars = ReleaseStringUTFChars;
  table.NewDirectByteBuffer = NewDirectByteBuffer;
  UseOwnEnv<&JniTable::NewStringUTF>(table);
  UseOwnEnv<&JniTable::GetDirectBufferAddress>(table);
  UseOwnEnv<&JniTable::GetDirectBufferCapacity>(table);
  RefuseNull<&JniTable::GetStringLength>(table, "GetStringLength");
  RefuseNull<&JniTable::GetStringUTFLength>(table, "GetStringUTFLength");
  RefuseNull<&JniTable::GetStringCritical>(table, "GetStringCritical");
  RefuseNull<&JniTable::ReleaseStringCritical>(table, "ReleaseStringCritical");
}

}  // namespace chartbridge
