// SPDX-License-Identifier: Apache-2.0
#ifndef BRIDGE_MARSHALLING_H_
#define BRIDGE_MARSHALLING_H_

#include <jni.h>

#include <string>

#include "bridge/JAccessor.h"

// How values cross between the host and Java. Every binding uses these, so that each crossing makes
// the same JNI calls and the same exception checks in the same order wherever it stands. All
// references that are made are local and stay for the host's local frame to give back; nothing here
// deletes one.
namespace chartbridge {

/// Bytes as a new `byte[]`, copied unchanged. Null when Java could not make it.
jbyteArray NewByteArray(JAccessor& accessor, const std::string& bytes);

/// The host's own memory as a `java.nio.ByteBuffer`, not copied: it must outlive the Java call.
///
/// Null when the JVM cannot; the caller then leaves Java uncalled. No exception check is made.
jobject NewDirectBuffer(const JAccessor& accessor, const void* memory, unsigned long length);

/// UTF-16 code units as a new Java string, with the exception check that follows it.
jstring NewJavaString(JAccessor& accessor, const jchar* units, int length);

/// A text in the host's native encoding as a new Java string (`UnicodeConverter`). Null, without a
/// JNI call, for a text that is empty or cannot be converted.
jstring NewJavaStringFromNative(JAccessor& accessor, const std::string& text);

/// A UTF-8 text as a new Java string, made by the host's JNI accessor library.
jstring NewJavaStringFromUtf8(JAccessor& accessor, const std::string& text);

/// Replaces `bytes` with the elements of a `byte[]`.
///
/// False, with `bytes` untouched, when the array has elements and Java did not give them. Null
/// elements of an empty array are no failure: a JVM has nothing to give there.
bool AssignElements(std::string& bytes, const jbyte* elements, jsize length);

/// Copies a whole `byte[]` into `bytes` and returns the elements as Java gave them, for the caller
/// to release, also where they are null.
///
/// `bytes` stays as it is when the array has elements and Java did not give them. No exception
/// check is made.
jbyte* CopyByteArray(const JAccessor& accessor, jbyteArray array, std::string& bytes);

/// Copies a whole `byte[]` into `bytes` and releases what Java gave, also null, without writing
/// back.
///
/// False, with `bytes` untouched, when `array` is null or has elements that Java did not give. True
/// for an empty array.
bool ReadByteArray(JAccessor& accessor, jbyteArray array, std::string& bytes);

/// Copies one block (a 4-byte big-endian length and as many bytes) into `bytes` and returns the
/// position behind it.
///
/// The length is Java's word: nothing tells where the memory ends.
const jbyte* ReadLengthPrefixedBlock(const jbyte* position, std::string& bytes);

/// Transcodes a Java string, up to its first zero unit, to UTF-8 with the host's transcoder.
///
/// A null string, units that Java does not give, and a transcoder that answers null leave `text`
/// untouched.
void ReadTranscodedString(JAccessor& accessor, jstring string, std::string& text);

}  // namespace chartbridge

#endif  // BRIDGE_MARSHALLING_H_
