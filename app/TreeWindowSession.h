// SPDX-License-Identifier: Apache-2.0
#ifndef APP_TREEWINDOWSESSION_H_
#define APP_TREEWINDOWSESSION_H_

#include <jni.h>

#include <string>

#include "app/TreeDocuments.h"
#include "app/WindowPlace.h"

namespace chartbridge {

/// The interactive tree editor for the scope, started outside of every local frame: its Java object
/// must outlive them. At its end the window is closed.
class TreeWindowSession {
 public:
  explicit TreeWindowSession(JNIEnv* env);
  ~TreeWindowSession();

  TreeWindowSession(const TreeWindowSession&) = delete;
  TreeWindowSession& operator=(const TreeWindowSession&) = delete;

  /// Whether Java has a display to show a window on.
  bool HasDisplay() const;
  /// Shows the model, soon. When that fails, the window is not open.
  void Show(const WindowPlace& place, const TreeDocuments& documents);
  /// Whether the window was shown and nobody has closed it since.
  bool IsOpen() const;
  /// The display data as the user left them, also after the window was closed.
  std::string DisplayData() const;

 private:
  JNIEnv* _env;
};

}  // namespace chartbridge

#endif  // APP_TREEWINDOWSESSION_H_
