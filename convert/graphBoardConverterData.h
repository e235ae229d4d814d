// SPDX-License-Identifier: Apache-2.0
#ifndef CONVERT_GRAPHBOARDCONVERTERDATA_H_
#define CONVERT_GRAPHBOARDCONVERTERDATA_H_

#include <string>

#include "bridge/JAccessor.h"
#include "convert/graphBoardConverter.h"

class TeskJVM;

/// The binding of the template converter. It starts the JVM by itself and makes a new object of
/// com.tesk.vizconverter.VizConverter for each conversion.
class graphBoardConverter::Data : public JAccessor {
 public:
  /// Touches neither the JVM nor Java.
  Data();
  ~Data() override;

  Data(const Data&) = delete;
  Data& operator=(const Data&) = delete;

  /// Starts the JVM if it does not run and attaches the calling thread. False when the host has no
  /// JVM object or the JVM does not start.
  bool startJVM();
  /// Attaches the calling thread and makes the binding call Java through its env.
  void SetEnv() const;
  /// Finds the Java class and makes a new object of it. Always true; a failure is recorded.
  bool initClass();

  /// Java `graphBoardConverterToXml`. False, with `out` untouched, when Java gives null.
  bool convertToXML(const std::string& in, std::string& out);
  /// Java `graphBoardApplyStyleSheet`. Empty when Java gives null.
  std::string applyStyleSheet(const std::string& first, const std::string& second);

 private:
  TeskJVM* host;
  JAccessor* accessor;
};

#endif  // CONVERT_GRAPHBOARDCONVERTERDATA_H_
