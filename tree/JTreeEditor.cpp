// SPDX-License-Identifier: Apache-2.0
#include "tree/JTreeEditor.h"

#include "bridge/Marshalling.h"

using chartbridge::AssignElements;
using chartbridge::NewByteArray;
using chartbridge::NewJavaString;

namespace {

jboolean ToJava(bool flag) { return flag ? JNI_TRUE : JNI_FALSE; }

// Java's int takes the low 32 bits of what the host passes.
jint LowBits(long value) { return static_cast<jint>(value); }

}  // namespace

JTreeEditor::JTreeEditor(JNIEnv* threadEnv) : JAccessor(threadEnv) {
  setClass("com/tesk/treemodeleditor/TreeEditor");
  setMethod("<init>", "()V");
  setObject(jni()->NewObject(getClass(), getMethodID()));
  exceptionCheck();
}

JTreeEditor::~JTreeEditor() { setEnv(nullptr); }

void JTreeEditor::setNeedsRerendering(bool flag) {
  setMethod("setNeedsRerendering", "(Z)V");
  jni()->CallVoidMethod(getObject(), getMethodID(), ToJava(flag));
  exceptionCheck();
}

void JTreeEditor::setThreadId(long id) {
  setMethod("setThreadId", "(I)V");
  jni()->CallVoidMethod(getObject(), getMethodID(), LowBits(id));
  exceptionCheck();
}

void JTreeEditor::deActivate() {
  setMethod("deActivate", "()V");
  jni()->CallVoidMethod(getObject(), getMethodID());
  exceptionCheck();
}

void JTreeEditor::setDPI(long dpi) {
  setMethod("setDPI", "(I)V");
  jni()->CallVoidMethod(getObject(), getMethodID(), LowBits(dpi));
  exceptionCheck();
}

void JTreeEditor::close() {
  setMethod("close", "()V");
  jni()->CallVoidMethod(getObject(), getMethodID());
  exceptionCheck();
}

bool JTreeEditor::needsRerendering() {
  setMethod("needsRerendering", "()Z");
  const jboolean needed = jni()->CallBooleanMethod(getObject(), getMethodID());
  exceptionCheck();
  return needed != JNI_FALSE;
}

void JTreeEditor::setSchemaPath(const unsigned short* path, long length) {
  setMethod("setSchemaPath", "(Ljava/lang/String;)V");
  // No check between the string and the call, on purpose; the one after the call finds a failure.
  const jstring pathString = jni()->NewString(path, static_cast<jsize>(length));
  jni()->CallVoidMethod(getObject(), getMethodID(), pathString);
  exceptionCheck();
}

void JTreeEditor::renderPMMLToScreen(long p1, long p2, long p3, long p4, const std::string& model,
                                     const std::string& display) {
  const jbyteArray modelArray = NewByteArray(*this, model);
  const jbyteArray displayArray = NewByteArray(*this, display);
  setMethod("renderPMMLToScreen", "(IIII[B[B)V");
  jni()->CallVoidMethod(getObject(), getMethodID(), LowBits(p1), LowBits(p2), LowBits(p3),
                        LowBits(p4), modelArray, displayArray);
  exceptionCheck();
}

bool JTreeEditor::renderToFile(const std::string& model, const std::string& display,
                               const unsigned short* path, long length, TreeEditor::IMAGE_TYPE type,
                               bool flag) {
  const jbyteArray modelArray = NewByteArray(*this, model);
  const jbyteArray displayArray = NewByteArray(*this, display);
  const jstring pathString = NewJavaString(*this, path, static_cast<int>(length));
  setMethod("renderToFile", "([B[BLjava/lang/String;IZ)Z");
  const jboolean rendered =
      jni()->CallBooleanMethod(getObject(), getMethodID(), modelArray, displayArray, pathString,
                               static_cast<jint>(type), ToJava(flag));
  exceptionCheck();
  return rendered != JNI_FALSE;
}

bool JTreeEditor::calculateSizeArray(const std::string& model, const std::string& display,
                                     long& width, long& height) {
  // The method is looked up before the arrays are made, here and in the imager's namesake only.
  setMethod("calculateSizeArray", "([B[B)[J");
  const jbyteArray modelArray = NewByteArray(*this, model);
  const jbyteArray displayArray = NewByteArray(*this, display);
  const auto size = static_cast<jlongArray>(
      jni()->CallObjectMethod(getObject(), getMethodID(), modelArray, displayArray));
  exceptionCheck();
  return readSize(size, width, height);
}

bool JTreeEditor::getSizeArray(long& width, long& height) {
  setMethod("getSizeArray", "()[J");
  const auto size = static_cast<jlongArray>(jni()->CallObjectMethod(getObject(), getMethodID()));
  exceptionCheck();
  return readSize(size, width, height);
}

bool JTreeEditor::readSize(jlongArray array, long& width, long& height) {
  // Not tested for null, on purpose: the guard makes a null array read as empty.
  const jsize length = jni()->GetArrayLength(array);
  exceptionCheck();
  if (length < 2) return false;
  jlong* elements = jni()->GetLongArrayElements(array, nullptr);
  exceptionCheck();
  const bool given = elements != nullptr;
  if (given) {
    width = elements[0];
    height = elements[1];
  }
  jni()->ReleaseLongArrayElements(array, elements, JNI_ABORT);
  exceptionCheck();
  return given && width > 0 && height > 0;
}

std::string JTreeEditor::extractDisplayData() {
  setMethod("extractDisplayData", "()[B");
  const auto data = static_cast<jbyteArray>(jni()->CallObjectMethod(getObject(), getMethodID()));
  exceptionCheck();
  if (data == nullptr) return std::string();
  return readBytes(data);
}

std::string JTreeEditor::extractCompressedPMML() {
  setMethod("extractCompressedPMML", "()[B");
  // Unlike the display data, not tested for null, on purpose: the guard makes it read as empty.
  const auto pmml = static_cast<jbyteArray>(jni()->CallObjectMethod(getObject(), getMethodID()));
  exceptionCheck();
  return readBytes(pmml);
}

std::string JTreeEditor::readBytes(jbyteArray array) {
  std::string bytes;
  const jsize length = jni()->GetArrayLength(array);
  exceptionCheck();
  jbyte* elements = jni()->GetByteArrayElements(array, nullptr);
  exceptionCheck();
  AssignElements(bytes, elements, length);
  jni()->ReleaseByteArrayElements(array, elements, JNI_ABORT);
  exceptionCheck();
  return bytes;
}
