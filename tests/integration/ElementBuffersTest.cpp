// SPDX-License-Identifier: Apache-2.0
#include "guard/ElementBuffers.h"

#include <gtest/gtest.h>

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <set>
#include <thread>
#include <vector>

#include "guard/ObtainedBuffers.h"

namespace chartbridge {
namespace {

jarray Array(std::uintptr_t number) { return reinterpret_cast<jarray>(number); }

void* NewBuffer(std::uintptr_t number, std::size_t bytes) {
  return ElementBuffers::New({Array(number), static_cast<jsize>(bytes), 'B', number}, bytes);
}

TEST(ElementBuffers, RemembersTheSource) {
  void* buffer = ElementBuffers::New({Array(7), 3, 'J', 9}, 24);
  std::memset(buffer, 1, 24);
  ElementSource source{};
  EXPECT_TRUE(ElementBuffers::Find(buffer, source));
  EXPECT_EQ(source.array, Array(7));
  source = {};
  EXPECT_TRUE(ElementBuffers::Take(buffer, source));
  EXPECT_EQ(source.array, Array(7));
  EXPECT_EQ(source.length, 3);
  EXPECT_EQ(source.type, 'J');
  EXPECT_EQ(source.epoch, 9U);
  EXPECT_FALSE(ElementBuffers::Find(buffer, source));
  EXPECT_FALSE(ElementBuffers::Take(buffer, source));
  ElementBuffers::Free(buffer);
}

TEST(ElementBuffers, KnowsNoOtherAddress) {
  void* buffer = NewBuffer(1, 100);
  ElementSource source{};
  EXPECT_FALSE(ElementBuffers::Take(nullptr, source));
  EXPECT_FALSE(ElementBuffers::Find(nullptr, source));
  EXPECT_FALSE(ElementBuffers::Take(static_cast<char*>(buffer) + 16, source));
  EXPECT_FALSE(ElementBuffers::Take(&source, source));
  EXPECT_TRUE(ElementBuffers::Take(buffer, source));
  ElementBuffers::Free(buffer);
}

TEST(ElementBuffers, AreAlignedAndNeverNull) {
  std::vector<void*> buffers;
  for (std::size_t bytes = 0; bytes < 40; ++bytes) buffers.push_back(NewBuffer(bytes, bytes));
  EXPECT_EQ(std::set<void*>(buffers.begin(), buffers.end()).size(), 40U);
  for (void* buffer : buffers) {
    ASSERT_NE(buffer, nullptr);
    EXPECT_EQ(reinterpret_cast<std::uintptr_t>(buffer) % 16, 0U);
    ElementSource source{};
    EXPECT_TRUE(ElementBuffers::Take(buffer, source));
    ElementBuffers::Free(buffer);
  }
}

bool HasZerosBehind(const void* buffer, std::size_t bytes) {
  const auto* memory = static_cast<const unsigned char*>(buffer);
  for (std::size_t i = bytes; i < ElementBuffers::MemoryFor(bytes); ++i) {
    if (memory[i] != 0) return false;
  }
  return true;
}

// Three lengths of four bytes are read of an array of no bytes, two behind a whole block.
TEST(ElementBuffers, HaveRoomForTheLengthsThatAreReadBehindThem) {
  EXPECT_EQ(ElementBuffers::MemoryFor(0), 12U);
  EXPECT_EQ(ElementBuffers::MemoryFor(1), 12U);
  EXPECT_EQ(ElementBuffers::MemoryFor(4), 12U);
  EXPECT_EQ(ElementBuffers::MemoryFor(5), 13U);
  EXPECT_EQ(ElementBuffers::MemoryFor(1024), 1032U);
}

// Also where the memory was used before.
TEST(ElementBuffers, HaveZerosBehindThem) {
  for (std::size_t bytes = 0; bytes < 300; ++bytes) {
    std::vector<void*> old;
    for (int i = 0; i < 10; ++i) {
      old.push_back(std::malloc(ElementBuffers::MemoryFor(bytes)));
      std::memset(old.back(), 0x7f, ElementBuffers::MemoryFor(bytes));
    }
    for (void* memory : old) std::free(memory);
    void* buffer = NewBuffer(bytes, bytes);
    EXPECT_TRUE(HasZerosBehind(buffer, bytes)) << bytes;
    ElementSource source{};
    EXPECT_TRUE(ElementBuffers::Take(buffer, source));
    ElementBuffers::Free(buffer);
  }
}

// ---- What a thread has obtained since a mark.

bool Release(void* buffer) {
  ElementSource source{};
  if (!ElementBuffers::Take(buffer, source)) return false;
  ElementBuffers::Free(buffer);
  return true;
}

TEST(ElementBuffers, AreFreedSinceAMark) {
  void* before = NewBuffer(1, 8);
  const std::uint64_t mark = ObtainedBuffers::Mark();
  void* first = NewBuffer(2, 8);
  void* second = NewBuffer(3, 8);
  void* third = NewBuffer(4, 8);
  EXPECT_TRUE(Release(second));
  EXPECT_EQ(ElementBuffers::FreeObtainedSince(mark), 2U);
  ElementSource source{};
  EXPECT_FALSE(ElementBuffers::Find(first, source));
  EXPECT_FALSE(ElementBuffers::Find(third, source));
  EXPECT_EQ(ElementBuffers::FreeObtainedSince(mark), 0U);
  EXPECT_TRUE(Release(before));
}

TEST(ElementBuffers, AreFreedSinceTheInnerMarkFirst) {
  const std::uint64_t outer = ObtainedBuffers::Mark();
  void* first = NewBuffer(1, 8);
  const std::uint64_t inner = ObtainedBuffers::Mark();
  NewBuffer(2, 8);
  EXPECT_EQ(ElementBuffers::FreeObtainedSince(inner), 1U);
  ElementSource source{};
  EXPECT_TRUE(ElementBuffers::Find(first, source));
  EXPECT_EQ(ElementBuffers::FreeObtainedSince(outer), 1U);
}

TEST(ElementBuffers, OfOtherThreadsStayOut) {
  const std::uint64_t mark = ObtainedBuffers::Mark();
  void* others = nullptr;
  std::uint64_t otherMark = 0;
  std::thread([&] {
    otherMark = ObtainedBuffers::Mark();
    others = NewBuffer(1, 8);
  }).join();
  EXPECT_EQ(ElementBuffers::FreeObtainedSince(mark), 0U);
  void* own = NewBuffer(2, 8);
  // Another thread's mark says nothing about this one's buffers, and neither does none.
  EXPECT_EQ(ElementBuffers::FreeObtainedSince(otherMark), 0U);
  EXPECT_EQ(ElementBuffers::FreeObtainedSince(0), 0U);
  EXPECT_TRUE(Release(own));
  EXPECT_TRUE(Release(others));
}

// The address of a buffer that another thread gave back is soon another thread's.
TEST(ElementBuffers, ThatHaveBecomeAnotherThreadsStayOut) {
  const std::uint64_t mark = ObtainedBuffers::Mark();
  void* buffer = NewBuffer(1, 8);
  void* again = nullptr;
  std::thread([&] {
    Release(buffer);
    again = NewBuffer(2, 8);
  }).join();
  EXPECT_EQ(ElementBuffers::FreeObtainedSince(mark), 0U);
  ElementSource source{};
  EXPECT_TRUE(ElementBuffers::Find(again, source));
  EXPECT_EQ(source.array, Array(2));
  EXPECT_TRUE(Release(again));
}

// Also the thousands that have no place without a lock.
TEST(ElementBuffers, AreFreedSinceAMarkHoweverMany) {
  constexpr std::uintptr_t kCount = 9000;
  const std::uint64_t mark = ObtainedBuffers::Mark();
  std::vector<void*> buffers;
  for (std::uintptr_t i = 0; i < kCount; ++i) buffers.push_back(NewBuffer(i, 8));
  for (std::uintptr_t i = 0; i < kCount; i += 3) EXPECT_TRUE(Release(buffers[i]));
  EXPECT_EQ(ElementBuffers::FreeObtainedSince(mark), kCount - kCount / 3);
  for (void* buffer : buffers) EXPECT_FALSE(Release(buffer));
  EXPECT_EQ(ObtainedBuffers::Count(), 0U);
}

// A program that never marks and releases in whatever order pays with no memory for the list.
TEST(ElementBuffers, LeaveNoTraceWhereNobodyMarks) {
  std::thread([] {
    void* previous = NewBuffer(0, 8);
    for (std::uintptr_t i = 1; i < 100000; ++i) {
      void* next = NewBuffer(i, 8);
      EXPECT_TRUE(Release(previous));
      previous = next;
    }
    EXPECT_TRUE(Release(previous));
    EXPECT_LE(ObtainedBuffers::Count(), 64U);
  }).join();
}

TEST(ElementBuffers, AreFreedSinceMarksOnManyThreads) {
  std::atomic<int> wrong{0};
  std::vector<std::thread> threads;
  for (std::uintptr_t t = 1; t <= 4; ++t) {
    threads.emplace_back([&wrong, t] {
      for (std::uintptr_t i = 0; i < 5000; ++i) {
        const std::uint64_t mark = ObtainedBuffers::Mark();
        NewBuffer(t << 32U | i, i % 64);
        void* second = NewBuffer(t << 32U | i, i % 64);
        NewBuffer(t << 32U | i, i % 64);
        const bool right = Release(second) && ElementBuffers::FreeObtainedSince(mark) == 2;
        wrong += right ? 0 : 1;
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(wrong, 0);
}

// Twice as many as have a place without a lock.
TEST(ElementBuffers, AreAsManyAsNeeded) {
  constexpr std::uintptr_t kCount = 8192;
  std::vector<void*> buffers;
  for (std::uintptr_t i = 0; i < kCount; ++i) buffers.push_back(NewBuffer(i, 8));
  for (std::uintptr_t i = 0; i < kCount; ++i) {
    ElementSource source{};
    EXPECT_TRUE(ElementBuffers::Find(buffers[i], source));
    EXPECT_TRUE(ElementBuffers::Take(buffers[i], source));
    EXPECT_EQ(source.array, Array(i));
    EXPECT_FALSE(ElementBuffers::Take(buffers[i], source));
    ElementBuffers::Free(buffers[i]);
  }
}

// Several threads release the same buffers: each buffer is one thread's to free.
TEST(ElementBuffers, AreTakenByOneThread) {
  constexpr std::uintptr_t kCount = 6000;
  std::vector<void*> buffers;
  for (std::uintptr_t i = 0; i < kCount; ++i) buffers.push_back(NewBuffer(i, 8));
  std::atomic<std::uintptr_t> taken{0};
  std::atomic<std::uintptr_t> wrong{0};
  std::vector<std::thread> threads;
  for (int t = 0; t < 4; ++t) {
    threads.emplace_back([&] {
      for (std::uintptr_t i = 0; i < kCount; ++i) {
        ElementSource source{};
        if (!ElementBuffers::Take(buffers[i], source)) continue;
        ++taken;
        if (source.array != Array(i)) ++wrong;
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(taken, kCount);
  EXPECT_EQ(wrong, 0U);
  for (void* buffer : buffers) ElementBuffers::Free(buffer);
}

TEST(ElementBuffers, ComeAndGoOnManyThreads) {
  std::atomic<int> wrong{0};
  std::vector<std::thread> threads;
  for (std::uintptr_t t = 1; t <= 4; ++t) {
    threads.emplace_back([&wrong, t] {
      for (std::uintptr_t i = 0; i < 20000; ++i) {
        void* buffer = NewBuffer(t << 32U | i, i % 64);
        ElementSource source{};
        const bool right = ElementBuffers::Find(buffer, source) &&
                           ElementBuffers::Take(buffer, source) &&
                           source.array == Array(t << 32U | i);
        wrong += right ? 0 : 1;
        ElementBuffers::Free(buffer);
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(wrong, 0);
}

}  // namespace
}  // namespace chartbridge
