// SPDX-License-Identifier: Apache-2.0
#ifndef CONVERT_GRAPHBOARDCONVERTER_H_
#define CONVERT_GRAPHBOARDCONVERTER_H_

#include <string>

#include "bridge/Export.h"

/// Turns client chart templates into chart XML and applies style sheets to chart XML, through the
/// Java class com.tesk.vizconverter.VizConverter.
///
/// A singleton that is never started or stopped: each conversion starts the JVM if it does not run,
/// attaches the calling thread and makes a Java object of its own. Conversions take no lock and
/// share one binding, so the host must not let two of them overlap. The caller's floating-point
/// environment is kept. C++ exceptions of the host's platform code propagate.
///
/// The bytes go through unchanged both ways.
class CHARTBRIDGE_EXPORT graphBoardConverter {
 public:
  /// The one converter, created on first use under the lock `TeskJVM::CritSect()`.
  static graphBoardConverter* GetInstance();

  /// A converter with a binding of its own. Hosts take the one of `GetInstance`.
  graphBoardConverter();
  /// Destroys the one converter, also when called on another, and leaves none.
  ///
  /// The registration is cleared first, so that the destruction ends after one pass whichever
  /// object it began with. Each converter frees its own binding. Takes no lock.
  ~graphBoardConverter();

  graphBoardConverter(const graphBoardConverter&) = delete;
  graphBoardConverter& operator=(const graphBoardConverter&) = delete;

  /// A client template as chart XML. Calls Java `graphBoardConverterToXml`. Empty when the JVM does
  /// not start, Java throws (that is in the dump file) or Java returns null.
  std::string ConvertClientViZTemplate(const std::string& templ);

  /// A style sheet applied to a chart. Calls Java `graphBoardApplyStyleSheet` with both documents
  /// in the order given. Empty on failure, as above.
  std::string applyStyleSheet(const std::string& first, const std::string& second);

  /// The one converter, or null.
  static graphBoardConverter* _instance;

 private:
  class CHARTBRIDGE_HIDDEN Data;

  Data* data;
};

#endif  // CONVERT_GRAPHBOARDCONVERTER_H_
