// SPDX-License-Identifier: Apache-2.0
#ifndef CONVERT_JVIZCONVERTER_H_
#define CONVERT_JVIZCONVERTER_H_

#include <jni.h>

#include <string>

#include "bridge/JAccessor.h"
#include "convert/VizConverter.h"

/// The binding to one Java object of com.tesk.vizconverter.VizConverter.
class VizConverter::JVizConverter : public JAccessor {
 public:
  /// Finds the Java class and makes its object. A failure is recorded and leaves the object null.
  explicit JVizConverter(JNIEnv* env);
  ~JVizConverter() override;

  JVizConverter(const JVizConverter&) = delete;
  JVizConverter& operator=(const JVizConverter&) = delete;

  /// Java `ConvertGPL`. Null when it failed.
  jbyteArray convertGPL(const std::string& gpl);
  /// Java `ConvertXml`. Null when it failed.
  jbyteArray convertXml(const std::string& xml);
  /// Java `getErrorMessage` as UTF-8; empty when it answers null.
  std::string getErrorMessage();

 private:
  jbyteArray convert(const std::string& input, const char* method);
};

#endif  // CONVERT_JVIZCONVERTER_H_
