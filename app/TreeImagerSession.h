// SPDX-License-Identifier: Apache-2.0
#ifndef APP_TREEIMAGERSESSION_H_
#define APP_TREEIMAGERSESSION_H_

#include "tree/TreeEditor.h"

namespace chartbridge {

/// Starts the headless tree imager for the scope, outside of every local frame: its Java object
/// must outlive them.
class TreeImagerSession {
 public:
  explicit TreeImagerSession(JNIEnv* env) { TreeEditor::GetInstance()->StartEditorHeadless(env); }
  ~TreeImagerSession() { TreeEditor::GetInstance()->StopHeadless(); }

  TreeImagerSession(const TreeImagerSession&) = delete;
  TreeImagerSession& operator=(const TreeImagerSession&) = delete;
};

}  // namespace chartbridge

#endif  // APP_TREEIMAGERSESSION_H_
