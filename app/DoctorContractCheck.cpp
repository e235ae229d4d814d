// SPDX-License-Identifier: Apache-2.0
#include "app/DoctorContractCheck.h"

#include <strings.h>

#include <algorithm>

#include "app/DoctorJavaError.h"
#include "app/DoctorJni.h"
#include "app/DoctorReport.h"
#include "host/LocalFrame.h"
#include "platform/TESKMB.h"

namespace chartbridge {

namespace {

// java.lang.reflect.Modifier
constexpr jint kNativeModifier = 0x100;

std::string Counted(std::size_t count, const std::string& thing) {
  return std::to_string(count) + " " + thing + (count == 1 ? "" : "s");
}

/// "boolean close(int)" of what `java.lang.reflect` writes about a method or constructor.
std::string Declaration(std::string text, const std::string& className) {
  text = text.substr(0, text.find(" throws "));
  for (std::size_t at = text.find(className + "."); at != std::string::npos;
       at = text.find(className + ".")) {
    text.erase(at, className.size() + 1);
  }
  return WithoutPackages(text);
}

DoctorFinding FindingAbout(const JavaClass& type) {
  const std::string name = JavaName(type.name);
  return {DoctorStatus::kOk, DoctorArea::kContract, name, "", name, "", ""};
}

}  // namespace

void DoctorContractCheck::Run() {
  for (const JavaClass& type : JavaContract()) {
    const LocalFrame frame;
    Check(type);
  }
}

void DoctorContractCheck::Check(const JavaClass& type) {
  jclass found = Find(type);
  if (found == nullptr) return;
  _classes.insert(type.name);
  for (const JavaMethod& method : type.methods) {
    const LocalFrame frame;
    CheckMethod(type, found, method);
  }
}

bool DoctorContractCheck::IsUsable(const std::string& className,
                                   const std::vector<std::string>& methods) const {
  if (_classes.count(className) == 0 || _broken.count({className, "<init>"}) > 0) return false;
  return std::none_of(methods.begin(), methods.end(), [&](const std::string& method) {
    return _broken.count({className, method}) > 0;
  });
}

jclass DoctorContractCheck::Find(const JavaClass& type) {
  DoctorFinding finding = FindingAbout(type);
  jclass found = _env->FindClass(type.name.c_str());
  const auto error = DoctorJavaError::Take(_env);
  if (!error) {
    finding.detail = "for " + type.purpose;
    _report.Add(finding);
    return found;
  }
  const bool isAbsent =
      error->Type() == "java.lang.NoClassDefFoundError" && error->Message() == type.name;
  finding.status = isAbsent ? DoctorStatus::kMissing : DoctorStatus::kFailed;
  finding.detail = isAbsent ? "not in the class path; for " + type.purpose
                            : "there, but cannot be used: " + error->Text();
  finding.detail += " (" + Counted(type.methods.size(), "method") + " not looked for)";
  _report.Add(finding);
  return nullptr;
}

void DoctorContractCheck::CheckMethod(const JavaClass& type, jclass found,
                                      const JavaMethod& method) {
  DoctorFinding finding = FindingAbout(type);
  finding.subject += ": " + JavaDeclaration(type, method);
  finding.method = method.name;
  finding.signature = method.signature;

  const bool mayBeStatic = method.kind == JavaMethodKind::kNative;
  if (!Has(found, method, false) && !(mayBeStatic && Has(found, method, true))) {
    finding.status = DoctorStatus::kMissing;
    finding.detail = WhyMissing(found, method);
  } else if (method.kind == JavaMethodKind::kNative) {
    finding.detail = WhyNotNative(found, method);
    if (!finding.detail.empty()) finding.status = DoctorStatus::kMissing;
  } else if (method.kind == JavaMethodKind::kConstructor) {
    bool needsScreen = false;
    finding.detail = WhyNotMade(found, method, needsScreen);
    if (needsScreen) {
      finding.status = DoctorStatus::kWarning;
    } else if (!finding.detail.empty()) {
      finding.status = DoctorStatus::kFailed;
    }
  }
  _report.Add(finding);
  if (finding.status != DoctorStatus::kOk) _broken.insert({type.name, method.name});
}

bool DoctorContractCheck::Has(jclass found, const JavaMethod& method, bool isStatic) {
  const jmethodID id =
      isStatic ? _env->GetStaticMethodID(found, method.name.c_str(), method.signature.c_str())
               : _env->GetMethodID(found, method.name.c_str(), method.signature.c_str());
  return !DoctorJavaError::Take(_env) && id != nullptr;
}

std::string DoctorContractCheck::WhyMissing(jclass found, const JavaMethod& method) {
  if (method.kind == JavaMethodKind::kInstance && Has(found, method, true)) {
    return "is static; the library calls it on an object";
  }
  const std::string others = Others(found, method);
  return others.empty() ? "not there" : "not there; the class has " + others;
}

std::string DoctorContractCheck::WhyNotNative(jclass found, const JavaMethod& method) {
  const bool isStatic = !Has(found, method, false);
  const char* name = method.name.c_str();
  const char* signature = method.signature.c_str();
  const jmethodID id = isStatic ? _env->GetStaticMethodID(found, name, signature)
                                : _env->GetMethodID(found, name, signature);
  jobject reflected = _env->ToReflectedMethod(found, id, isStatic ? JNI_TRUE : JNI_FALSE);
  if (const auto error = DoctorJavaError::Take(_env)) return error->Text();
  jclass methodClass = _env->GetObjectClass(reflected);
  const jint modifiers =
      _env->CallIntMethod(reflected, _env->GetMethodID(methodClass, "getModifiers", "()I"));
  if (const auto error = DoctorJavaError::Take(_env)) return error->Text();
  if ((modifiers & kNativeModifier) != 0) return "";
  return "is not native, so that Java does not come to the library";
}

std::string DoctorContractCheck::WhyNotMade(jclass found, const JavaMethod& constructor,
                                            bool& needsScreen) {
  const jmethodID id = _env->GetMethodID(found, "<init>", constructor.signature.c_str());
  const bool takesUtf8Mode = constructor.signature == "(Z)V";
  const jboolean utf8Mode = qUTF8mode() ? JNI_TRUE : JNI_FALSE;
  if (takesUtf8Mode) {
    _env->NewObject(found, id, utf8Mode);
  } else {
    _env->NewObject(found, id);
  }
  const auto error = DoctorJavaError::Take(_env);
  if (!error) return "";
  needsScreen = error->Type() == "java.awt.HeadlessException";
  if (needsScreen) return "needs a screen, which this check does without";
  return "there, but fails: " + error->Text();
}

/// The methods of that name, in any letter case and with any parameters, of the class and those
/// that it extends.
std::string DoctorContractCheck::Others(jclass found, const JavaMethod& method) {
  const bool isConstructor = method.kind == JavaMethodKind::kConstructor;
  std::string others;
  for (jclass type = found; type != nullptr; type = _env->GetSuperclass(type)) {
    const std::string className = DoctorCallForText(_env, type, "getName");
    if (className == "java.lang.Object") break;
    auto* members =
        static_cast<jobjectArray>(isConstructor ? DoctorCall(_env, type, "getDeclaredConstructors",
                                                             "()[Ljava/lang/reflect/Constructor;")
                                                : DoctorCall(_env, type, "getDeclaredMethods",
                                                             "()[Ljava/lang/reflect/Method;"));
    const jsize count = members == nullptr ? 0 : _env->GetArrayLength(members);
    for (jsize index = 0; index < count; ++index) {
      const LocalFrame frame;
      jobject member = _env->GetObjectArrayElement(members, index);
      const std::string name = DoctorCallForText(_env, member, "getName");
      if (!isConstructor && strcasecmp(name.c_str(), method.name.c_str()) != 0) continue;
      if (!others.empty()) others += "; ";
      others += Declaration(DoctorCallForText(_env, member, "toString"), className);
    }
    if (isConstructor) break;
  }
  return others;
}

}  // namespace chartbridge
