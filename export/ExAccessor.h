// SPDX-License-Identifier: Apache-2.0
#ifndef EXPORT_EXACCESSOR_H_
#define EXPORT_EXACCESSOR_H_

#include <jni.h>

#include <string>

#include "bridge/Export.h"
#include "bridge/JAccessor.h"

/// Creates, writes and exports output documents through one Java object of
/// com.tesk.java_client.ex_access.ExKvoAdapter.
///
/// Not a singleton: each `CreateInstance` makes a new exporter, and the newest is the current one.
/// Every operation attaches the calling thread, starts the JVM if it does not run, and then makes
/// the *current* exporter call Java through the thread's env, whichever exporter it was called on;
/// so use the newest only. No lock is taken and the floating-point environment is not kept: the
/// host serialises its exports. C++ exceptions of the host's platform code propagate.
class CHARTBRIDGE_EXPORT ExAccessor : public JAccessor {
 public:
  /// A new exporter, owned by the host, on the calling thread, which must stay attached while the
  /// exporter lives. Starts the JVM if it does not run. Null when the JVM does not start.
  static ExAccessor* CreateInstance();
  /// The newest exporter that was made, or null when that one is gone.
  static ExAccessor* GetCurrentInstance();
  /// Attaches the calling thread, starts the JVM if it does not run, and makes the current exporter
  /// call Java through the thread's env.
  static void createThread();

  /// Finds the Java class, makes its object (told whether the host is in UTF-8 mode) and becomes
  /// the current exporter, also when Java failed; that is in the dump file.
  explicit ExAccessor(JNIEnv* threadEnv);
  /// Leaves no current exporter when it was this one. Calls no Java.
  ~ExAccessor() override;

  ExAccessor(const ExAccessor&) = delete;
  ExAccessor& operator=(const ExAccessor&) = delete;

  /// Stores the env for the calls that follow.
  void setEnv(JNIEnv* threadEnv);

  /// What Java said of the last export, in UTF-8; empty when it went well.
  std::string getError() const;

  /// A new local reference to a text in the host's native encoding. Null when it is empty or cannot
  /// be converted.
  jstring newString(const std::string& text);

  /// Runs an export. Calls Java `exportOutput`.
  ///
  /// @param request what to export, in UTF-8
  /// @return whether the error text is empty. Java's answer replaces that text; a null answer, and
  ///     a Java exception, leave it as the export before left it, and that is empty on a new
  ///     exporter.
  bool ExportOutput(const std::string& request);

  /// Writes the output document to a file. Calls Java `writeOutputDocumentFile`.
  ///
  /// @param path the file, in the host's native encoding
  /// @param option1 passed to Java as its boolean
  /// @param option2 passed to Java as its int: 0 for true, 1 for false
  /// @return what Java answered; false, without a call, for a path that is empty or cannot be
  ///     converted
  bool WriteOutputDocumentFile(const std::string& path, bool option1, bool option2);

  /// Makes an output document. Calls Java `createOutputDocument`.
  ///
  /// @param content its bytes, which Java reads in place: they must stay unchanged during the call
  /// @param name its name, in the host's native encoding
  /// @return what Java answered; false, without a call, for a name that is empty or cannot be
  ///     converted, and when the JVM cannot share `content`
  bool CreateOutputDocument(const std::string& content, const std::string& name);

  /// The current exporter, or null.
  static ExAccessor* s_pCurrentInstance;

 private:
  std::string error;
};

#endif  // EXPORT_EXACCESSOR_H_
