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
  explicit StraightLineConversion(JNIEnv* env);

  bool Convert(const std::string& input, std::string& output) const;

 private:
  JNIEnv* _env;
  jclass _class;
  jobject _object;
};

}  // namespace chartbridge

#endif  // BENCH_STRAIGHTLINECONVERSION_H_
