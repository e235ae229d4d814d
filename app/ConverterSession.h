// SPDX-License-Identifier: Apache-2.0
#ifndef APP_CONVERTERSESSION_H_
#define APP_CONVERTERSESSION_H_

#include "convert/VizConverter.h"

namespace chartbridge {

/// Starts the converter for the scope, outside of every local frame: its Java object must outlive
/// them.
class ConverterSession {
 public:
  explicit ConverterSession(JNIEnv* env) { VizConverter::GetInstance()->StartConverter(env); }
  ~ConverterSession() { VizConverter::GetInstance()->Stop(); }

  ConverterSession(const ConverterSession&) = delete;
  ConverterSession& operator=(const ConverterSession&) = delete;
};

}  // namespace chartbridge

#endif  // APP_CONVERTERSESSION_H_
