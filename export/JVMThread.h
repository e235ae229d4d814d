// SPDX-License-Identifier: Apache-2.0
#ifndef EXPORT_JVMTHREAD_H_
#define EXPORT_JVMTHREAD_H_

/// A thread of the exporter. The library constructs none: `ExAccessor::createThread()` prepares the
/// calling thread instead.
class JVMThread {
 public:
  JVMThread() = default;
  virtual ~JVMThread();

  JVMThread(const JVMThread&) = delete;
  JVMThread& operator=(const JVMThread&) = delete;
};

#endif  // EXPORT_JVMTHREAD_H_
