// SPDX-License-Identifier: Apache-2.0
#include "chart/ViZEditor.h"

#include "bridge/AttachedEnv.h"
#include "bridge/FloatEnvGuard.h"
#include "bridge/JException.h"
#include "bridge/Utf16Text.h"
#include "chart/JChartImager.h"
#include "platform/ChartBase.h"
#include "platform/TeskJVM.h"

using chartbridge::AttachedEnv;
using chartbridge::Utf16Text;

namespace {

// Points the editor's binding at the calling thread. The floating-point environment is back before
// Java works.
void AttachEditorToThread() {
  const FloatEnvGuard guard;
  JNIEnv* env = AttachedEnv();
  ViZEditor::GetInstance()->SetEnv(env);
}

}  // namespace

ViZEditor* ViZEditor::_instance = nullptr;

ViZEditor* ViZEditor::GetInstance() {
  const CriticalSection::Lock lock(TeskJVM::CritSect());
  if (_instance == nullptr) _instance = new ViZEditor();
  return _instance;
}

ViZEditor::ViZEditor() : imager(nullptr) {}

ViZEditor::~ViZEditor() { delete imager; }

bool ViZEditor::StartEditorHeadless(JNIEnv* env) {
  const FloatEnvGuard guard;
  const CriticalSection::Lock lock(TeskJVM::CritSect());
  if (imager == nullptr) imager = new JChartImager(env);
  return true;
}

bool ViZEditor::IsStartedHeadless() {
  const CriticalSection::Lock lock(TeskJVM::CritSect());
  return imager != nullptr;
}

void ViZEditor::StopHeadless() {
  const CriticalSection::Lock lock(TeskJVM::CritSect());
  if (imager == nullptr) return;
  delete imager;
  imager = nullptr;
}

void ViZEditor::SetEnv(JNIEnv* env) {
  const FloatEnvGuard guard;
  if (imager != nullptr) imager->setEnv(env);
}

bool ViZEditor::SetCodepage(const std::string& newCodepage) {
  const CriticalSection::Lock lock(TeskJVM::CritSect());
  if (newCodepage.empty()) return false;
  codepage = newCodepage;
  return true;
}

// The four operations below look alike and are not: each converts its texts and tests the binding
// in an order of its own, which decides what a call on a stopped editor does. A JException is
// thrown by value, so their catch clauses let it pass to the host.

bool ViZEditor::RenderToFileHeadless(const std::string& chart, const unsigned char* data,
                                     unsigned long dataLength, const std::string& path,
                                     IMAGE_TYPE type, double size, const std::string& auxBytes1,
                                     const std::string& auxBytes2, const std::string& auxText1,
                                     const std::string& auxText2, bool flag) {
  const CriticalSection::Lock lock(TeskJVM::CritSect());
  const FloatEnvGuard guard;
  const Utf16Text path16(path);
  const Utf16Text aux1(auxText1);
  const Utf16Text aux2(auxText2);
  if (imager == nullptr) return false;
  try {
    AttachEditorToThread();
    return imager->RenderToFile(chart, data, dataLength, path16.data(), path16.length(), type, size,
                                auxBytes1, auxBytes2, aux1.data(), aux1.length(), aux2.data(),
                                aux2.length(), flag);
  } catch (const JException* exception) {
    throw std::string(exception->thirdText());
  }
}

bool ViZEditor::RenderToFileHeadless(const std::string& chart, const std::string& data,
                                     const std::string& path, IMAGE_TYPE type,
                                     const std::string& auxBytes1, const std::string& auxBytes2,
                                     const std::string& auxText1, const std::string& auxText2,
                                     double size) {
  const CriticalSection::Lock lock(TeskJVM::CritSect());
  const FloatEnvGuard guard;
  const Utf16Text path16(path);
  if (imager == nullptr) return false;
  const Utf16Text aux1(auxText1);
  const Utf16Text aux2(auxText2);
  try {
    AttachEditorToThread();
    return imager->RenderToFile(chart, data, path16.data(), path16.length(), type, size, auxBytes1,
                                auxBytes2, aux1.data(), aux1.length(), aux2.data(), aux2.length());
  } catch (const JException* exception) {
    throw std::string(exception->thirdText());
  }
}

bool ViZEditor::RenderImageToMemoryHeadless(const std::string& chart, const std::string& data,
                                            unsigned int& imageSize, IMAGE_TYPE type, double size,
                                            const std::string& auxBytes1,
                                            const std::string& auxBytes2,
                                            const std::string& auxText1,
                                            const std::string& auxText2, std::string& output) {
  const CriticalSection::Lock lock(TeskJVM::CritSect());
  const FloatEnvGuard guard;
  if (imager == nullptr) return false;
  const Utf16Text aux1(auxText1);
  const Utf16Text aux2(auxText2);
  try {
    AttachEditorToThread();
    return imager->RenderToMem(chart, data, imageSize, type, output, size, auxBytes1, auxBytes2,
                               aux1.data(), aux1.length(), aux2.data(), aux2.length());
  } catch (const JException* exception) {
    throw std::string(exception->thirdText());
  }
}

bool ViZEditor::RenderImageToMemoryHeadless(const std::string& chart, const unsigned char* data,
                                            unsigned long dataLength, IMAGE_TYPE type, double size,
                                            std::string& output1, std::string& output2,
                                            std::string& output3, const std::string& auxBytes1,
                                            const std::string& auxBytes2,
                                            const std::string& auxText1,
                                            const std::string& auxText2, bool flag) {
  const CriticalSection::Lock lock(TeskJVM::CritSect());
  const FloatEnvGuard guard;
  if (imager == nullptr) return false;
  const Utf16Text aux1(auxText1);
  const Utf16Text aux2(auxText2);
  try {
    AttachEditorToThread();
    return imager->RenderImageMapToMemory(chart, data, dataLength, type, output1, size, output2,
                                          output3, flag, auxBytes1, auxBytes2, aux1.data(),
                                          aux1.length(), aux2.data(), aux2.length());
  } catch (const JException* exception) {
    throw std::string(exception->thirdText());
  }
}

std::string ViZEditor::EmbedHistogramInGraph(const std::string& first, const std::string& second,
                                             unsigned char* histogram,
                                             unsigned long histogramLength, unsigned int count) {
  std::string graph;
  const CriticalSection::Lock lock(TeskJVM::CritSect());
  const FloatEnvGuard guard;
  if (imager == nullptr) return graph;
  try {
    AttachEditorToThread();
    graph = imager->EmbedHistogramInGraph(first, second, histogram, histogramLength, count);
  } catch (const JException* exception) {
    throw std::string(exception->thirdText());
  }
  return graph;
}

bool ViZEditor::ConvertImage(const std::string& image, const std::string& path,
                             IMAGE_TYPE type) const {
  const CriticalSection::Lock lock(TeskJVM::CritSect());
  const FloatEnvGuard guard;
  const Utf16Text path16(path);
  if (imager == nullptr) return false;
  try {
    AttachEditorToThread();
    return imager->ConvertImage(image, path16.data(), path16.length(), type);
  } catch (const JException* exception) {
    throw std::string(exception->thirdText());
  }
}

bool ViZEditor::ApplyStyleSheet(std::string& document, const std::string& styleSheet) {
  const CriticalSection::Lock lock(TeskJVM::CritSect());
  const FloatEnvGuard guard;
  if (imager == nullptr) return false;
  // The one operation that keeps every exception to itself. A JException is thrown by value and so
  // is told through the second clause.
  try {
    AttachEditorToThread();
    return imager->ApplyStyleSheet(document, styleSheet);
  } catch (const JException* exception) {
    ChartBase::printDebugInfo("Caught JException: " + exception->firstText() + "\n" +
                              exception->thirdText());
  } catch (...) {
    ChartBase::printDebugInfo("Caught Unknown Exception");
  }
  return false;
}
