// SPDX-License-Identifier: Apache-2.0
#ifndef PLATFORM_CRITICALSECTION_H_
#define PLATFORM_CRITICALSECTION_H_

#include <memory>

/// A recursive lock that the host supplies. The one that guards all Java work is
/// `TeskJVM::CritSect()`.
///
/// It must let the owning thread in again: operations of this library lock it, and then call others
/// that lock it too.
class CriticalSection {
 public:
  CriticalSection();
  ~CriticalSection();

  CriticalSection(const CriticalSection&) = delete;
  CriticalSection& operator=(const CriticalSection&) = delete;

  /// Holds the section from construction to destruction. Blocks until the section is free.
  class Lock {
   public:
    /// Waits until the section is free, or is the calling thread's already. `section` must outlive
    /// the lock.
    explicit Lock(const CriticalSection& section);
    /// Gives the section back. On the thread that took it.
    ~Lock();

    Lock(const Lock&) = delete;
    Lock& operator=(const Lock&) = delete;

   private:
    const CriticalSection& _section;
  };

 private:
  class Impl;
  std::unique_ptr<Impl> _impl;
};

#endif  // PLATFORM_CRITICALSECTION_H_
