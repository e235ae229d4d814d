// SPDX-License-Identifier: Apache-2.0
#ifndef HOST_GUARDLIBRARY_H_
#define HOST_GUARDLIBRARY_H_

#include <jni.h>

#include <string>

namespace chartbridge {

/// The guard, loaded at run time so that a host without it needs nothing of it.
class GuardLibrary {
 public:
  /// Loads the guard from `path`, or from the places beside this library when it is empty. False
  /// with a reason in `error`.
  bool Load(const std::string& path, std::string& error);

  /// Puts the guard between native code and a live JVM. False when the JVM does not let it.
  bool Install(JavaVM* vm, const std::string& options) const;

 private:
  using InstallFunction = jint (*)(JavaVM*, const char*);

  InstallFunction _install = nullptr;
};

}  // namespace chartbridge

#endif  // HOST_GUARDLIBRARY_H_
