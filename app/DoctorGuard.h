// SPDX-License-Identifier: Apache-2.0
#ifndef APP_DOCTORGUARD_H_
#define APP_DOCTORGUARD_H_

#include <string>

namespace chartbridge {

/// The guard as it is in this process, whoever loaded it: the host library, or the JVM as an agent.
class DoctorGuard {
 public:
  DoctorGuard();

  /// Whether it stands before the JVM.
  bool IsActive() const { return _isActive; }
  /// What it caught so far, such as "2 x null method call"; empty when that is nothing.
  const std::string& Caught() const { return _caught; }

 private:
  bool _isActive = false;
  std::string _caught;
};

}  // namespace chartbridge

#endif  // APP_DOCTORGUARD_H_
