// SPDX-License-Identifier: Apache-2.0
#include "convert/VizConverter.h"

#include "bridge/AttachedEnv.h"
#include "bridge/Marshalling.h"
#include "convert/JVizConverter.h"
#include "platform/TeskJVM.h"

VizConverter* VizConverter::s_pInstance = nullptr;

VizConverter* VizConverter::GetInstance() {
  const CriticalSection::Lock lock(TeskJVM::CritSect());
  if (s_pInstance == nullptr) s_pInstance = new VizConverter();
  return s_pInstance;
}

VizConverter::VizConverter() : converter(nullptr) {}

VizConverter::~VizConverter() { delete converter; }

bool VizConverter::StartConverter(JNIEnv* env) {
  const CriticalSection::Lock lock(TeskJVM::CritSect());
  if (converter == nullptr) converter = new JVizConverter(env);
  return true;
}

bool VizConverter::IsStarted() {
  const CriticalSection::Lock lock(TeskJVM::CritSect());
  return converter != nullptr;
}

void VizConverter::Stop() {
  const CriticalSection::Lock lock(TeskJVM::CritSect());
  if (converter == nullptr) return;
  delete converter;
  converter = nullptr;
}

void VizConverter::SetEnv() const {
  if (converter == nullptr) return;
  converter->setEnv(chartbridge::AttachedEnv());
}

bool VizConverter::GPLtoXML(const std::string& gpl, std::string& xml) {
  return convert(gpl, xml, &JVizConverter::convertGPL);
}

bool VizConverter::UpgradeXML(const std::string& oldXml, std::string& newXml) {
  return convert(oldXml, newXml, &JVizConverter::convertXml);
}

bool VizConverter::convert(const std::string& input, std::string& output,
                           jbyteArray (JVizConverter::*javaMethod)(const std::string&)) {
  const CriticalSection::Lock lock(TeskJVM::CritSect());
  // Outside the catch-all: what the host's attaching throws is the host's to see.
  SetEnv();
  if (converter == nullptr) return false;
  try {
    const jbyteArray result = (converter->*javaMethod)(input);
    return chartbridge::ReadByteArray(*converter, result, output);
  } catch (...) {
    return false;
  }
}

std::string VizConverter::GetErrorMessage() const {
  const CriticalSection::Lock lock(TeskJVM::CritSect());
  SetEnv();
  if (converter == nullptr) return std::string();
  return converter->getErrorMessage();
}
