// SPDX-License-Identifier: Apache-2.0
#include "guard/ObtainedBuffers.h"

#include <atomic>
#include <cstdlib>

#include "guard/ElementBuffers.h"

namespace chartbridge {
namespace {

// Room for a thread's own count below the number of the thread.
constexpr unsigned kCountBits = 40;
constexpr std::size_t kFirstCapacity = 16;

std::atomic<std::uint64_t> threads{0};

}  // namespace

ObtainedBuffers::Ending::~Ending() {
  std::free(list_.entries);
  list_.entries = nullptr;
  list_.size = 0;
  list_.capacity = 0;
  list_.ended = true;
}

bool ObtainedBuffers::TakeNewestSince(std::uint64_t mark, void*& buffer, std::uint64_t& number) {
  if (list_.size == 0) return false;
  const Entry& newest = list_.entries[list_.size - 1];
  // A mark of another thread says nothing about this one.
  const bool isOwn = mark >> kCountBits == newest.number >> kCountBits;
  if (!isOwn || newest.number <= mark) return false;
  buffer = newest.buffer;
  number = newest.number;
  --list_.size;
  return true;
}

std::uint64_t ObtainedBuffers::NewThread() {
  return (threads.fetch_add(1, std::memory_order_relaxed) + 1) << kCountBits;
}

bool ObtainedBuffers::MakeRoom(List& list) {
  // Native code may still obtain something while the thread's objects are destroyed.
  if (list.ended) return false;
  thread_local Ending ending;
  ending.armed = true;
  LeaveOutWhatIsGone(list);
  // Half of it at least is free afterwards, so that looking through it stays rare.
  if (list.capacity > 0 && list.size <= list.capacity / 2) return true;
  const std::size_t capacity = list.capacity == 0 ? kFirstCapacity : 2 * list.capacity;
  void* entries = std::realloc(list.entries, capacity * sizeof(Entry));
  if (entries == nullptr) return list.size < list.capacity;
  list.entries = static_cast<Entry*>(entries);
  list.capacity = capacity;
  return true;
}

void ObtainedBuffers::LeaveOutWhatIsGone(List& list) {
  std::size_t kept = 0;
  for (std::size_t i = 0; i < list.size; ++i) {
    const Entry entry = list.entries[i];
    if (ElementBuffers::IsOut(entry.buffer, entry.number)) list.entries[kept++] = entry;
  }
  list.size = kept;
}

}  // namespace chartbridge
