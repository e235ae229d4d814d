// SPDX-License-Identifier: Apache-2.0
#include "app/CurrentChart.h"

#include "app/ChartXml.h"
#include "app/ConverterSession.h"
#include "app/DumpFolder.h"
#include "app/Failure.h"
#include "app/InputFile.h"
#include "app/JavaFailure.h"
#include "app/NativeText.h"
#include "host/LocalFrame.h"

namespace chartbridge {

std::string CurrentChart(const InputFile& chart, JNIEnv* env, const DumpFolder& dumps) {
  const ConverterSession session(env);
  JavaFailure::ThrowIfNotStarted(dumps.NewRecords());

  const LocalFrame frame;
  VizConverter* converter = VizConverter::GetInstance();
  const std::string text = chart.Text();
  std::string xml;
  const bool isConverted =
      IsChartXml(text) ? converter->UpgradeXML(text, xml) : converter->GPLtoXML(text, xml);
  if (isConverted) return xml;
  const auto failure = JavaFailure::First(dumps.NewRecords());
  const std::string message = OnOneLine(converter->GetErrorMessage());
  const std::string reason = failure ? failure->Reason() : dumps.WhyEmpty();
  throw Failure(chart.Name() + ": " + (message.empty() ? reason : message),
                failure ? failure->Stack() : "");
}

}  // namespace chartbridge
