// SPDX-License-Identifier: Apache-2.0
#include "platform/CriticalSection.h"

#include <mutex>

class CriticalSection::Impl {
 public:
  std::recursive_mutex mutex;
};

CriticalSection::CriticalSection() : _impl(std::make_unique<Impl>()) {}

CriticalSection::~CriticalSection() = default;

CriticalSection::Lock::Lock(const CriticalSection& section) : _section(section) {
  _section._impl->mutex.lock();
}

CriticalSection::Lock::~Lock() { _section._impl->mutex.unlock(); }
