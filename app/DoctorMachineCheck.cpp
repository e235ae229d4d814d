// SPDX-License-Identifier: Apache-2.0
#include "app/DoctorMachineCheck.h"

#include <cstddef>
#include <filesystem>
#include <sstream>
#include <system_error>

#include "app/DoctorGuard.h"
#include "app/DoctorJavaError.h"
#include "app/DoctorJni.h"
#include "app/DoctorReport.h"
#include "host/LocalFrame.h"

namespace chartbridge {

namespace {

// Families that every Java has a name for, whatever fonts are there.
constexpr const char* kFamilies[] = {"SansSerif", "Serif", "Monospaced"};
constexpr const char* kSampleText = "Axis 0123";
constexpr jint kAllGlyphsThere = -1;
constexpr jint kPointSize = 12;

DoctorFinding Warning(DoctorArea area, const std::string& subject, const std::string& detail) {
  return {DoctorStatus::kWarning, area, subject, detail};
}

}  // namespace

void DoctorMachineCheck::CheckJava() {
  const LocalFrame frame;
  const std::string version = DoctorProperty(_env, "java.version");
  const std::string machine = DoctorProperty(_env, "java.vm.name");
  const std::string home = DoctorProperty(_env, "java.home");
  _report.SetJava(version, machine, home);
  _report.Add({DoctorStatus::kOk, DoctorArea::kJava, "Java " + version, machine + " in " + home});
}

void DoctorMachineCheck::CheckClassPath() {
  const LocalFrame frame;
  std::size_t readable = 0;
  std::size_t count = 0;
  std::istringstream entries(DoctorProperty(_env, "java.class.path"));
  for (std::string entry; std::getline(entries, entry, ':');) {
    if (entry.empty()) continue;
    ++count;
    const std::string why = WhyUnreadable(entry);
    if (why.empty()) {
      ++readable;
    } else {
      _report.Add(Warning(DoctorArea::kClassPath, "class path: " + entry, why));
    }
  }
  const std::string detail =
      std::to_string(readable) + " of " + std::to_string(count) + " entries can be read";
  const bool hasAny = readable > 0;
  _report.Add({hasAny ? DoctorStatus::kOk : DoctorStatus::kWarning, DoctorArea::kClassPath,
               "class path", detail});
}

std::string DoctorMachineCheck::WhyUnreadable(const std::string& entry) {
  std::error_code error;
  if (std::filesystem::is_directory(entry, error)) return "";
  if (std::filesystem::exists(entry, error)) return WhyNoJar(entry);
  const bool isPattern = entry.back() == '*';
  return isPattern ? "only the java command takes a * for all jars; name each jar"
                   : "does not exist";
}

std::string DoctorMachineCheck::WhyNoJar(const std::string& file) {
  const LocalFrame frame;
  jclass type = _env->FindClass("java/util/zip/ZipFile");
  if (const auto error = DoctorJavaError::Take(_env)) return error->Text();
  jmethodID open = _env->GetMethodID(type, "<init>", "(Ljava/lang/String;)V");
  jmethodID close = _env->GetMethodID(type, "close", "()V");
  if (const auto error = DoctorJavaError::Take(_env)) return error->Text();
  jstring path = DoctorString(_env, file);
  jobject jar = path == nullptr ? nullptr : _env->NewObject(type, open, path);
  if (const auto error = DoctorJavaError::Take(_env)) return "is no jar: " + error->Message();
  if (jar == nullptr) return "its name is not UTF-8";
  _env->CallVoidMethod(jar, close);
  DoctorJavaError::Take(_env);
  return "";
}

void DoctorMachineCheck::CheckFonts() {
  for (const char* family : kFamilies) {
    const LocalFrame frame;
    const std::string why = WhyUnusableFont(family);
    const DoctorStatus status = why.empty() ? DoctorStatus::kOk : DoctorStatus::kFailed;
    _report.Add({status, DoctorArea::kFonts, std::string("font ") + family, why});
    // Java's font system, once broken, stays so.
    if (!why.empty()) return;
  }
}

std::string DoctorMachineCheck::WhyUnusableFont(const char* family) {
  jclass type = _env->FindClass("java/awt/Font");
  if (const auto error = DoctorJavaError::Take(_env)) return error->Text();
  jmethodID make = _env->GetMethodID(type, "<init>", "(Ljava/lang/String;II)V");
  jmethodID canDisplay = _env->GetMethodID(type, "canDisplayUpTo", "(Ljava/lang/String;)I");
  if (const auto error = DoctorJavaError::Take(_env)) return error->Text();
  jstring name = _env->NewStringUTF(family);
  jstring sample = _env->NewStringUTF(kSampleText);
  if (const auto error = DoctorJavaError::Take(_env)) return error->Text();
  jobject font = _env->NewObject(type, make, name, jint{0}, kPointSize);
  if (const auto error = DoctorJavaError::Take(_env)) return error->Text();
  const jint missing = _env->CallIntMethod(font, canDisplay, sample);
  if (const auto error = DoctorJavaError::Take(_env)) return error->Text();
  return missing == kAllGlyphsThere ? "" : "has no letters or digits";
}

void DoctorMachineCheck::CheckGuard() {
  const DoctorGuard guard;
  if (!guard.IsActive()) {
    _report.Add(Warning(DoctorArea::kGuard, "guard",
                        "not active; some operations of the library end the process without it"));
    return;
  }
  const std::string caught = guard.Caught().empty() ? "no wrong call" : guard.Caught();
  _report.Add({DoctorStatus::kOk, DoctorArea::kGuard, "guard", "active, caught " + caught});
}

}  // namespace chartbridge
