// SPDX-License-Identifier: Apache-2.0
#include "app/TemplateFile.h"

#include <memory>
#include <stdexcept>

#include "app/Failure.h"
#include "app/NativeText.h"
#include "app/XmlText.h"
#include "platform/ChartBase.h"
#include "platform/ChartTransformer.h"

namespace chartbridge {

namespace {

/// Lets the exceptions of `work` say which document they are about.
template <typename Work>
auto Naming(const std::string& name, Work work) {
  try {
    return work();
  } catch (const std::runtime_error& error) {
    throw Failure(name + ": " + OnOneLine(error.what()));
  }
}

}  // namespace

std::string TemplateFile::ApplyTo(const std::string& chart, const std::string& chartName) const {
  const std::string chartText = XmlText(chart, chartName);
  const std::string templateText = XmlText(_file.Text(), _file.Name());
  const auto transformer =
      Naming(chartName, [&] { return std::make_unique<ChartTransformer>(chartText); });
  Naming(_file.Name(), [&] { transformer->applyTemplate(templateText); });
  return Naming(chartName, [&] { return transformer->getEntireXML(ChartBase::_utf8); });
}

}  // namespace chartbridge
