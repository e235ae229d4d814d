// SPDX-License-Identifier: Apache-2.0
#include "convert/graphBoardConverterData.h"

#include "bridge/AttachedEnv.h"
#include "bridge/Marshalling.h"
#include "platform/TeskJVM.h"

using chartbridge::NewByteArray;
using chartbridge::ReadByteArray;

graphBoardConverter::Data::Data() : JAccessor(nullptr), host(nullptr), accessor(this) {}

graphBoardConverter::Data::~Data() {
  setEnv(nullptr);
  accessor = nullptr;
}

bool graphBoardConverter::Data::startJVM() {
  if (host == nullptr) host = TeskJVM::GetInstance();
  if (host == nullptr) return false;
  if (!host->IsStarted()) host->StartJVM();
  if (!host->IsStarted()) return false;
  // The env is not kept: SetEnv attaches once more and keeps what it gets.
  JNIEnv* threadEnv = nullptr;
  host->AttachCurrentThread(&threadEnv);
  return true;
}

void graphBoardConverter::Data::SetEnv() const {
  if (accessor == nullptr) return;
  accessor->setEnv(chartbridge::AttachedEnv());
}

bool graphBoardConverter::Data::initClass() {
  setClass("com/tesk/vizconverter/VizConverter");
  setMethod("<init>", "()V");
  setObject(jni()->NewObject(getClass(), getMethodID()));
  exceptionCheck();
  return true;
}

bool graphBoardConverter::Data::convertToXML(const std::string& in, std::string& out) {
  const jbyteArray array = NewByteArray(*this, in);
  setMethod("graphBoardConverterToXml", "([B)[B");
  const auto xml =
      static_cast<jbyteArray>(jni()->CallObjectMethod(getObject(), getMethodID(), array));
  exceptionCheck();
  return ReadByteArray(*this, xml, out);
}

std::string graphBoardConverter::Data::applyStyleSheet(const std::string& first,
                                                       const std::string& second) {
  std::string styled;
  const jbyteArray firstArray = NewByteArray(*this, first);
  const jbyteArray secondArray = NewByteArray(*this, second);
  setMethod("graphBoardApplyStyleSheet", "([B[B)[B");
  const auto result = static_cast<jbyteArray>(
      jni()->CallObjectMethod(getObject(), getMethodID(), firstArray, secondArray));
  exceptionCheck();
  ReadByteArray(*this, result, styled);
  return styled;
}
