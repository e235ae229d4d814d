// SPDX-License-Identifier: Apache-2.0
#ifndef APP_DOCTORCONTRACTCHECK_H_
#define APP_DOCTORCONTRACTCHECK_H_

#include <jni.h>

#include <set>
#include <string>
#include <utility>
#include <vector>

#include "app/JavaContract.h"

namespace chartbridge {

class DoctorReport;

/// Looks up every class, constructor and method that the library needs of Java, the way the library
/// does, and makes an object of each class.
///
/// Nothing is called on those objects. No JNI call is wrong whatever the classes are like, so it
/// needs no guard.
class DoctorContractCheck {
 public:
  /// Both must outlive the check.
  DoctorContractCheck(JNIEnv* env, DoctorReport& report) : _env(env), _report(report) {}

  void Run();

  /// Whether that class (with slashes), its object and all its methods of these names were there.
  bool IsUsable(const std::string& className, const std::vector<std::string>& methods) const;

 private:
  void Check(const JavaClass& type);
  jclass Find(const JavaClass& type);
  void CheckMethod(const JavaClass& type, jclass found, const JavaMethod& method);
  std::string WhyMissing(jclass found, const JavaMethod& method);
  std::string WhyNotNative(jclass found, const JavaMethod& method);
  std::string WhyNotMade(jclass found, const JavaMethod& constructor, bool& needsScreen);
  std::string Others(jclass found, const JavaMethod& method);
  bool Has(jclass found, const JavaMethod& method, bool isStatic);

  JNIEnv* _env;
  DoctorReport& _report;
  std::set<std::string> _classes;
  /// Of the classes that were found, what was not: the class and the method's name.
  std::set<std::pair<std::string, std::string>> _broken;
};

}  // namespace chartbridge

#endif  // APP_DOCTORCONTRACTCHECK_H_
