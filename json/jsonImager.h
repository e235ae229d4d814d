// SPDX-License-Identifier: Apache-2.0
#ifndef JSON_JSONIMAGER_H_
#define JSON_JSONIMAGER_H_

#include <jni.h>

#include <string>
#include <vector>

#include "bridge/JAccessor.h"

/// The binding to one Java object of com.tesk.java_client.core.documents.output.export.JsonImager.
///
/// Texts come as UTF-16 units and their number. No method locks, attaches or guards the
/// floating-point environment.
class jsonImager : public JAccessor {
 public:
  /// Finds the Java class and makes its object. A failure is recorded and leaves the object null.
  explicit jsonImager(JNIEnv* threadEnv);
  ~jsonImager() override;

  jsonImager(const jsonImager&) = delete;
  jsonImager& operator=(const jsonImager&) = delete;

  /// Java `exportChartJsonToFile`. `geoJson` and `size` do not reach Java.
  bool exportChartJsonToFile(const std::string& chart, const std::vector<std::string>& geoJson,
                             const jchar* filePath, int filePathLength, int imageFormat,
                             double size, const jchar* codepage, int codepageLength,
                             bool isChartTemplate);

  /// Java `addGeoJson` for each document, then `exportInteractiveJsonToFile`. `size` does not reach
  /// Java.
  bool exportInteractiveJsonToFile(const std::string& chart, const jchar* jsonPath,
                                   int jsonPathLength, const jchar* options, int optionsLength,
                                   double size, const std::vector<std::string>& geoJson,
                                   const jchar* filePath, int filePathLength, int imageFormat,
                                   const jchar* codepage, int codepageLength);

 private:
  void addGeoJson(const std::string& document);
};

#endif  // JSON_JSONIMAGER_H_
