// SPDX-License-Identifier: Apache-2.0
#ifndef BENCH_STATICMETHOD_H_
#define BENCH_STATICMETHOD_H_

#include <jni.h>

namespace chartbridge {

/// A static Java method that returns nothing, called on the thread that found it.
class StaticMethod {
 public:
  /// Ends the process with Java's message when there is no such method.
  StaticMethod(JNIEnv* env, const char* className, const char* name, const char* signature)
      : _env(env), _class(env->FindClass(className)), _method(nullptr) {
    Check();
    _method = env->GetStaticMethodID(_class, name, signature);
    Check();
  }

  /// Ends the process with Java's message when the method throws.
  template <typename... Arguments>
  void operator()(Arguments... arguments) const {
    _env->CallStaticVoidMethod(_class, _method, arguments...);
    Check();
  }

 private:
  void Check() const {
    if (_env->ExceptionCheck() == JNI_FALSE) return;
    _env->ExceptionDescribe();
    _env->FatalError("a benchmark cannot go on");
  }

  JNIEnv* _env;
  jclass _class;
  jmethodID _method;
};

}  // namespace chartbridge

#endif  // BENCH_STATICMETHOD_H_
