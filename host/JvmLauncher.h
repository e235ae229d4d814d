// SPDX-License-Identifier: Apache-2.0
#ifndef HOST_JVMLAUNCHER_H_
#define HOST_JVMLAUNCHER_H_

#include <jni.h>

#include <string>
#include <vector>

#include "host/DefaultOptions.h"
#include "host/GivenOptions.h"
#include "host/GuardLibrary.h"
#include "host/JvmSettings.h"

namespace chartbridge {

/// Finds, loads and starts a JVM by the given settings. One object makes one attempt.
class JvmLauncher {
 public:
  explicit JvmLauncher(const JvmSettings& settings) : _settings(settings) {}

  /// The running JVM, or null; the reason is then in `Error`. A JVM that somebody else has created
  /// in this process from the same library is taken over as it is.
  JavaVM* Launch();

  /// One line that says what went wrong.
  const std::string& Error() const { return _error; }

 private:
  using CreateFunction = jint (*)(JavaVM**, void**, void*);
  using GetCreatedFunction = jint (*)(JavaVM**, jsize, jsize*);

  bool LoadLibrary();
  bool CollectOptions();
  void AddDefaults(const GivenOptions& given);
  void AddArchive(const DefaultOptions& defaults);
  std::string Archive(const DefaultOptions& defaults) const;
  JavaVM* Create();
  jint CreateBesideHost(JavaVM** vm, JavaVMInitArgs& arguments);
  JavaVM* Existing() const;
  JavaVM* Guarded(JavaVM* vm);

  const JvmSettings& _settings;
  GuardLibrary _guard;
  CreateFunction _create = nullptr;
  GetCreatedFunction _getCreated = nullptr;
  void* _handle = nullptr;
  std::string _library;
  std::vector<std::string> _options;
  std::string _error;
};

}  // namespace chartbridge

#endif  // HOST_JVMLAUNCHER_H_
