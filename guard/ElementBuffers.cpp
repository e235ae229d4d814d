// SPDX-License-Identifier: Apache-2.0
#include "guard/ElementBuffers.h"

#include <atomic>
#include <cstdlib>
#include <mutex>
#include <new>
#include <unordered_map>

namespace chartbridge {
namespace {

constexpr std::size_t kSlots = 8;
constexpr std::size_t kLines = 512;

// The addresses of a line share a cache line. Native code has few buffers out at a time, so nearly
// all of them live in these lines, where adding and removing one is a single exchange without a
// lock. The sources stand apart, not in front of the elements: the buffers are then of the sizes
// that the JVM's own would be, and cost the allocator the same.
struct alignas(64) Line {
  std::atomic<const void*> buffers[kSlots];
  ElementSource sources[kSlots];
};
Line lines[kLines];

// The address in a slot whose source is being written or read.
const char busy = 0;

std::mutex overflowMutex;
std::atomic<std::size_t> overflowSize{0};

// Leaked on purpose: native code may release elements while the process ends, after static objects
// have been destroyed.
using OverflowMap = std::unordered_map<const void*, ElementSource>;
OverflowMap& Overflow() {
  static auto* const overflow = new OverflowMap;
  return *overflow;
}

Line& LineOf(const void* buffer) {
  const auto address = reinterpret_cast<std::uintptr_t>(buffer) >> 4;
  return lines[(address ^ (address >> 9) ^ (address >> 18)) % kLines];
}

bool Exchange(std::atomic<const void*>& slot, const void* from, const void* to) {
  return slot.load(std::memory_order_relaxed) == from &&
         slot.compare_exchange_strong(from, to, std::memory_order_acq_rel);
}

bool AddToOverflow(void* buffer, const ElementSource& source) {
  const std::lock_guard<std::mutex> lock(overflowMutex);
  try {
    Overflow()[buffer] = source;
  } catch (const std::bad_alloc&) {
    return false;
  }
  overflowSize.store(Overflow().size(), std::memory_order_release);
  return true;
}

bool Add(void* buffer, const ElementSource& source) {
  Line& line = LineOf(buffer);
  for (std::size_t i = 0; i < kSlots; ++i) {
    if (!Exchange(line.buffers[i], nullptr, &busy)) continue;
    line.sources[i] = source;
    line.buffers[i].store(buffer, std::memory_order_release);
    return true;
  }
  return AddToOverflow(buffer, source);
}

bool FindInOverflow(const void* buffer, ElementSource& source, bool take) {
  if (overflowSize.load(std::memory_order_acquire) == 0) return false;
  const std::lock_guard<std::mutex> lock(overflowMutex);
  const auto found = Overflow().find(buffer);
  if (found == Overflow().end()) return false;
  source = found->second;
  if (take) Overflow().erase(found);
  overflowSize.store(Overflow().size(), std::memory_order_release);
  return true;
}

}  // namespace

void* ElementBuffers::New(const ElementSource& source, std::size_t bytes) {
  void* buffer = std::malloc(bytes > 0 ? bytes : 1);
  if (buffer == nullptr || Add(buffer, source)) return buffer;
  std::free(buffer);
  return nullptr;
}

bool ElementBuffers::Find(const void* buffer, ElementSource& source) {
  if (buffer == nullptr) return false;
  const Line& line = LineOf(buffer);
  for (std::size_t i = 0; i < kSlots; ++i) {
    if (line.buffers[i].load(std::memory_order_acquire) != buffer) continue;
    source = line.sources[i];
    return true;
  }
  return FindInOverflow(buffer, source, false);
}

bool ElementBuffers::Take(const void* buffer, ElementSource& source) {
  if (buffer == nullptr) return false;
  Line& line = LineOf(buffer);
  for (std::size_t i = 0; i < kSlots; ++i) {
    if (!Exchange(line.buffers[i], buffer, &busy)) continue;
    source = line.sources[i];
    line.buffers[i].store(nullptr, std::memory_order_release);
    return true;
  }
  return FindInOverflow(buffer, source, true);
}

void ElementBuffers::Free(void* buffer) { std::free(buffer); }

}  // namespace chartbridge
