// SPDX-License-Identifier: Apache-2.0
#ifndef GUARD_JVMTEXTS_H_
#define GUARD_JVMTEXTS_H_

namespace chartbridge {

/// The texts of strings that native code has out and that are the JVM's own: those that are too
/// long for the guard.
///
/// Only they go back to the JVM. Hardly anybody ever has one, so one lock serves all threads.
class JvmTexts {
 public:
  /// Remembers a text. False when memory is short.
  static bool Add(const char* chars);

  /// Forgets the text. False for an address that is no text of the JVM's, or not any more.
  static bool Take(const char* chars);
};

}  // namespace chartbridge

#endif  // GUARD_JVMTEXTS_H_
