// SPDX-License-Identifier: Apache-2.0
#ifndef APP_DOCTORFINDING_H_
#define APP_DOCTORFINDING_H_

#include <string>

namespace chartbridge {

/// What a check came to.
enum class DoctorStatus {
  kOk,
  /// Something that a host should know and that does not keep the library from working.
  kWarning,
  /// Something that is there and does not work.
  kFailed,
  /// Something that the library needs and that is not there.
  kMissing
};

/// What was looked at.
enum class DoctorArea { kJava, kGuard, kClassPath, kFonts, kContract, kTemplates, kPictures };

/// One check of `chartbridge doctor` and what it came to.
struct DoctorFinding {
  DoctorStatus status;
  DoctorArea area;
  /// What it is about, such as "com.tesk.charteditor.ChartImager" or "chart as PNG".
  std::string subject;
  /// What there is to say about it, on one line in UTF-8; may be empty.
  std::string detail;
  /// The class with dots, and the name and JNI signature of the method, of a finding about the
  /// contract. Empty otherwise, the latter two also in a finding about a class.
  std::string className{};
  std::string method{};
  std::string signature{};
};

}  // namespace chartbridge

#endif  // APP_DOCTORFINDING_H_
