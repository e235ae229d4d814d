// SPDX-License-Identifier: Apache-2.0
#include "bridge/JAccessor.h"

#include <sys/timeb.h>
#include <unicode/ucnv.h>

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <ctime>
#include <fstream>
#include <iomanip>
#include <memory>

#include "bridge/FloatEnvGuard.h"
#include "bridge/NullEnv.h"

namespace {

// Seconds and milliseconds of one clock reading. glibc calls ftime obsolete; it is what the
// records' milliseconds come from.
timeb ReadClock() {
  timeb now{};
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wdeprecated-declarations"
  ftime(&now);
#pragma GCC diagnostic pop
  return now;
}

std::string CallTextMethod(const JAccessor& accessor, jthrowable t, jclass c, const char* name) {
  const FloatEnvGuard guard;
  JNIEnv* jni = accessor.jni();
  const jmethodID method = jni->GetMethodID(c, name, "()Ljava/lang/String;");
  const auto text = static_cast<jstring>(jni->CallObjectMethod(t, method));
  return accessor.FromJString(text, nullptr);
}

}  // namespace

JAccessor::JAccessor(JNIEnv* threadEnv)
    : env(threadEnv), cls(nullptr), methodID(nullptr), object(nullptr) {}

JAccessor::JAccessor(const JAccessor& other) = default;

// The references belong to the thread that made them and stay valid as long as it is attached.
JAccessor::~JAccessor() = default;

void JAccessor::setEnv(JNIEnv* threadEnv) { env = threadEnv; }

jclass JAccessor::setClass(const char* name) {
  cls = jni()->FindClass(name);
  if (cls == nullptr) exceptionCheck();
  return cls;
}

jmethodID JAccessor::setMethod(const char* name, const char* sig) {
  // Without a class the method of the last lookup stays: the call that follows fails in Java, not
  // here.
  if (cls == nullptr) return methodID;
  methodID = jni()->GetMethodID(cls, name, sig);
  if (methodID == nullptr) exceptionCheck();
  return methodID;
}

jmethodID JAccessor::setStaticMethod(const char* name, const char* sig) {
  if (cls == nullptr) return methodID;
  methodID = jni()->GetStaticMethodID(cls, name, sig);
  if (methodID == nullptr) exceptionCheck();
  return methodID;
}

void JAccessor::setObject(jobject newObject) { object = newObject; }

jobject JAccessor::getObject() const { return object; }

jclass JAccessor::getClass() const { return cls; }

jmethodID JAccessor::getMethodID() const { return methodID; }

JNIEnv* JAccessor::jni() const { return env != nullptr ? env : chartbridge::NullEnv(); }

std::string JAccessor::FromJString(jstring s, const char* codepage) const {
  if (s == nullptr) return std::string();

  const jsize length = jni()->GetStringLength(s);
  const jchar* chars = jni()->GetStringChars(s, nullptr);
  std::string text;
  UErrorCode error = U_ZERO_ERROR;
  // The converter stays open and its error code untested, on purpose: the text is whatever could be
  // converted.
  UConverter* converter = ucnv_open(codepage, &error);
  // Units that Java does not give are none to ICU; only a codepage that it does not know would end
  // the process here.
  if (converter != nullptr) {
    const int32_t capacity = ucnv_getMaxCharSize(converter) * length + 1;
    const std::unique_ptr<char[]> buffer(new char[static_cast<std::size_t>(capacity)]);
    const int32_t bytes = ucnv_fromUChars(converter, buffer.get(), capacity,
                                          reinterpret_cast<const UChar*>(chars), length, &error);
    text.assign(buffer.get(), static_cast<std::size_t>(std::min(bytes, capacity)));
  }
  jni()->ReleaseStringChars(s, chars);
  return text;
}

void JAccessor::exceptionCheck() {
  const FloatEnvGuard guard;
  const jthrowable t = jni()->ExceptionOccurred();
  if (t == nullptr) return;

  // Nearly every JNI function is forbidden while an exception is pending.
  jni()->ExceptionClear();
  const jclass c = jni()->GetObjectClass(t);
  const std::string message = getExceptionMessage(t, c);
  const std::string type = getExceptionType(t, c);
  const std::string stack = getPrintStackTrace(t, c);
  printDebugInfo("JAccessor::exceptionCheck()\n  message: " + message + "\n  type: " + type +
                 "\n  stack: " + stack);
}

std::string JAccessor::getExceptionMessage(jthrowable t, jclass c) {
  return CallTextMethod(*this, t, c, "getMessage");
}

std::string JAccessor::getExceptionType(jthrowable t, jclass c) {
  return CallTextMethod(*this, t, c, "toString");
}

std::string JAccessor::getPrintStackTrace(jthrowable t, jclass c) {
  const FloatEnvGuard guard;
  const jclass bytesClass = jni()->FindClass("java/io/ByteArrayOutputStream");
  const jmethodID bytesInit = jni()->GetMethodID(bytesClass, "<init>", "()V");
  const jmethodID bytesToString =
      jni()->GetMethodID(bytesClass, "toString", "()Ljava/lang/String;");
  const jobject out = jni()->NewObject(bytesClass, bytesInit);

  const jclass printClass = jni()->FindClass("java/io/PrintStream");
  const jmethodID printInit = jni()->GetMethodID(printClass, "<init>", "(Ljava/io/OutputStream;)V");
  const jobject ps = jni()->NewObject(printClass, printInit, out);

  const jmethodID printStackTrace =
      jni()->GetMethodID(c, "printStackTrace", "(Ljava/io/PrintStream;)V");
  // A void method through the object-returning call form; the result means nothing and is not
  // looked at.
  jni()->CallObjectMethod(t, printStackTrace, ps);

  const auto text = static_cast<jstring>(jni()->CallObjectMethod(out, bytesToString));
  return FromJString(text, nullptr);
}

void JAccessor::printDebugInfo(const std::string& message) {
  const char* directory = std::getenv("DumpChartTimePath");
  if (directory == nullptr) return;

  std::string path = std::string(directory) + "/JNI_Exceptions_";
  const timeb now = ReadClock();
  // "Www Mmm dd hh:mm:ss yyyy\n"; a day below ten is padded with a space, which stays in the file's
  // name.
  const std::string t = std::ctime(&now.time);
  path += t.substr(4, 3) + t.substr(8, 2) + ".txt";

  std::ofstream file(path, std::ios::out | std::ios::app);
  file << " time = " << t.substr(11, 8) << "." << std::setw(3) << std::setfill('0') << now.millitm
       << " Message : " << message << std::endl;
  file.flush();
  file.close();
}
