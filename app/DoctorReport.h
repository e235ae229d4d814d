// SPDX-License-Identifier: Apache-2.0
#ifndef APP_DOCTORREPORT_H_
#define APP_DOCTORREPORT_H_

#include <cstddef>
#include <string>
#include <vector>

#include "app/DoctorFinding.h"
#include "app/DoctorOutput.h"

namespace chartbridge {

/// How the findings are shown.
enum class DoctorStyle {
  /// A line for each finding, when it is made, and a summary.
  kLines,
  /// The same without the findings that are ok.
  kQuiet,
  /// One JSON document at the end.
  kJson
};

/// The findings of `chartbridge doctor` and how they are shown.
class DoctorReport {
 public:
  /// `output` must outlive the report.
  DoctorReport(const DoctorOutput& output, DoctorStyle style) : _output(output), _style(style) {}

  void Add(DoctorFinding finding);
  /// Says which Java it is about; part of the JSON document.
  void SetJava(const std::string& version, const std::string& machine, const std::string& home);
  /// Shows the summary, or the JSON document.
  void Finish() const;

  /// Whether nothing is missing and nothing failed.
  bool IsSound() const;
  /// Such as "52 checks: 51 ok, 1 missing, 0 failed, 0 warnings".
  std::string Summary() const;

 private:
  std::size_t Count(DoctorStatus status) const;
  std::string Json() const;

  const DoctorOutput& _output;
  DoctorStyle _style;
  std::vector<DoctorFinding> _findings;
  std::string _javaVersion;
  std::string _javaMachine;
  std::string _javaHome;
};

}  // namespace chartbridge

#endif  // APP_DOCTORREPORT_H_
