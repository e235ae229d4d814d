// SPDX-License-Identifier: Apache-2.0
#ifndef CHART_JCHARTIMAGER_H_
#define CHART_JCHARTIMAGER_H_

#include <jni.h>

#include <string>

#include "bridge/JAccessor.h"

/// The binding to one Java object of com.tesk.charteditor.ChartImager.
///
/// Texts come as UTF-16 units and their number, bytes as strings that are copied unchanged. No
/// method locks, attaches or guards the floating-point environment: `ViZEditor` has done all that
/// and pushed the calling thread's env. A Java failure is recorded by the exception check and shows
/// as the method's failure value.
class JChartImager : public JAccessor {
 public:
  /// Finds the Java class and makes its object. A failure is recorded and leaves the object null.
  explicit JChartImager(JNIEnv* env);
  ~JChartImager() override;

  JChartImager(const JChartImager&) = delete;
  JChartImager& operator=(const JChartImager&) = delete;

  /// Java `RenderToFile`, or `RenderImageMapToFile` for the image-map type, with the data as a
  /// direct buffer. False also when the JVM cannot make the direct buffer; Java is not called then.
  bool RenderToFile(const std::string& chart, const unsigned char* data, unsigned long dataLength,
                    const jchar* path, int pathLength, int imageType, double size,
                    const std::string& auxBytes1, const std::string& auxBytes2,
                    const jchar* auxText1, int auxText1Length, const jchar* auxText2,
                    int auxText2Length, bool flag);

  /// Java `RenderToFile` with the data as a `byte[]`, whatever the image type.
  bool RenderToFile(const std::string& chart, const std::string& data, const jchar* path,
                    int pathLength, int imageType, double size, const std::string& auxBytes1,
                    const std::string& auxBytes2, const jchar* auxText1, int auxText1Length,
                    const jchar* auxText2, int auxText2Length);

  /// Java `RenderToMem`. Replaces `output` when Java returns bytes; true when `output` is not empty
  /// afterwards. `imageSize` is neither read nor written.
  bool RenderToMem(const std::string& chart, const std::string& data, unsigned int& imageSize,
                   int imageType, std::string& output, double size, const std::string& auxBytes1,
                   const std::string& auxBytes2, const jchar* auxText1, int auxText1Length,
                   const jchar* auxText2, int auxText2Length);

  /// Java `RenderImageMapToMemory`. The first block goes into `output1`; for the image-map type the
  /// second and third go into `output2` and `output3`. True when `output1` is not empty afterwards.
  bool RenderImageMapToMemory(const std::string& chart, const unsigned char* data,
                              unsigned long dataLength, int imageType, std::string& output1,
                              double size, std::string& output2, std::string& output3, bool flag,
                              const std::string& auxBytes1, const std::string& auxBytes2,
                              const jchar* auxText1, int auxText1Length, const jchar* auxText2,
                              int auxText2Length);

  /// Java `EmbedHistogramInGraph` over the host's own memory. Empty when Java returns null or
  /// cannot be called.
  std::string EmbedHistogramInGraph(const std::string& first, const std::string& second,
                                    unsigned char* histogram, unsigned long histogramLength,
                                    unsigned int count);

  /// Java `ConvertImage`.
  bool ConvertImage(const std::string& image, const jchar* path, int pathLength, int imageType);

  /// Java `ApplyStyleSheet`. Replaces `document` by the result; true when that has at least one
  /// byte.
  bool ApplyStyleSheet(std::string& document, const std::string& styleSheet);
};

#endif  // CHART_JCHARTIMAGER_H_
