// SPDX-License-Identifier: Apache-2.0
#ifndef TREE_JVMTREETHREAD_H_
#define TREE_JVMTREETHREAD_H_

/// A scope for one sequence of Java calls of the tree editor: its construction attaches the calling
/// thread and points both bindings of the one editor at it. It is no thread, and its end does
/// nothing: the thread stays attached.
///
/// The caller holds the JVM lock. Lives on the stack.
class JVMTreeThread {
 public:
  JVMTreeThread();
  virtual ~JVMTreeThread();

  JVMTreeThread(const JVMTreeThread&) = delete;
  JVMTreeThread& operator=(const JVMTreeThread&) = delete;
};

#endif  // TREE_JVMTREETHREAD_H_
