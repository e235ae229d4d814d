// SPDX-License-Identifier: Apache-2.0
#include "guard/ElementBuffers.h"

#include <atomic>
#include <cstdint>
#include <cstdlib>
#include <mutex>
#include <new>
#include <unordered_set>

namespace chartbridge {
namespace {

// One cache line of addresses. Native code has few buffers out at a time, so nearly all of them
// live in these lines, where adding and removing one is a single exchange without a lock.
struct alignas(64) Line {
  std::atomic<const void*> slots[8];
};
constexpr std::size_t kLines = 512;
Line lines[kLines];

std::mutex overflowMutex;
std::atomic<std::size_t> overflowSize{0};

// Leaked on purpose: native code may release elements while the process ends, after static objects
// have been destroyed.
std::unordered_set<const void*>& Overflow() {
  static auto* const overflow = new std::unordered_set<const void*>;
  return *overflow;
}

Line& LineOf(const void* buffer) {
  const auto address = reinterpret_cast<std::uintptr_t>(buffer) >> 4;
  return lines[(address ^ (address >> 9) ^ (address >> 18)) % kLines];
}

bool AddToOverflow(const void* buffer) {
  const std::lock_guard<std::mutex> lock(overflowMutex);
  try {
    Overflow().insert(buffer);
  } catch (const std::bad_alloc&) {
    return false;
  }
  overflowSize.store(Overflow().size(), std::memory_order_release);
  return true;
}

bool Add(const void* buffer) {
  for (auto& slot : LineOf(buffer).slots) {
    const void* empty = nullptr;
    if (slot.load(std::memory_order_relaxed) == nullptr &&
        slot.compare_exchange_strong(empty, buffer, std::memory_order_acq_rel)) {
      return true;
    }
  }
  return AddToOverflow(buffer);
}

bool TakeFromOverflow(const void* buffer) {
  if (overflowSize.load(std::memory_order_acquire) == 0) return false;
  const std::lock_guard<std::mutex> lock(overflowMutex);
  const bool found = Overflow().erase(buffer) != 0;
  overflowSize.store(Overflow().size(), std::memory_order_release);
  return found;
}

bool IsInOverflow(const void* buffer) {
  if (overflowSize.load(std::memory_order_acquire) == 0) return false;
  const std::lock_guard<std::mutex> lock(overflowMutex);
  return Overflow().count(buffer) != 0;
}

bool IsOut(const void* buffer) {
  for (const auto& slot : LineOf(buffer).slots) {
    if (slot.load(std::memory_order_acquire) == buffer) return true;
  }
  return IsInOverflow(buffer);
}

const ElementHeader* HeaderOf(const void* buffer) {
  return static_cast<const ElementHeader*>(buffer) - 1;
}

}  // namespace

void* ElementBuffers::New(const ElementHeader& header, std::size_t bytes) {
  void* block = std::malloc(sizeof(ElementHeader) + bytes);
  if (block == nullptr) return nullptr;
  void* buffer = new (block) ElementHeader(header) + 1;
  if (Add(buffer)) return buffer;
  std::free(block);
  return nullptr;
}

const ElementHeader* ElementBuffers::Find(const void* buffer) {
  return buffer != nullptr && IsOut(buffer) ? HeaderOf(buffer) : nullptr;
}

const ElementHeader* ElementBuffers::Take(const void* buffer) {
  if (buffer == nullptr) return nullptr;
  for (auto& slot : LineOf(buffer).slots) {
    const void* expected = buffer;
    if (slot.load(std::memory_order_relaxed) == buffer &&
        slot.compare_exchange_strong(expected, nullptr, std::memory_order_acq_rel)) {
      return HeaderOf(buffer);
    }
  }
  return TakeFromOverflow(buffer) ? HeaderOf(buffer) : nullptr;
}

void ElementBuffers::Free(void* buffer) { std::free(static_cast<ElementHeader*>(buffer) - 1); }

}  // namespace chartbridge
