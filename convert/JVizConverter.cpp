// SPDX-License-Identifier: Apache-2.0
#include "convert/JVizConverter.h"

#include "bridge/Marshalling.h"

VizConverter::JVizConverter::JVizConverter(JNIEnv* threadEnv) : JAccessor(threadEnv) {
  setClass("com/tesk/vizconverter/VizConverter");
  setMethod("<init>", "()V");
  setObject(jni()->NewObject(getClass(), getMethodID()));
  exceptionCheck();
}

VizConverter::JVizConverter::~JVizConverter() { setEnv(nullptr); }

jbyteArray VizConverter::JVizConverter::convertGPL(const std::string& gpl) {
  return convert(gpl, "ConvertGPL");
}

jbyteArray VizConverter::JVizConverter::convertXml(const std::string& xml) {
  return convert(xml, "ConvertXml");
}

jbyteArray VizConverter::JVizConverter::convert(const std::string& input, const char* method) {
  const jbyteArray array = chartbridge::NewByteArray(*this, input);
  setMethod(method, "([B)[B");
  const auto result =
      static_cast<jbyteArray>(jni()->CallObjectMethod(getObject(), getMethodID(), array));
  exceptionCheck();
  return result;
}

std::string VizConverter::JVizConverter::getErrorMessage() {
  std::string text;
  setMethod("getErrorMessage", "()Ljava/lang/String;");
  const auto message = static_cast<jstring>(jni()->CallObjectMethod(getObject(), getMethodID()));
  exceptionCheck();
  chartbridge::ReadTranscodedString(*this, message, text);
  return text;
}
