// SPDX-License-Identifier: Apache-2.0
// The reference host's shared things, from many threads and without a JVM.
#include <gtest/gtest.h>

#include <atomic>
#include <string>
#include <thread>
#include <vector>

#include "host/DebugOutput.h"
#include "host/JvmSettings.h"
#include "platform/ChartBase.h"
#include "platform/ChartTransformer.h"
#include "platform/CriticalSection.h"
#include "platform/TeskJVM.h"

namespace chartbridge {
namespace {

constexpr int kThreads = 4;
constexpr int kRounds = 5000;

template <class Work>
void OnManyThreads(Work work) {
  std::vector<std::thread> threads;
  for (int t = 0; t < kThreads; ++t) threads.emplace_back(work);
  for (std::thread& thread : threads) thread.join();
}

TEST(CriticalSection, LetsOneThreadInAndItsOwnerAgain) {
  const CriticalSection section;
  int count = 0;
  OnManyThreads([&] {
    for (int i = 0; i < kRounds; ++i) {
      const CriticalSection::Lock outer(section);
      const CriticalSection::Lock inner(section);
      ++count;
    }
  });
  EXPECT_EQ(count, kThreads * kRounds);
}

TEST(CriticalSection, IsOneForTheProcess) {
  std::atomic<CriticalSection*> seen{&TeskJVM::CritSect()};
  std::atomic<int> different{0};
  OnManyThreads([&] { different += &TeskJVM::CritSect() == seen ? 0 : 1; });
  EXPECT_EQ(different, 0);
}

TEST(DebugOutput, TakesOneTextAtATime) {
  std::string all;
  SetDebugOutput([&all](const std::string& text) { all += text; });
  OnManyThreads([] {
    for (int i = 0; i < kRounds; ++i) ChartBase::printDebugInfo("ab");
  });
  SetDebugOutput(nullptr);
  EXPECT_EQ(all.size(), std::size_t{2} * kThreads * kRounds);
}

// Java threads come in without a lock.
TEST(ChartTransformer, SharesNothing) {
  std::atomic<int> wrong{0};
  OnManyThreads([&wrong] {
    for (int i = 0; i < kRounds / 10; ++i) {
      const std::string number = std::to_string(i);
      ChartTransformer chart("<chart xmlns=\"urn:chartbridge:chart:2\" width=\"" + number + "\"/>");
      chart.applyTemplate("<template xmlns=\"urn:chartbridge:template:1\"><titles title=\"" +
                          number +
                          "\"/><axes><x min=\"0.5\" max=\"2024-01-31\"/></axes></template>");
      wrong += chart.getEntireXML(ChartBase::_utf8) ==
                       "<?xml version=\"1.0\" encoding=\"UTF-8\"?>"
                       "<chart xmlns=\"urn:chartbridge:chart:2\" width=\"" +
                           number + "\"><titles title=\"" + number +
                           "\"/><axes><x min=\"0.5\" max=\"2024-01-31\"/></axes></chart>"
                   ? 0
                   : 1;
    }
  });
  EXPECT_EQ(wrong, 0);
}

TEST(JvmSettings, AreReadAndWrittenAsAWhole) {
  std::atomic<int> torn{0};
  OnManyThreads([&torn] {
    for (int i = 0; i < kRounds; ++i) {
      JvmSettings settings;
      settings.javaHome = std::string(40, static_cast<char>('a' + i % 26));
      settings.guardLibrary = settings.javaHome;
      SetJvmSettings(settings);
      const JvmSettings seen = GetJvmSettings();
      torn += seen.javaHome == seen.guardLibrary ? 0 : 1;
    }
  });
  SetJvmSettings({});
  EXPECT_EQ(torn, 0);
}

}  // namespace
}  // namespace chartbridge
