// SPDX-License-Identifier: Apache-2.0
#ifndef BRIDGE_JACCESSOR_H_
#define BRIDGE_JACCESSOR_H_

#include <jni.h>

#include <string>

#include "bridge/Export.h"

/// The base of every Java binding: one Java class, one object of it, the method that is about to be
/// called, and the env of the thread that calls it.
///
/// All references it holds are local references of the thread that made them. It makes no global
/// reference and releases nothing, so that thread must stay attached while the binding lives. It is
/// not thread-safe: its owner serialises the calls and pushes the calling thread's env with
/// `setEnv` first.
///
/// JNI failures never throw: they are looked for, recorded and cleared by `exceptionCheck()`, and
/// the caller goes on with the null or zero that the JNI call gave.
class CHARTBRIDGE_EXPORT JAccessor {
 public:
  /// @param threadEnv the calling thread's env; null makes every JNI call of the binding give null
  ///     or zero
  explicit JAccessor(JNIEnv* threadEnv);
  /// The copy shares the references.
  JAccessor(const JAccessor& other);
  /// Releases nothing: the references belong to their thread.
  virtual ~JAccessor();

  JAccessor& operator=(const JAccessor&) = delete;

  /// Stores the env for the calls that follow.
  void setEnv(JNIEnv* threadEnv);

  /// Looks up the Java class by its name with slashes and keeps it, even when it is null. Returns
  /// it.
  jclass setClass(const char* name);
  /// Looks up an instance method (or "<init>") of the class and keeps it, even when it is null.
  /// Returns it.
  ///
  /// Without a class nothing is looked up: the method of the last lookup stays and is returned.
  jmethodID setMethod(const char* name, const char* sig);
  /// As `setMethod`, for a static method.
  jmethodID setStaticMethod(const char* name, const char* sig);
  /// Keeps the object that the calls go to. May be null.
  void setObject(jobject newObject);

  /// The object of the last `setObject`, or null. A reference of the thread that made it.
  jobject getObject() const;
  /// The class of the last `setClass`, or null. A reference of the thread that looked it up.
  jclass getClass() const;
  /// The method of the last lookup, or null.
  jmethodID getMethodID() const;

  /// The env to call JNI through: the one of the last `setEnv`, or one that does nothing and
  /// returns zero where that is null.
  JNIEnv* jni() const;

  /// The text of a Java string in an encoding of ICU.
  ///
  /// @param s the string; null gives an empty text
  /// @param codepage the ICU name of the encoding; null is ICU's default converter
  ///
  /// The ICU converter stays open. Characters that the encoding lacks become its substitute; no
  /// error is reported.
  std::string FromJString(jstring s, const char* codepage) const;

  /// Looks for a pending Java exception and, if there is one, clears it, reads its message, type
  /// and stack trace through Java, and appends them to the dump file (`printDebugInfo`). Never
  /// throws for it.
  void exceptionCheck();

  /// `getMessage()` of the Java exception `t` of class `c`; empty when Java gives null. Checks for
  /// no exception of its own.
  std::string getExceptionMessage(jthrowable t, jclass c);
  /// `toString()` of the Java exception `t` of class `c`; empty when Java gives null. Checks for no
  /// exception of its own.
  std::string getExceptionType(jthrowable t, jclass c);
  /// What `printStackTrace` of the Java exception `t` of class `c` prints. Checks for no exception
  /// of its own.
  std::string getPrintStackTrace(jthrowable t, jclass c);

  /// Appends one record to the day's dump file, `$DumpChartTimePath/JNI_Exceptions_<Mon><dd>.txt`.
  ///
  /// Does nothing when the environment variable is unset; a file that cannot be opened is silently
  /// left out. Records of several processes may interleave.
  void printDebugInfo(const std::string& message);

 private:
  JNIEnv* env;
  jclass cls;
  jmethodID methodID;
  jobject object;
};

#endif  // BRIDGE_JACCESSOR_H_
