// SPDX-License-Identifier: Apache-2.0
#ifndef CONVERT_VIZCONVERTER_H_
#define CONVERT_VIZCONVERTER_H_

#include <jni.h>

#include <string>

#include "bridge/Export.h"

/// Turns charts written in the graph language into chart XML, and chart XML of an older version
/// into the current one, through the Java class com.tesk.vizconverter.VizConverter.
///
/// A singleton. The host starts the JVM, calls `StartConverter` on a thread that stays attached,
/// and then converts from any thread; each operation attaches its thread and holds the process-wide
/// lock `TeskJVM::CritSect()` from begin to end. It never starts the JVM, and it does not keep the
/// floating-point environment: what Java changes stays changed.
///
/// The bytes go through unchanged both ways; the host and the Java class agree on the encoding.
class CHARTBRIDGE_EXPORT VizConverter {
 public:
  /// The one converter, created on first use under the lock. It lives until the host deletes it.
  static VizConverter* GetInstance();

  /// A converter that is not started. Hosts take the one of `GetInstance`.
  VizConverter();
  /// Deletes the binding if there is one. Takes no lock and leaves `s_pInstance` as it is.
  ~VizConverter();

  VizConverter(const VizConverter&) = delete;
  VizConverter& operator=(const VizConverter&) = delete;

  /// Creates the Java object on the thread of `env`, which must stay attached until `Stop`.
  ///
  /// Always true, also when the converter was started before (the first env is kept) and when Java
  /// failed (that is in the dump file, and every conversion then fails).
  bool StartConverter(JNIEnv* env);
  /// Whether `StartConverter` was called, and `Stop` was not called since.
  bool IsStarted();
  /// Drops the binding. Harmless when there is none.
  void Stop();
  /// Attaches the calling thread and makes the binding call Java through its env. Takes no lock;
  /// the conversions call it themselves.
  void SetEnv() const;

  /// Converts graph language to chart XML. Calls Java `ConvertGPL`.
  ///
  /// @param gpl the source
  /// @param xml replaced by the XML on success, untouched otherwise
  /// @return false when Java answers null or throws (ask `GetErrorMessage`), and when the converter
  ///     is not started
  bool GPLtoXML(const std::string& gpl, std::string& xml);

  /// Converts chart XML of an older version to the current one. Calls Java `ConvertXml`.
  ///
  /// @param oldXml the document
  /// @param newXml replaced by the current document on success, untouched otherwise
  /// @return as `GPLtoXML`
  bool UpgradeXML(const std::string& oldXml, std::string& newXml);

  /// Why the last conversion failed, as Java's `getErrorMessage` says it: UTF-8, empty when Java
  /// says nothing or the converter is not started.
  std::string GetErrorMessage() const;

  /// The one converter, or null. A host that deletes the converter and wants a new one sets this to
  /// null.
  static VizConverter* s_pInstance;

 private:
  class CHARTBRIDGE_HIDDEN JVizConverter;

  CHARTBRIDGE_HIDDEN bool convert(const std::string& input, std::string& output,
                                  jbyteArray (JVizConverter::*javaMethod)(const std::string&));

  JVizConverter* converter;
};

#endif  // CONVERT_VIZCONVERTER_H_
