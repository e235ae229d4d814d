// SPDX-License-Identifier: Apache-2.0
#ifndef BENCH_STRAIGHTLINECONVERSION_H_
#define BENCH_STRAIGHTLINECONVERSION_H_

#include <jni.h>

#include <string>

namespace chartbridge {

/// The JNI calls of `VizConverter::GPLtoXML`, written out by hand with nothing around them: no
/// lock, no attaching, no floating-point environment, no layers. What a conversion cannot be faster
/// than.
class StraightLineConversion {
 public:
  /// @param keepFloatEnv whether the floating-point environment is saved and restored around each
  ///     exception check, as the library must: what that alone costs
  StraightLineConversion(JNIEnv* env, bool keepFloatEnv);

  bool Convert(const std::string& input, std::string& output) const;

 private:
  bool Failed() const;

  JNIEnv* _env;
  bool _keepFloatEnv;
  jclass _class;
  jobject _object;
};

}  // namespace chartbridge

#endif  // BENCH_STRAIGHTLINECONVERSION_H_
