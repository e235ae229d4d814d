// SPDX-License-Identifier: Apache-2.0
#include "guard/ElementBuffers.h"

#include <gtest/gtest.h>

#include <atomic>
#include <cstdint>
#include <cstring>
#include <set>
#include <thread>
#include <vector>

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
