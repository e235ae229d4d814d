// SPDX-License-Identifier: Apache-2.0
#ifndef HOST_JAVADESCRIPTORS_H_
#define HOST_JAVADESCRIPTORS_H_

#include <string>

namespace chartbridge {

/// Keeps the files that Java has open from the programs that the host starts.
///
/// Java opens its modules, jars and fonts so that every child of the process inherits them. They
/// are marked to be closed there instead. A file counts as Java's when it was opened for reading
/// only, after the JVM was started, and is in the Java home, a jar, a font or the source of random
/// numbers; other files, sockets and pipes are left alone.
class JavaDescriptors {
 public:
  /// Remembers what is open before the JVM starts, which is the host's.
  ///
  /// @param javaLibrary the path of libjvm.so, below the Java home
  static void Begin(const std::string& javaLibrary);

  /// Marks what has come since. Nothing is done before `Begin`, and what there is no memory for
  /// waits for the next time. Safe on any thread.
  static void Mark() noexcept;

  /// As `Mark`, now and then: often at first, when Java opens the most, and later at most once per
  /// second.
  static void MarkNowAndThen() noexcept;
};

}  // namespace chartbridge

#endif  // HOST_JAVADESCRIPTORS_H_
