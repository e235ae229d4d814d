// SPDX-License-Identifier: Apache-2.0
#ifndef TESTS_SUPPORT_FAKEPLATFORM_H_
#define TESTS_SUPPORT_FAKEPLATFORM_H_

#include <jni.h>

#include <functional>
#include <optional>
#include <string>

namespace chartbridge::testing {

/// What the platform libraries do in a test. Their functions log every call to the `EventLog` and
/// then do what is set here.
///
/// Events: "lock depth=1", "unlock depth=0", "TeskJVM::GetInstance", "AttachCurrentThread",
/// "IsStarted", "StartJVM", "GetEnv", "TESKMBGenericToU16(<first content of the output>, <text>)",
/// "TESKMBTranscodeU8(<text>)", "TESKMBRelease(<text>)", "qUTF8mode", "JNIAccessor(<env>)",
/// "ToJString(<text>, <encoding>)", "~JNIAccessor", "printDebugInfo(<text>)" and those of the
/// transformer.
struct FakePlatform {
  static FakePlatform& Get();

  /// Back to a host that works: one JVM object, attached threads get `env`.
  void Reset();

  /// Whether `TeskJVM::GetInstance()` gives an object.
  bool has_jvm = true;
  bool started = true;
  bool start_works = true;
  /// What attaching gives; null for a thread that cannot be attached.
  JNIEnv* env = nullptr;
  /// What attaching returns, where it is not whether there is an env.
  std::optional<bool> attach_result;
  /// Runs in every attach, to throw or to change the rounding mode.
  std::function<void()> on_attach;
  /// When set, what attaching gives to the calling thread.
  std::function<JNIEnv*()> env_of_thread;

  /// The result of the transcoder to UTF-16, which takes UTF-8.
  int generic_to_u16_result = 0;
  /// Runs in every call of the transcoder to UTF-16.
  std::function<void()> on_generic_to_u16;
  bool utf8_mode = true;

  /// What a transformed chart serialises to, and what runs in every call of the transformer.
  std::string entire_xml;
  std::function<void()> on_transform;

  /// How often the process-wide lock is held now, by any thread.
  static int LockDepth();
};

}  // namespace chartbridge::testing

#endif  // TESTS_SUPPORT_FAKEPLATFORM_H_
