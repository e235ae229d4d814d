// SPDX-License-Identifier: Apache-2.0
#ifndef HOST_JVMLOCATOR_H_
#define HOST_JVMLOCATOR_H_

#include <string>

namespace chartbridge {

/// Where the JVM's library is, or why there is none.
struct JvmLocation {
  /// The path of libjvm; empty when none was found.
  std::string library;
  /// What was looked at, for a message: "java on PATH (none), ...".
  std::string tried;
};

/// Finds the JVM. `home`, else the environment's JAVA_HOME, is the only place when one of them is
/// given; otherwise the JVM of the `java` on the path and then the distribution's default are
/// tried.
JvmLocation LocateJvm(const std::string& home);

}  // namespace chartbridge

#endif  // HOST_JVMLOCATOR_H_
