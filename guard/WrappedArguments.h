// SPDX-License-Identifier: Apache-2.0
#ifndef GUARD_WRAPPEDARGUMENTS_H_
#define GUARD_WRAPPEDARGUMENTS_H_

#include <jni.h>

#include <cstdarg>
#include <string>

namespace chartbridge {

/// The arguments of one call of a method that takes a `ByteBuffer`, with every `byte[]` in such a
/// place wrapped by `ByteBuffer.wrap`. The wrappers go with the object; the caller's own references
/// stay as they are.
class WrappedArguments {
 public:
  /// Finds the Java classes. Called once on a live JVM, before the first object is made. False when
  /// one is missing.
  static bool Prepare(JNIEnv* env);

  WrappedArguments(JNIEnv* env, const std::string& parameters, va_list arguments);
  WrappedArguments(JNIEnv* env, const std::string& parameters, const jvalue* arguments);
  ~WrappedArguments();

  WrappedArguments(const WrappedArguments&) = delete;
  WrappedArguments& operator=(const WrappedArguments&) = delete;

  /// False when a wrapper could not be made. A Java exception is pending then, and the call must
  /// not be done.
  bool IsComplete() const { return _complete; }

  const jvalue* Values() const { return _values; }

 private:
  // What the Java language allows a method to have.
  static constexpr int kMaxParameters = 255;

  void WrapByteArrays(const std::string& parameters);
  jobject Wrap(jobject array);

  JNIEnv* _env;
  bool _complete = true;
  int _wrapperCount = 0;
  jvalue _values[kMaxParameters];
  jobject _wrappers[kMaxParameters];
};

}  // namespace chartbridge

#endif  // GUARD_WRAPPEDARGUMENTS_H_
