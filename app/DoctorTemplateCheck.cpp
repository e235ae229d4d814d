// SPDX-License-Identifier: Apache-2.0
#include "app/DoctorTemplateCheck.h"

#include "app/DoctorJavaError.h"
#include "app/DoctorReport.h"
#include "host/LocalFrame.h"

namespace chartbridge {

namespace {

constexpr const char* kMethod = "apply";
constexpr const char* kSignature = "(Ljava/lang/String;Ljava/lang/String;)Ljava/lang/String;";
constexpr const char* kChart = "<chart xmlns=\"urn:chartbridge:chart:2\"/>";
constexpr const char* kTemplate = "<template xmlns=\"urn:chartbridge:template:1\"/>";

}  // namespace

void DoctorTemplateCheck::Apply(const std::string& className) {
  const LocalFrame frame;
  const std::string why = WhyNoAnswer(className);
  _report.Add({why.empty() ? DoctorStatus::kOk : _severity, DoctorArea::kTemplates,
               "Java's call of the library to apply a chart template", why});
}

std::string DoctorTemplateCheck::WhyNoAnswer(const std::string& className) {
  jclass type = _env->FindClass(className.c_str());
  if (const auto error = DoctorJavaError::Take(_env)) return error->Text();
  jstring chart = _env->NewStringUTF(kChart);
  jstring templ = _env->NewStringUTF(kTemplate);
  if (const auto error = DoctorJavaError::Take(_env)) return error->Text();
  // A host's class may have it either way; not finding it leaves an exception.
  jmethodID instanceMethod = _env->GetMethodID(type, kMethod, kSignature);
  DoctorJavaError::Take(_env);
  jstring result = Call(type, instanceMethod, chart, templ);
  if (const auto error = DoctorJavaError::Take(_env)) {
    const bool isUnlinked = error->Type() == "java.lang.UnsatisfiedLinkError";
    return (isUnlinked ? "Java does not find the library: " : "") + error->Text();
  }
  if (result == nullptr || _env->GetStringUTFLength(result) == 0) return "answered nothing";
  return "";
}

jstring DoctorTemplateCheck::Call(jclass type, jmethodID instanceMethod, jstring chart,
                                  jstring templ) {
  if (instanceMethod != nullptr) {
    // The library does not look at the object, so that one without a constructor's work does.
    jobject object = _env->AllocObject(type);
    if (_env->ExceptionCheck() == JNI_TRUE) return nullptr;
    return static_cast<jstring>(_env->CallObjectMethod(object, instanceMethod, chart, templ));
  }
  jmethodID staticMethod = _env->GetStaticMethodID(type, kMethod, kSignature);
  if (_env->ExceptionCheck() == JNI_TRUE) return nullptr;
  return static_cast<jstring>(_env->CallStaticObjectMethod(type, staticMethod, chart, templ));
}

}  // namespace chartbridge
