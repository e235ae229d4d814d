// SPDX-License-Identifier: Apache-2.0
#ifndef PLATFORM_CHARTTRANSFORMER_H_
#define PLATFORM_CHARTTRANSFORMER_H_

#include <memory>
#include <string>

/// A chart that templates can be applied to. The host supplies it.
///
/// Each object is used by one thread, a Java thread that applies a template; any number of them may
/// have one at the same time. A failure is any C++ exception: the library catches it, and Java gets
/// the empty text.
class ChartTransformer {
 public:
  /// Loads the chart from its XML. The text comes from Java and is in modified UTF-8.
  explicit ChartTransformer(const std::string& chart);
  ~ChartTransformer();

  ChartTransformer(const ChartTransformer&) = delete;
  ChartTransformer& operator=(const ChartTransformer&) = delete;

  /// Applies a chart template, an XML text in modified UTF-8.
  void applyTemplate(const std::string& templ);

  /// The whole chart as XML in the encoding of that zero-terminated UTF-16 name. The library asks
  /// for `ChartBase::_utf8` and hands the bytes to Java's `NewStringUTF`, which takes modified
  /// UTF-8. An empty text counts as a failure.
  std::string getEntireXML(const unsigned short* encoding);

 private:
  class Impl;
  std::unique_ptr<Impl> _impl;
};

#endif  // PLATFORM_CHARTTRANSFORMER_H_
