// SPDX-License-Identifier: Apache-2.0
#include "json/jsonImager.h"

#include <cstddef>

#include "bridge/Marshalling.h"

using chartbridge::NewByteArray;
using chartbridge::NewJavaString;

jsonImager::jsonImager(JNIEnv* threadEnv) : JAccessor(threadEnv) {
  setClass("com/tesk/java_client/core/documents/output/export/JsonImager");
  setMethod("<init>", "()V");
  setObject(jni()->NewObject(getClass(), getMethodID()));
  exceptionCheck();
}

jsonImager::~jsonImager() { setEnv(nullptr); }

bool jsonImager::exportChartJsonToFile(const std::string& chart,
                                       const std::vector<std::string>& /*geoJson*/,
                                       const jchar* filePath, int filePathLength, int imageFormat,
                                       double /*size*/, const jchar* codepage, int codepageLength,
                                       bool isChartTemplate) {
  const jbyteArray chartArray = NewByteArray(*this, chart);
  const jstring filePathString = NewJavaString(*this, filePath, filePathLength);
  const jstring codepageString = NewJavaString(*this, codepage, codepageLength);
  setMethod("exportChartJsonToFile", "(Ljava/lang/String;[BZLjava/lang/String;I)Z");
  // A check after the lookup too, on purpose, here and in the other methods of this binding.
  exceptionCheck();
  const jboolean exported = jni()->CallBooleanMethod(
      getObject(), getMethodID(), codepageString, chartArray,
      static_cast<jboolean>(isChartTemplate), filePathString, static_cast<jint>(imageFormat));
  exceptionCheck();
  return exported != JNI_FALSE;
}

bool jsonImager::exportInteractiveJsonToFile(const std::string& chart, const jchar* jsonPath,
                                             int jsonPathLength, const jchar* options,
                                             int optionsLength, double /*size*/,
                                             const std::vector<std::string>& geoJson,
                                             const jchar* filePath, int filePathLength,
                                             int imageFormat, const jchar* codepage,
                                             int codepageLength) {
  for (std::size_t i = 0; i < geoJson.size(); ++i) addGeoJson(geoJson[i]);
  const jbyteArray chartArray = NewByteArray(*this, chart);
  const jstring optionsString = NewJavaString(*this, options, optionsLength);
  const jstring jsonPathString = NewJavaString(*this, jsonPath, jsonPathLength);
  const jstring filePathString = NewJavaString(*this, filePath, filePathLength);
  // Kept although it reaches no one: the language of an interactive chart is Java's to choose.
  const std::string locale("en_US");
  const jstring codepageString = NewJavaString(*this, codepage, codepageLength);
  setMethod("exportInteractiveJsonToFile",
            "(Ljava/lang/String;[BLjava/lang/String;Ljava/lang/String;Ljava/lang/String;I)Z");
  exceptionCheck();
  const jboolean exported = jni()->CallBooleanMethod(
      getObject(), getMethodID(), codepageString, chartArray, jsonPathString, optionsString,
      filePathString, static_cast<jint>(imageFormat));
  exceptionCheck();
  return exported != JNI_FALSE;
}

void jsonImager::addGeoJson(const std::string& document) {
  const jbyteArray array = NewByteArray(*this, document);
  setMethod("addGeoJson", "([B)V");
  exceptionCheck();
  jni()->CallVoidMethod(getObject(), getMethodID(), array);
  exceptionCheck();
}
