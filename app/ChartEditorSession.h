// SPDX-License-Identifier: Apache-2.0
#ifndef APP_CHARTEDITORSESSION_H_
#define APP_CHARTEDITORSESSION_H_

#include "chart/ViZEditor.h"

namespace chartbridge {

/// Starts the chart editor for the scope, outside of every local frame: its Java object must
/// outlive them.
class ChartEditorSession {
 public:
  explicit ChartEditorSession(JNIEnv* env) { ViZEditor::GetInstance()->StartEditorHeadless(env); }
  ~ChartEditorSession() { ViZEditor::GetInstance()->StopHeadless(); }

  ChartEditorSession(const ChartEditorSession&) = delete;
  ChartEditorSession& operator=(const ChartEditorSession&) = delete;
};

}  // namespace chartbridge

#endif  // APP_CHARTEDITORSESSION_H_
