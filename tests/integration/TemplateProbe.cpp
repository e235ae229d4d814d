// SPDX-License-Identifier: Apache-2.0
// A host that is not linked with the library draws a chart that names a template, in a process of
// its own: template_probe FOLDER [LIBRARY]. With a library, it is loaded after the JVM has started.
#include <dlfcn.h>
#include <jni.h>

#include <iostream>
#include <string>

#include "host/JvmSettings.h"
#include "host/TemplateCallback.h"
#include "platform/TeskJVM.h"

namespace {

constexpr char kChart[] =
    "<chart xmlns=\"urn:chartbridge:chart:2\" template=\"house\"><data>a\nx\n</data>"
    "<elements><bar><x column=\"a\"/></bar></elements></chart>";

jbyteArray Bytes(JNIEnv* env, const std::string& text) {
  const auto length = static_cast<jsize>(text.size());
  jbyteArray array = env->NewByteArray(length);
  env->SetByteArrayRegion(array, 0, length, reinterpret_cast<const jbyte*>(text.data()));
  return array;
}

std::string TakeMessage(JNIEnv* env) {
  jthrowable thrown = env->ExceptionOccurred();
  if (thrown == nullptr) return "none";
  env->ExceptionClear();
  jmethodID toString =
      env->GetMethodID(env->GetObjectClass(thrown), "toString", "()Ljava/lang/String;");
  auto text = static_cast<jstring>(env->CallObjectMethod(thrown, toString));
  const char* chars = env->GetStringUTFChars(text, nullptr);
  const std::string message = chars;
  env->ReleaseStringUTFChars(text, chars);
  return message;
}

void Draw(JNIEnv* env) {
  jclass type = env->FindClass("com/tesk/charteditor/ChartImager");
  jobject imager = env->NewObject(type, env->GetMethodID(type, "<init>", "()V"));
  jmethodID render = env->GetMethodID(
      type, "RenderToMem", "([BLjava/nio/ByteBuffer;IDLjava/lang/String;[BLjava/lang/String;[B)[B");
  auto picture = static_cast<jbyteArray>(env->CallObjectMethod(
      imager, render, Bytes(env, kChart), nullptr, 5, 100.0, nullptr, nullptr, nullptr, nullptr));
  std::cout << "thrown=" << TakeMessage(env) << std::endl;
  std::cout << "drawn=" << (picture != nullptr) << std::endl;
}

bool LoadLibrary(JNIEnv* env, const char* path) {
  JavaVM* vm = nullptr;
  return dlopen(path, RTLD_NOW | RTLD_GLOBAL) != nullptr && env->GetJavaVM(&vm) == JNI_OK &&
         chartbridge::BindTemplateCallback(vm);
}

}  // namespace

int main(int count, char** arguments) {
  if (count < 2) return 2;
  chartbridge::JvmSettings settings;
  settings.classPath = {CHARTBRIDGE_TEST_RUNTIME_JAR};
  settings.options = {std::string("-Dchartbridge.templates=") + arguments[1]};
  chartbridge::SetJvmSettings(settings);
  if (!TeskJVM::GetInstance()->StartJVM()) return 3;
  JNIEnv* env = TeskJVM::GetInstance()->GetEnv();
  if (count > 2) std::cout << "bound=" << LoadLibrary(env, arguments[2]) << std::endl;
  Draw(env);
  return 0;
}
