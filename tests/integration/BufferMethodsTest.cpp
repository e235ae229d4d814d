// SPDX-License-Identifier: Apache-2.0
#include "guard/BufferMethods.h"

#include <gtest/gtest.h>

#include <atomic>
#include <cstdint>
#include <string>
#include <thread>
#include <vector>

namespace chartbridge {
namespace {

jmethodID Method(std::uintptr_t number) { return reinterpret_cast<jmethodID>(number); }

std::string Noted(std::uintptr_t number, const char* signature) {
  BufferMethods::Note(Method(number), signature);
  const std::string* parameters = BufferMethods::Find(Method(number));
  return parameters == nullptr ? "not remembered" : *parameters;
}

TEST(BufferMethods, AreRememberedByTheirParameters) {
  EXPECT_EQ(Noted(0x1000, "(Ljava/nio/ByteBuffer;)V"), "@");
  EXPECT_EQ(Noted(0x1008, "([BLjava/nio/ByteBuffer;IDZLjava/lang/String;[BLjava/lang/String;[B)[B"),
            "L@IDZLLLL");
  EXPECT_EQ(Noted(0x1010, "(ZBCSIJFD[[I[[Ljava/nio/ByteBuffer;Ljava/nio/ByteBuffer;)J"),
            "ZBCSIJFDLL@");
}

TEST(BufferMethods, AreNoOthers) {
  EXPECT_EQ(Noted(0x2000, "()V"), "not remembered");
  EXPECT_EQ(Noted(0x2008, "()Ljava/nio/ByteBuffer;"), "not remembered");
  EXPECT_EQ(Noted(0x2010, "([Ljava/nio/ByteBuffer;I)V"), "not remembered");
  EXPECT_EQ(Noted(0x2018, "(Lmy/java/nio/ByteBuffer;)V"), "not remembered");
  EXPECT_EQ(Noted(0x2020, "(Ljava/nio/MappedByteBuffer;)V"), "not remembered");
  EXPECT_EQ(BufferMethods::Find(nullptr), nullptr);
}

// The ID of a method that was unloaded may come back as another method's.
TEST(BufferMethods, AreForgottenWhenTheIdIsUsedAgain) {
  EXPECT_EQ(Noted(0x3000, "(ILjava/nio/ByteBuffer;)V"), "I@");
  EXPECT_EQ(Noted(0x3000, "(I[B)V"), "not remembered");
  EXPECT_EQ(Noted(0x3000, "(Ljava/nio/ByteBuffer;J)V"), "@J");
}

TEST(BufferMethods, AreFoundWhileOthersAreNoted) {
  constexpr std::uintptr_t kFirst = 0x100000;
  constexpr std::uintptr_t kCount = 4000;
  std::atomic<int> wrong{0};
  std::vector<std::thread> threads;
  for (int t = 0; t < 4; ++t) {
    threads.emplace_back([&wrong] {
      for (std::uintptr_t i = 0; i < kCount; ++i) {
        BufferMethods::Note(Method(kFirst + 8 * i), "(Ljava/nio/ByteBuffer;)V");
        const std::string* found = BufferMethods::Find(Method(kFirst + 8 * i));
        wrong += found != nullptr && *found == "@" ? 0 : 1;
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(wrong, 0);
}

}  // namespace
}  // namespace chartbridge
