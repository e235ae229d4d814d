// SPDX-License-Identifier: Apache-2.0
#ifndef APP_DOCTORTEMPLATECHECK_H_
#define APP_DOCTORTEMPLATECHECK_H_

#include <jni.h>

#include <string>

#include "app/DoctorFinding.h"

namespace chartbridge {

class DoctorReport;

/// Calls the library from Java, as the Java classes do to apply a chart template.
class DoctorTemplateCheck {
 public:
  /// Both must outlive the check.
  ///
  /// @param severity what it means when the library does not answer
  DoctorTemplateCheck(JNIEnv* env, DoctorReport& report, DoctorStatus severity)
      : _env(env), _report(report), _severity(severity) {}

  /// @param className the class of the native method `apply`, with slashes, found before
  void Apply(const std::string& className);

 private:
  std::string WhyNoAnswer(const std::string& className);
  jstring Call(jclass type, jmethodID instanceMethod, jstring chart, jstring templ);

  JNIEnv* _env;
  DoctorReport& _report;
  DoctorStatus _severity;
};

}  // namespace chartbridge

#endif  // APP_DOCTORTEMPLATECHECK_H_
