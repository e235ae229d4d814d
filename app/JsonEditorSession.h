// SPDX-License-Identifier: Apache-2.0
#ifndef APP_JSONEDITORSESSION_H_
#define APP_JSONEDITORSESSION_H_

#include "json/jsonEditor.h"

namespace chartbridge {

/// Starts the JSON editor for the scope, outside of every local frame: its Java object must outlive
/// them. Fetching the editor takes back its settings; they are made afterwards, on `Editor()`.
class JsonEditorSession {
 public:
  explicit JsonEditorSession(JNIEnv* env) : _editor(jsonEditor::GetInstance()) {
    _editor->StartEditorHeadless(env);
  }
  ~JsonEditorSession() { _editor->StopHeadless(); }

  JsonEditorSession(const JsonEditorSession&) = delete;
  JsonEditorSession& operator=(const JsonEditorSession&) = delete;

  jsonEditor& Editor() const { return *_editor; }

 private:
  jsonEditor* _editor;
};

}  // namespace chartbridge

#endif  // APP_JSONEDITORSESSION_H_
