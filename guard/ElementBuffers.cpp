// SPDX-License-Identifier: Apache-2.0
#include "guard/ElementBuffers.h"

#include <atomic>
#include <cstdlib>
#include <cstring>
#include <mutex>
#include <new>
#include <unordered_map>

#include "guard/ObtainedBuffers.h"

namespace chartbridge {
namespace {

constexpr std::size_t kSlots = 8;
constexpr std::size_t kLines = 512;

// The addresses of a line share a cache line. Native code has few buffers out at a time, so nearly
// all of them live in these lines, where adding and removing one is a single exchange without a
// lock. The sources stand apart, not in front of the elements: the buffers are then of the sizes
// that the JVM's own would be, and cost the allocator the same.
struct Obtained {
  ElementSource source;
  /// Its number among all buffers. Other threads look at it to see whether a buffer is still the
  /// same, so it is atomic.
  std::atomic<std::uint64_t> number;
};
struct alignas(64) Line {
  std::atomic<const void*> buffers[kSlots];
  Obtained obtained[kSlots];
};
Line lines[kLines];

// The address in a slot whose source is being written or read.
const char busy = 0;

std::mutex overflowMutex;
std::atomic<std::size_t> overflowSize{0};

struct Overflown {
  ElementSource source;
  std::uint64_t number;
};
using OverflowMap = std::unordered_map<const void*, Overflown>;

// Leaked on purpose: native code may release elements while the process ends, after static objects
// have been destroyed.
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

bool AddToOverflow(void* buffer, const ElementSource& source, std::uint64_t number) {
  const std::lock_guard<std::mutex> lock(overflowMutex);
  try {
    Overflow()[buffer] = {source, number};
  } catch (const std::bad_alloc&) {
    return false;
  }
  overflowSize.store(Overflow().size(), std::memory_order_release);
  return true;
}

bool Add(void* buffer, const ElementSource& source, std::uint64_t number) {
  Line& line = LineOf(buffer);
  for (std::size_t i = 0; i < kSlots; ++i) {
    if (!Exchange(line.buffers[i], nullptr, &busy)) continue;
    line.obtained[i].source = source;
    line.obtained[i].number.store(number, std::memory_order_relaxed);
    line.buffers[i].store(buffer, std::memory_order_release);
    return true;
  }
  return AddToOverflow(buffer, source, number);
}

bool FindInOverflow(const void* buffer, ElementSource& source, bool take) {
  if (overflowSize.load(std::memory_order_acquire) == 0) return false;
  const std::lock_guard<std::mutex> lock(overflowMutex);
  const auto found = Overflow().find(buffer);
  if (found == Overflow().end()) return false;
  source = found->second.source;
  if (take) Overflow().erase(found);
  overflowSize.store(Overflow().size(), std::memory_order_release);
  return true;
}

bool HasOverflown(const void* buffer, std::uint64_t number, bool take) {
  if (overflowSize.load(std::memory_order_acquire) == 0) return false;
  const std::lock_guard<std::mutex> lock(overflowMutex);
  const auto found = Overflow().find(buffer);
  if (found == Overflow().end() || found->second.number != number) return false;
  if (take) Overflow().erase(found);
  overflowSize.store(Overflow().size(), std::memory_order_release);
  return true;
}

// Whether the slot holds the buffer that was obtained under that number.
bool Holds(const Line& line, std::size_t slot, const void* buffer, std::uint64_t number) {
  return line.buffers[slot].load(std::memory_order_acquire) == buffer &&
         line.obtained[slot].number.load(std::memory_order_relaxed) == number;
}

bool TakeNumbered(const void* buffer, std::uint64_t number) {
  Line& line = LineOf(buffer);
  for (std::size_t i = 0; i < kSlots; ++i) {
    if (!Holds(line, i, buffer, number) || !Exchange(line.buffers[i], buffer, &busy)) continue;
    const bool same = line.obtained[i].number.load(std::memory_order_relaxed) == number;
    // Another thread may have given the buffer back and got the same address in between.
    line.buffers[i].store(same ? nullptr : buffer, std::memory_order_release);
    if (same) return true;
  }
  return HasOverflown(buffer, number, true);
}

}  // namespace

void* ElementBuffers::New(const ElementSource& source, std::size_t bytes) {
  void* buffer = std::malloc(MemoryFor(bytes));
  if (buffer == nullptr) return nullptr;
  std::memset(static_cast<char*>(buffer) + bytes, 0, MemoryFor(bytes) - bytes);
  const std::uint64_t number = ObtainedBuffers::NextNumber();
  if (Add(buffer, source, number)) {
    ObtainedBuffers::Add(buffer, number);
    return buffer;
  }
  std::free(buffer);
  return nullptr;
}

bool ElementBuffers::Find(const void* buffer, ElementSource& source) {
  if (buffer == nullptr) return false;
  const Line& line = LineOf(buffer);
  for (std::size_t i = 0; i < kSlots; ++i) {
    if (line.buffers[i].load(std::memory_order_acquire) != buffer) continue;
    source = line.obtained[i].source;
    return true;
  }
  return FindInOverflow(buffer, source, false);
}

bool ElementBuffers::Take(const void* buffer, ElementSource& source) {
  if (buffer == nullptr) return false;
  ObtainedBuffers::Drop(buffer);
  Line& line = LineOf(buffer);
  for (std::size_t i = 0; i < kSlots; ++i) {
    if (!Exchange(line.buffers[i], buffer, &busy)) continue;
    source = line.obtained[i].source;
    line.buffers[i].store(nullptr, std::memory_order_release);
    return true;
  }
  return FindInOverflow(buffer, source, true);
}

void ElementBuffers::Free(void* buffer) { std::free(buffer); }

bool ElementBuffers::IsOut(const void* buffer, std::uint64_t number) {
  const Line& line = LineOf(buffer);
  for (std::size_t i = 0; i < kSlots; ++i) {
    if (Holds(line, i, buffer, number)) return true;
  }
  return HasOverflown(buffer, number, false);
}

std::size_t ElementBuffers::FreeObtainedSince(std::uint64_t mark) {
  std::size_t freed = 0;
  void* buffer = nullptr;
  std::uint64_t number = 0;
  while (ObtainedBuffers::TakeNewestSince(mark, buffer, number)) {
    if (!TakeNumbered(buffer, number)) continue;
    std::free(buffer);
    ++freed;
  }
  return freed;
}

}  // namespace chartbridge
