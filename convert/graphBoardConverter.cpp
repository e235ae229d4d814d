// SPDX-License-Identifier: Apache-2.0
#include "convert/graphBoardConverter.h"

#include "bridge/FloatEnvGuard.h"
#include "convert/graphBoardConverterData.h"
#include "platform/TeskJVM.h"

graphBoardConverter* graphBoardConverter::_instance = nullptr;

graphBoardConverter* graphBoardConverter::GetInstance() {
  const CriticalSection::Lock lock(TeskJVM::CritSect());
  if (_instance == nullptr) _instance = new graphBoardConverter();
  return _instance;
}

graphBoardConverter::graphBoardConverter() : data(new Data()) {}

graphBoardConverter::~graphBoardConverter() {
  graphBoardConverter* registered = _instance;
  _instance = nullptr;
  if (registered != this) delete registered;
  delete data;
}

std::string graphBoardConverter::ConvertClientViZTemplate(const std::string& templ) {
  std::string xml;
  const FloatEnvGuard guard;
  // A JVM that does not start needs no branch: the calls that follow fail and leave the result
  // empty.
  data->startJVM();
  data->SetEnv();
  data->initClass();
  data->convertToXML(templ, xml);
  return xml;
}

std::string graphBoardConverter::applyStyleSheet(const std::string& first,
                                                 const std::string& second) {
  std::string styled;
  const FloatEnvGuard guard;
  data->startJVM();
  data->SetEnv();
  data->initClass();
  styled = data->applyStyleSheet(first, second);
  return styled;
}
