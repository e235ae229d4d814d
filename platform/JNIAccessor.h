// SPDX-License-Identifier: Apache-2.0
#ifndef PLATFORM_JNIACCESSOR_H_
#define PLATFORM_JNIACCESSOR_H_

#include <jni.h>

/// A short-lived helper over one thread's env that makes Java strings from texts in a named
/// encoding.
class JNIAccessor {
 public:
  /// @param env the calling thread's env, kept as it is
  explicit JNIAccessor(JNIEnv* env);
  ~JNIAccessor();  // NOLINT(performance-trivially-destructible): the host supplies it

  JNIAccessor(const JNIAccessor&) = delete;
  JNIAccessor& operator=(const JNIAccessor&) = delete;

  /// A new local reference to `text` (zero-terminated, in `encoding`; the library always passes
  /// "UTF-8"), made on the calling thread. Null when it cannot be made; a Java exception may then
  /// be pending, which the library looks for and clears.
  jstring ToJString(const char* text, const char* encoding) const;

 private:
  JNIEnv* _env;
};

#endif  // PLATFORM_JNIACCESSOR_H_
