// SPDX-License-Identifier: Apache-2.0
#ifndef GUARD_REFERENCEEPOCH_H_
#define GUARD_REFERENCEEPOCH_H_

#include <jvmti.h>

#include <cstdint>

namespace chartbridge {

/// Tells whether a local reference that a thread had is certainly still the same reference.
///
/// The JVM uses the place of a reference that was given back for the next one, so that an old
/// reference may have become another object's. A thread's epoch changes whenever it gives
/// references back. What the guard cannot see is a native method returning to Java, so certainty is
/// only for threads without Java frames: those that the host attached.
class ReferenceEpoch {
 public:
  /// Tells what to ask for a thread's frames. Called once, before the first `HasLasted`.
  static void SetJvmti(jvmtiEnv* jvmti);

  /// The calling thread's epoch, which no other thread ever has.
  static std::uint64_t Current() { return current_ != 0 ? current_ : Begin(); }

  /// The calling thread has given references back.
  static void End() { ++current_; }

  /// Whether every local reference that was alive in that epoch still is, and is still the same.
  static bool HasLasted(std::uint64_t epoch);

 private:
  static std::uint64_t Begin();

  __attribute__((tls_model("initial-exec"))) static inline thread_local std::uint64_t current_ = 0;
};

}  // namespace chartbridge

#endif  // GUARD_REFERENCEEPOCH_H_
