// SPDX-License-Identifier: Apache-2.0
#include <jni.h>

#include <atomic>
#include <chrono>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "tests/support/ContractTest.h"
#include "tests/support/EventLog.h"
#include "tests/support/FakePlatform.h"

extern "C" jstring JNICALL Java_com_tesk_charteditor_template_ApplyTemplate_apply(
    JNIEnv* env, jobject self, jstring chartXml, jstring templateXml);

// Many Java threads in the one function that Java calls. It takes no lock and shares nothing, so
// each thread has a JVM of its own here, and ThreadSanitizer sees whatever they share after all.
namespace chartbridge::testing {
namespace {

constexpr int kThreads = 8;
constexpr int kRounds = 100;
constexpr std::chrono::seconds kPatience(30);

using ApplyTemplateConcurrencyTest = ContractTest;

TEST_F(ApplyTemplateConcurrencyTest, ManyThreadsAtOnce) {
  EventLog::Get().Stop();
  FakePlatform::Get().entire_xml = "<chart styled='1'/>";
  // Whoever comes in first waits for another one: no lock keeps them apart.
  std::atomic<int> inside{0};
  std::atomic<bool> together{false};
  std::atomic<int> calls{0};
  const auto end = std::chrono::steady_clock::now() + kPatience;
  FakePlatform::Get().on_transform = [&] {
    if (++inside > 1) together = true;
    while (!together && std::chrono::steady_clock::now() < end) std::this_thread::yield();
    // Every second call fails in one of its three steps.
    const bool fails = ++calls % 2 == 0;
    --inside;
    if (fails) throw calls.load();
  };

  std::atomic<int> wrong{0};
  std::vector<std::thread> threads;
  for (int i = 0; i < kThreads; ++i) {
    threads.emplace_back([&wrong] {
      FakeJvm own;
      for (int round = 0; round < kRounds; ++round) {
        const jstring chart = own.MakeString("<chart/>");
        const jstring templ = own.MakeString("<template/>");
        const std::string result =
            own.Describe(Java_com_tesk_charteditor_template_ApplyTemplate_apply(own.Env(), nullptr,
                                                                                chart, templ));
        if (result != "\"\"" && result != "\"<chart styled='1'/>\"") ++wrong;
      }
      if (own.UnreleasedBuffers() != 0) ++wrong;
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(wrong, 0);
  EXPECT_TRUE(together);
}

}  // namespace
}  // namespace chartbridge::testing
