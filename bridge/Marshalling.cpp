// SPDX-License-Identifier: Apache-2.0
#include "bridge/Marshalling.h"

#include <cstddef>
#include <cstdint>

#include "bridge/UnicodeConverter.h"
#include "platform/JNIAccessor.h"
#include "platform/TESKMB.h"

namespace chartbridge {
namespace {

// Units up to a zero unit, to UTF-8. Where the host's transcoder gives nothing, `text` stays.
void Transcode(const jchar* units, std::string& text) {
  char* utf8 = TESKMBTranscodeU8(units);
  if (utf8 != nullptr) text = utf8;
  TESKMBRelease(&utf8);
}

}  // namespace

jbyteArray NewByteArray(JAccessor& accessor, const std::string& bytes) {
  const auto length = static_cast<jsize>(bytes.size());
  const jbyteArray array = accessor.jni()->NewByteArray(length);
  accessor.exceptionCheck();
  accessor.jni()->SetByteArrayRegion(array, 0, length,
                                     reinterpret_cast<const jbyte*>(bytes.data()));
  accessor.exceptionCheck();
  return array;
}

jobject NewDirectBuffer(const JAccessor& accessor, const void* memory, unsigned long length) {
  // JNI has no pointer to const; the chart classes only read what the host declares const.
  return accessor.jni()->NewDirectByteBuffer(const_cast<void*>(memory), static_cast<jlong>(length));
}

jstring NewJavaString(JAccessor& accessor, const jchar* units, int length) {
  const jstring string = accessor.jni()->NewString(units, length);
  accessor.exceptionCheck();
  return string;
}

jstring NewJavaStringFromNative(JAccessor& accessor, const std::string& text) {
  const UnicodeConverter converted(text);
  if (converted.length() == 0) return nullptr;
  return NewJavaString(accessor, converted.toString(), static_cast<int>(converted.length()));
}

jstring NewJavaStringFromUtf8(JAccessor& accessor, const std::string& text) {
  const JNIAccessor strings(accessor.jni());
  const jstring string = strings.ToJString(text.c_str(), "UTF-8");
  accessor.exceptionCheck();
  return string;
}

bool AssignElements(std::string& bytes, const jbyte* elements, jsize length) {
  if (length <= 0) {
    bytes.clear();
    return true;
  }
  if (elements == nullptr) return false;
  bytes.assign(reinterpret_cast<const char*>(elements), static_cast<std::size_t>(length));
  return true;
}

jbyte* CopyByteArray(const JAccessor& accessor, jbyteArray array, std::string& bytes) {
  const jsize length = accessor.jni()->GetArrayLength(array);
  jbyte* elements = accessor.jni()->GetByteArrayElements(array, nullptr);
  AssignElements(bytes, elements, length);
  return elements;
}

bool ReadByteArray(JAccessor& accessor, jbyteArray array, std::string& bytes) {
  if (array == nullptr) return false;
  const jsize length = accessor.jni()->GetArrayLength(array);
  jbyte* elements = accessor.jni()->GetByteArrayElements(array, nullptr);
  const bool copied = AssignElements(bytes, elements, length);
  accessor.jni()->ReleaseByteArrayElements(array, elements, JNI_ABORT);
  accessor.exceptionCheck();
  return copied;
}

const jbyte* ReadLengthPrefixedBlock(const jbyte* position, std::string& bytes) {
  std::uint32_t length = 0;
  for (int i = 0; i < 4; ++i) {
    length = (length << 8U) | static_cast<std::uint8_t>(position[i]);
  }
  const jbyte* content = position + 4;
  bytes.assign(reinterpret_cast<const char*>(content), length);
  return content + length;
}

void ReadTranscodedString(JAccessor& accessor, jstring string, std::string& text) {
  if (string == nullptr) return;
  // Asked for and not used: the text ends at its zero unit.
  accessor.jni()->GetStringLength(string);
  accessor.exceptionCheck();
  const jchar* chars = accessor.jni()->GetStringChars(string, nullptr);
  accessor.exceptionCheck();
  // JNI does not promise the zero unit; today's JVMs write it, and the guard gives none without it.
  if (chars != nullptr) Transcode(chars, text);
  accessor.jni()->ReleaseStringChars(string, chars);
  accessor.exceptionCheck();
}

}  // namespace chartbridge
