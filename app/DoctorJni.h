// SPDX-License-Identifier: Apache-2.0
#ifndef APP_DOCTORJNI_H_
#define APP_DOCTORJNI_H_

#include <jni.h>

#include <string>

namespace chartbridge {

/// A Java text in UTF-8; empty for null.
std::string DoctorText(JNIEnv* env, jstring text);

/// A new Java text of one in UTF-8. Null, and no exception pending, when it cannot be made.
jstring DoctorString(JNIEnv* env, const std::string& text);

/// What the method without parameters gives; null, and no exception pending, when it fails.
jobject DoctorCall(JNIEnv* env, jobject object, const char* method, const char* signature);

/// As `DoctorCall`, for a method that gives a text.
std::string DoctorCallForText(JNIEnv* env, jobject object, const char* method);

/// A property of the JVM, such as "java.home"; empty when there is none.
std::string DoctorProperty(JNIEnv* env, const char* name);

}  // namespace chartbridge

#endif  // APP_DOCTORJNI_H_
