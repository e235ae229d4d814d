// SPDX-License-Identifier: Apache-2.0
#include <jni.h>

#include <string>

#include "bridge/Export.h"
#include "platform/ChartBase.h"
#include "platform/ChartTransformer.h"

/// The native method `apply` of com.tesk.charteditor.template.ApplyTemplate: applies a chart
/// template to a chart and returns the whole resulting chart XML.
///
/// Runs on the calling Java thread with its env; takes no lock, attaches nothing and keeps no
/// floating-point environment, so many Java threads may be in it at once. Texts go to and from the
/// transformer as modified UTF-8, unconverted.
///
/// @return a new Java string, empty when an argument is null or Java does not give its text, when
///     the transformer throws and when it serialises to nothing; never an exception of its own
extern "C" CHARTBRIDGE_EXPORT jstring JNICALL
Java_com_tesk_charteditor_template_ApplyTemplate_apply(JNIEnv* env, jobject /*self*/,
                                                       jstring chartXml, jstring templateXml) {
  jboolean isCopy = JNI_FALSE;
  // Asking for the text of null ends the process on today's JVMs.
  const char* chart = chartXml == nullptr ? nullptr : env->GetStringUTFChars(chartXml, &isCopy);
  const char* templ =
      templateXml == nullptr ? nullptr : env->GetStringUTFChars(templateXml, &isCopy);
  jstring result = env->NewStringUTF("");
  if (chart != nullptr && templ != nullptr) {
    try {
      ChartTransformer transformer{std::string(chart)};
      transformer.applyTemplate(std::string(templ));
      const std::string xml = transformer.getEntireXML(ChartBase::_utf8);
      if (!xml.empty()) result = env->NewStringUTF(xml.c_str());
    } catch (...) {
      // A C++ exception must not unwind through the JVM's frames. Java sees the empty default, as
      // for every other failure.
    }
  }
  if (templ != nullptr) env->ReleaseStringUTFChars(templateXml, templ);
  if (chart != nullptr) env->ReleaseStringUTFChars(chartXml, chart);
  return result;
}
