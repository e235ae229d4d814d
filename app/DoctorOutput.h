// SPDX-License-Identifier: Apache-2.0
#ifndef APP_DOCTOROUTPUT_H_
#define APP_DOCTOROUTPUT_H_

#include <string>

namespace chartbridge {

/// Keeps standard output for the command's own text during its scope.
///
/// Java code under test may print; what it prints goes to standard error, so that a program that
/// reads the report gets the report. One at a time.
class DoctorOutput {
 public:
  /// Throws `Failure` when standard output is closed.
  DoctorOutput();
  /// Gives standard output back.
  ~DoctorOutput();

  DoctorOutput(const DoctorOutput&) = delete;
  DoctorOutput& operator=(const DoctorOutput&) = delete;

  /// Writes at once, so that what was found is seen even if Java ends the process afterwards.
  /// Throws `Failure`.
  void Write(const std::string& text) const;

 private:
  int _descriptor;
};

}  // namespace chartbridge

#endif  // APP_DOCTOROUTPUT_H_
