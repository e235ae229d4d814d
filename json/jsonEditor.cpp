// SPDX-License-Identifier: Apache-2.0
#include "json/jsonEditor.h"

#include "bridge/AttachedEnv.h"
#include "bridge/FloatEnvGuard.h"
#include "bridge/JException.h"
#include "bridge/Utf16Text.h"
#include "json/jsonImager.h"
#include "platform/TeskJVM.h"

using chartbridge::Utf16Text;

namespace {

constexpr double kDefaultSize = 100.0;

// Attaches the thread and leaves the binding alone, on purpose: fetching the instance here would
// reset the very settings that are about to be exported.
void AttachThreadOnly() {
  const FloatEnvGuard guard;
  chartbridge::AttachedEnv();
}

}  // namespace

jsonEditor* jsonEditor::_instance = nullptr;

jsonEditor* jsonEditor::GetInstance() {
  const CriticalSection::Lock lock(TeskJVM::CritSect());
  if (_instance == nullptr) _instance = new jsonEditor();
  _instance->resetSettings();
  return _instance;
}

jsonEditor::jsonEditor()
    : imager(nullptr), size(kDefaultSize), imageFormat(IMAGE_PNG), isChartTemplate(false) {}

jsonEditor::~jsonEditor() { delete imager; }

void jsonEditor::resetSettings() {
  codepage.clear();
  jsonPath.clear();
  options.clear();
  filePath.clear();
  isChartTemplate = false;
  size = kDefaultSize;
  imageFormat = IMAGE_PNG;
}

bool jsonEditor::StartEditorHeadless(JNIEnv* env) {
  const FloatEnvGuard guard;
  const CriticalSection::Lock lock(TeskJVM::CritSect());
  if (imager == nullptr) imager = new jsonImager(env);
  return true;
}

bool jsonEditor::IsStartedHeadless() {
  const CriticalSection::Lock lock(TeskJVM::CritSect());
  return imager != nullptr;
}

void jsonEditor::StopHeadless() {
  const CriticalSection::Lock lock(TeskJVM::CritSect());
  if (imager == nullptr) return;
  delete imager;
  imager = nullptr;
}

void jsonEditor::SetEnv(JNIEnv* env) {
  const FloatEnvGuard guard;
  if (imager != nullptr) imager->setEnv(env);
}

bool jsonEditor::SetCodepage(const std::string& newCodepage) {
  const CriticalSection::Lock lock(TeskJVM::CritSect());
  if (newCodepage.empty()) return false;
  codepage = newCodepage;
  return true;
}

void jsonEditor::setIsChartTemplate() { isChartTemplate = true; }

void jsonEditor::setImageFormat(IMAGE_TYPE format) { imageFormat = format; }

void jsonEditor::setSize(double newSize) { size = newSize; }

void jsonEditor::setFilePath(const std::string& path) { filePath = path; }

void jsonEditor::setOptions(const std::string& newOptions) { options = newOptions; }

void jsonEditor::setJsonPath(const std::string& path) { jsonPath = path; }

bool jsonEditor::RenderChartJSON(const std::string& chart, const std::vector<std::string>& geoJson,
                                 const std::vector<std::string>& /*secondList*/) {
  const CriticalSection::Lock lock(TeskJVM::CritSect());
  const FloatEnvGuard guard;
  if (imager == nullptr) return false;
  const Utf16Text filePath16(filePath);
  const Utf16Text options16(options);
  const Utf16Text codepage16(codepage);
  const Utf16Text jsonPath16(jsonPath);
  try {
    AttachThreadOnly();
    if (!jsonPath.empty()) {
      return imager->exportInteractiveJsonToFile(
          chart, jsonPath16.data(), jsonPath16.length(), options16.data(), options16.length(), size,
          geoJson, filePath16.data(), filePath16.length(), imageFormat, codepage16.data(),
          codepage16.length());
    }
    return imager->exportChartJsonToFile(chart, geoJson, filePath16.data(), filePath16.length(),
                                         imageFormat, size, codepage16.data(), codepage16.length(),
                                         isChartTemplate);
  } catch (const JException* exception) {
    // A JException is thrown by value and passes to the host.
    throw std::string(exception->thirdText());
  }
}
