// SPDX-License-Identifier: Apache-2.0
#ifndef TESTS_SUPPORT_ACCESSORPROBE_H_
#define TESTS_SUPPORT_ACCESSORPROBE_H_

#include <jni.h>

class JAccessor;

namespace chartbridge::testing {

/// What a binding still holds when the destructor of its base, `JAccessor`, begins.
class AccessorProbe {
 public:
  static AccessorProbe& Get();

  /// The env of the binding that ended last on this thread.
  JNIEnv* LastEnv() const { return _env; }
  int Destructions() const { return _destructions; }
  void Reset();

  /// Called in place of the destructor, before it.
  void Look(const JAccessor& accessor);

 private:
  JNIEnv* _env = nullptr;
  int _destructions = 0;
};

}  // namespace chartbridge::testing

#endif  // TESTS_SUPPORT_ACCESSORPROBE_H_
