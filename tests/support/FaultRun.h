// SPDX-License-Identifier: Apache-2.0
#ifndef TESTS_SUPPORT_FAULTRUN_H_
#define TESTS_SUPPORT_FAULTRUN_H_

#include <functional>
#include <memory>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

#include "tests/support/FakeJvm.h"
#include "tests/support/Sequence.h"

namespace chartbridge::testing {

/// A fresh JVM and platform with one operation in it, to be run once or twice.
class FaultScene {
 public:
  FaultScene();
  virtual ~FaultScene();

  FaultScene(const FaultScene&) = delete;
  FaultScene& operator=(const FaultScene&) = delete;

  /// Brings the operation to where it can run: starts its editor.
  virtual void Start() = 0;
  /// Runs it on fresh outputs and writes result and outputs as one text.
  virtual std::string Run() = 0;

  FakeJvm jvm;
};

/// An operation and what it must give for every JNI call that fails in it.
///
/// What a failing call gives follows from what the operation does with its result:
/// - the exception check and every release decide nothing: the operation succeeds;
/// - a lookup, an argument or a Java call that fails ends in the operation's failure value, with
///   the outputs untouched, because Java refuses arguments that were lost and gives null or zero
///   for a call without a method or an object;
/// - what else a call decides (a length of zero is an empty result, the loss of one entry of many
///   is no more than that) stands in `special`, one by one.
struct FaultOperation {
  std::string name;
  std::function<std::unique_ptr<FaultScene>()> scene;
  std::string success;
  std::string failure;
  /// For calls whose label, as in "GetArrayLength#1 GetArrayLength(byte[] xml)", contains the first
  /// text: what the operation gives. The first that fits holds.
  std::vector<std::pair<std::string, std::string>> special;

  /// What it gives when a JNI call throws a JException, or std::bad_alloc; empty where it passes
  /// the exception on.
  std::string on_jexception;
  std::string on_bad_alloc;
  /// The call from which on the outputs are written, and what it gives for an exception then.
  std::string written_from;
  std::string on_exception_when_written;

  /// What it gives on a thread that cannot be attached.
  std::string unattached;
  /// Whether it runs over an env that the library got itself, so that native code may throw in it.
  bool over_own_env = true;
  /// How many element buffers a success leaves unreleased.
  std::size_t unreleased = 0;
};

/// How GoogleTest prints an operation.
inline void PrintTo(const FaultOperation& operation, std::ostream* out) { *out << operation.name; }

/// Runs the operation once without fault, then once for each of its JNI calls and of those of its
/// start with that call failing in each of four ways: zero, zero with a pending Java exception, and
/// a JException or std::bad_alloc out of it. And once each without an env and without a JVM.
///
/// After each: the result is the derived one, the lock is free, every floating-point environment
/// that was saved is restored in order, every array that the library allocated is freed, no element
/// buffer is left over, and the next run succeeds.
void RunFaults(const FaultOperation& operation);

}  // namespace chartbridge::testing

#endif  // TESTS_SUPPORT_FAULTRUN_H_
