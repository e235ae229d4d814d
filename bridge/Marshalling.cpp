// SPDX-License-Identifier: Apache-2.0
#include "bridge/Marshalling.h"

#include <cstddef>
#include <cstdint>

#include "bridge/UnicodeConverter.h"
#include "platform/JNIAccessor.h"
#include "platform/TESKMB.h"

namespace chartbridge {

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

jbyte* CopyByteArray(const JAccessor& accessor, jbyteArray array, std::string& bytes) {
  const jsize length = accessor.jni()->GetArrayLength(array);
  jbyte* elements = accessor.jni()->GetByteArrayElements(array, nullptr);
  if (elements == nullptr) return nullptr;
  bytes.assign(reinterpret_cast<const char*>(elements), static_cast<std::size_t>(length));
  return elements;
}

bool ReadByteArray(JAccessor& accessor, jbyteArray array, std::string& bytes) {
  if (array == nullptr) return false;
  jbyte* elements = CopyByteArray(accessor, array, bytes);
  if (elements != nullptr) {
    accessor.jni()->ReleaseByteArrayElements(array, elements, JNI_ABORT);
  }
  accessor.exceptionCheck();
  return elements != nullptr;
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
  const jsize length = accessor.jni()->GetStringLength(string);
  accessor.exceptionCheck();
  const jchar* chars = accessor.jni()->GetStringChars(string, nullptr);
  accessor.exceptionCheck();
  if (chars == nullptr) return;

  // JNI does not promise a terminated buffer, and the transcoder reads up to a zero unit.
  const std::basic_string<unsigned short> terminated(chars, static_cast<std::size_t>(length));
  char* utf8 = TESKMBTranscodeU8(terminated.c_str());
  if (utf8 != nullptr) text = utf8;
  TESKMBRelease(&utf8);
  accessor.jni()->ReleaseStringChars(string, chars);
  accessor.exceptionCheck();
}

}  // namespace chartbridge
