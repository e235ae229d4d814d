// SPDX-License-Identifier: Apache-2.0
#ifndef APP_DOCTORMACHINECHECK_H_
#define APP_DOCTORMACHINECHECK_H_

#include <jni.h>

#include <string>

namespace chartbridge {

class DoctorReport;

/// Looks at what the Java classes run on: the JVM, its class path, its fonts, and the guard.
class DoctorMachineCheck {
 public:
  /// Both must outlive the check.
  DoctorMachineCheck(JNIEnv* env, DoctorReport& report) : _env(env), _report(report) {}

  /// Which JVM it is.
  void CheckJava();
  /// Whether each entry of the class path is there and can be read. The JVM passes over others in
  /// silence.
  void CheckClassPath();
  /// Whether Java has a font for each of its standard families.
  void CheckFonts();
  /// Whether the guard stands before the JVM, and what it caught so far.
  void CheckGuard();

 private:
  std::string WhyUnreadable(const std::string& entry);
  std::string WhyNoJar(const std::string& file);
  std::string WhyUnusableFont(const char* family);

  JNIEnv* _env;
  DoctorReport& _report;
};

}  // namespace chartbridge

#endif  // APP_DOCTORMACHINECHECK_H_
