// SPDX-License-Identifier: Apache-2.0
#include "export/ExAccessor.h"

#include "bridge/Marshalling.h"
#include "bridge/UnicodeConverter.h"
#include "platform/TESKMB.h"
#include "platform/TeskJVM.h"

using chartbridge::NewDirectBuffer;
using chartbridge::NewJavaString;
using chartbridge::NewJavaStringFromNative;
using chartbridge::NewJavaStringFromUtf8;
using chartbridge::ReadTranscodedString;

ExAccessor* ExAccessor::s_pCurrentInstance = nullptr;

ExAccessor* ExAccessor::CreateInstance() {
  TeskJVM* jvm = TeskJVM::GetInstance();
  if (jvm == nullptr) return nullptr;
  if (jvm->IsStarted()) {
    createThread();
  } else if (!jvm->StartJVM()) {
    return nullptr;
  }
  JNIEnv* threadEnv = TeskJVM::GetInstance()->GetEnv();
  return new ExAccessor(threadEnv);
}

ExAccessor* ExAccessor::GetCurrentInstance() { return s_pCurrentInstance; }

void ExAccessor::createThread() {
  JNIEnv* threadEnv = nullptr;
  TeskJVM* jvm = TeskJVM::GetInstance();
  if (jvm != nullptr) {
    jvm->AttachCurrentThread(&threadEnv);
    // Whether it starts is seen by the calls that follow.
    if (!jvm->IsStarted()) jvm->StartJVM();
  }
  // Into the current exporter, not the one whose operation runs.
  if (s_pCurrentInstance != nullptr) s_pCurrentInstance->setEnv(threadEnv);
}

ExAccessor::ExAccessor(JNIEnv* threadEnv) : JAccessor(threadEnv) {
  setClass("com/tesk/java_client/ex_access/ExKvoAdapter");
  setMethod("<init>", "(Z)V");
  setObject(jni()->NewObject(getClass(), getMethodID(), static_cast<jboolean>(qUTF8mode())));
  exceptionCheck();
  s_pCurrentInstance = this;
}

ExAccessor::~ExAccessor() {
  setEnv(nullptr);
  if (s_pCurrentInstance == this) s_pCurrentInstance = nullptr;
}

void ExAccessor::setEnv(JNIEnv* threadEnv) { JAccessor::setEnv(threadEnv); }

std::string ExAccessor::getError() const { return error; }

jstring ExAccessor::newString(const std::string& text) {
  return NewJavaStringFromNative(*this, text);
}

bool ExAccessor::ExportOutput(const std::string& request) {
  createThread();
  const jstring requestString = NewJavaStringFromUtf8(*this, request);
  setMethod("exportOutput", "(Ljava/lang/String;)Ljava/lang/String;");
  const auto answer =
      static_cast<jstring>(jni()->CallObjectMethod(getObject(), getMethodID(), requestString));
  exceptionCheck();
  // A null answer keeps the text of the export before, on purpose: a failure stays a failure.
  ReadTranscodedString(*this, answer, error);
  return error.empty();
}

bool ExAccessor::WriteOutputDocumentFile(const std::string& path, bool option1, bool option2) {
  createThread();
  const UnicodeConverter path16(path);
  if (path16.length() == 0) return false;
  const jstring pathString =
      NewJavaString(*this, path16.toString(), static_cast<int>(path16.length()));
  setMethod("writeOutputDocumentFile", "(Ljava/lang/String;IZ)Z");
  exceptionCheck();
  // The second option comes first and inverted.
  const jint inverted = option2 ? 0 : 1;
  const jboolean written = jni()->CallBooleanMethod(getObject(), getMethodID(), pathString,
                                                    inverted, static_cast<jboolean>(option1));
  exceptionCheck();
  return written != JNI_FALSE;
}

bool ExAccessor::CreateOutputDocument(const std::string& content, const std::string& name) {
  createThread();
  // Made before the name is converted and tested only after it, on purpose.
  const jobject buffer = NewDirectBuffer(*this, content.data(), content.length());
  const UnicodeConverter name16(name);
  if (name16.length() == 0) return false;
  const jstring nameString =
      NewJavaString(*this, name16.toString(), static_cast<int>(name16.length()));
  if (buffer == nullptr) return false;
  setMethod("createOutputDocument", "(Ljava/nio/ByteBuffer;Ljava/lang/String;)Z");
  exceptionCheck();
  const jboolean created = jni()->CallBooleanMethod(getObject(), getMethodID(), buffer, nameString);
  exceptionCheck();
  return created != JNI_FALSE;
}
