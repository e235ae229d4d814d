// SPDX-License-Identifier: Apache-2.0
#include "app/DoctorReport.h"

#include <algorithm>
#include <nlohmann/json.hpp>
#include <utility>

namespace chartbridge {

namespace {

using JsonValue = nlohmann::ordered_json;

constexpr int kIndent = 2;

std::string StatusName(DoctorStatus status) {
  switch (status) {
    case DoctorStatus::kOk:
      return "ok";
    case DoctorStatus::kWarning:
      return "warn";
    case DoctorStatus::kFailed:
      return "failed";
    case DoctorStatus::kMissing:
      return "missing";
  }
  return "";
}

/// What is wrong stands out from what is not.
std::string LineStart(DoctorStatus status) {
  switch (status) {
    case DoctorStatus::kOk:
      return "ok      ";
    case DoctorStatus::kWarning:
      return "warn    ";
    case DoctorStatus::kFailed:
      return "FAILED  ";
    case DoctorStatus::kMissing:
      return "MISSING ";
  }
  return "";
}

std::string AreaName(DoctorArea area) {
  switch (area) {
    case DoctorArea::kJava:
      return "java";
    case DoctorArea::kGuard:
      return "guard";
    case DoctorArea::kClassPath:
      return "classpath";
    case DoctorArea::kFonts:
      return "fonts";
    case DoctorArea::kContract:
      return "contract";
    case DoctorArea::kTemplates:
      return "templates";
    case DoctorArea::kPictures:
      return "pictures";
  }
  return "";
}

JsonValue JsonOf(const DoctorFinding& finding) {
  JsonValue json = {{"status", StatusName(finding.status)},
                    {"area", AreaName(finding.area)},
                    {"subject", finding.subject}};
  if (!finding.detail.empty()) json["detail"] = finding.detail;
  if (!finding.className.empty()) json["class"] = finding.className;
  if (!finding.method.empty()) json["method"] = finding.method;
  if (!finding.signature.empty()) json["signature"] = finding.signature;
  return json;
}

}  // namespace

void DoctorReport::Add(DoctorFinding finding) {
  const bool shown = _style == DoctorStyle::kLines ||
                     (_style == DoctorStyle::kQuiet && finding.status != DoctorStatus::kOk);
  if (shown) {
    const std::string detail = finding.detail.empty() ? "" : ": " + finding.detail;
    _output.Write(LineStart(finding.status) + finding.subject + detail + "\n");
  }
  _findings.push_back(std::move(finding));
}

void DoctorReport::SetJava(const std::string& version, const std::string& machine,
                           const std::string& home) {
  _javaVersion = version;
  _javaMachine = machine;
  _javaHome = home;
}

void DoctorReport::Finish() const {
  _output.Write((_style == DoctorStyle::kJson ? Json() : Summary()) + "\n");
}

bool DoctorReport::IsSound() const {
  return Count(DoctorStatus::kMissing) == 0 && Count(DoctorStatus::kFailed) == 0;
}

std::string DoctorReport::Summary() const {
  const std::size_t warnings = Count(DoctorStatus::kWarning);
  return std::to_string(_findings.size()) + " checks: " + std::to_string(Count(DoctorStatus::kOk)) +
         " ok, " + std::to_string(Count(DoctorStatus::kMissing)) + " missing, " +
         std::to_string(Count(DoctorStatus::kFailed)) + " failed, " + std::to_string(warnings) +
         (warnings == 1 ? " warning" : " warnings");
}

std::size_t DoctorReport::Count(DoctorStatus status) const {
  return static_cast<std::size_t>(
      std::count_if(_findings.begin(), _findings.end(),
                    [status](const DoctorFinding& finding) { return finding.status == status; }));
}

std::string DoctorReport::Json() const {
  JsonValue json;
  json["sound"] = IsSound();
  json["java"] = nullptr;
  if (!_javaVersion.empty()) {
    json["java"] = {{"version", _javaVersion}, {"vm", _javaMachine}, {"home", _javaHome}};
  }
  json["checks"] = JsonValue::array();
  for (const DoctorFinding& finding : _findings) json["checks"].push_back(JsonOf(finding));
  json["summary"] = {{"ok", Count(DoctorStatus::kOk)},
                     {"missing", Count(DoctorStatus::kMissing)},
                     {"failed", Count(DoctorStatus::kFailed)},
                     {"warn", Count(DoctorStatus::kWarning)}};
  // Texts of Java and of the system may hold anything.
  return json.dump(kIndent, ' ', false, JsonValue::error_handler_t::replace);
}

}  // namespace chartbridge
