// SPDX-License-Identifier: Apache-2.0
#ifndef HOST_LOCALFRAME_H_
#define HOST_LOCALFRAME_H_

#include <jni.h>

namespace chartbridge {

/// A scope that gives back the Java references that operations of the library make inside it.
///
/// The library never deletes local references. A native thread has no Java caller whose return
/// would free them, so a thread that renders for days fills the Java heap unless its host puts one
/// of these around each operation:
///
///     {
///       chartbridge::LocalFrame frame;
///       ok = ViZEditor::GetInstance()->RenderToFileHeadless(...);
///     }
///
/// Start operations (`StartEditorHeadless`, `StartConverter`) must stay outside of every frame: the
/// class and the object that they make are local references too, and would be garbage after it.
///
/// Construct and destroy it on the same thread, frames strictly nested. The constructor attaches
/// the thread when the JVM runs. Without a JVM, or when no frame can be made, it does nothing.
class LocalFrame {
 public:
  /// `capacity`: the number of references that are set aside; more are made as needed.
  explicit LocalFrame(int capacity = 64);
  ~LocalFrame();

  LocalFrame(const LocalFrame&) = delete;
  LocalFrame& operator=(const LocalFrame&) = delete;

  /// Whether the frame holds.
  bool IsActive() const { return _env != nullptr; }

 private:
  JNIEnv* _env;
};

}  // namespace chartbridge

#endif  // HOST_LOCALFRAME_H_
