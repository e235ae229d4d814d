// SPDX-License-Identifier: Apache-2.0
#ifndef HOST_LOCALFRAME_H_
#define HOST_LOCALFRAME_H_

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
/// Its end is the host's word that nothing of what was done inside is used any more. So the guard
/// then also frees the elements of Java arrays and the texts of Java strings that were obtained
/// inside, on this thread, and never released: some operations keep theirs, a whole picture at a
/// time. It frees those of all native code alike: a native method that Java code called inside, and
/// that keeps such a pointer beyond its call, is left with freed memory. Such a method must copy
/// what it keeps, or must be called outside of every frame. And a Java exception that is
/// still pending at the end is cleared, and told through `ChartBase::printDebugInfo`: it would
/// otherwise come up in whatever this thread does with Java next.
///
/// Construct and destroy it on the same thread, frames strictly nested: each gives back what was
/// made since its own begin. The constructor attaches the thread when the JVM runs. Without a JVM,
/// or when no frame can be made, also for want of memory, it does nothing. Nothing throws.
class LocalFrame {
 public:
  /// `capacity`: the number of references that are set aside; more are made as needed.
  explicit LocalFrame(int capacity = 64) noexcept;
  ~LocalFrame() noexcept;

  LocalFrame(const LocalFrame&) = delete;
  LocalFrame& operator=(const LocalFrame&) = delete;

  /// Whether the frame holds.
  bool IsActive() const { return _frame != nullptr; }

 private:
  struct Frame;

  Frame* _frame;
};

}  // namespace chartbridge

#endif  // HOST_LOCALFRAME_H_
