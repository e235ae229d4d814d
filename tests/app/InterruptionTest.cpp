// SPDX-License-Identifier: Apache-2.0
// What a command that is ended by a signal leaves behind.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <signal.h>

#include <algorithm>
#include <chrono>
#include <functional>
#include <string>
#include <thread>
#include <vector>

#include "tests/app/Samples.h"
#include "tests/app/StartedProgram.h"
#include "tests/app/WorkFolder.h"

namespace chartbridge {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::chrono::seconds kLongEnough(60);

bool Becomes(const std::function<bool()>& condition) {
  const auto end = std::chrono::steady_clock::now() + kLongEnough;
  while (!condition()) {
    if (std::chrono::steady_clock::now() > end) return false;
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
  }
  return true;
}

bool HasUnfinished(const WorkFolder& folder) {
  const std::vector<std::string> names = folder.Names();
  return std::any_of(names.begin(), names.end(), [](const std::string& name) {
    return name.size() > 5 && name.compare(name.size() - 5, 5, ".part") == 0;
  });
}

class InterruptionTest : public testing::Test {
 protected:
  InterruptionTest() {
    settings.folder = folder.Path();
    settings.environment["TMPDIR"] = temporary.Path();
    settings.environment["DumpChartTimePath"] = kUnset;
  }

  /// A picture so large that its writing takes seconds.
  StartedProgram StartLongRender(const std::string& picture = "sales.png") const {
    return StartedProgram({CHARTBRIDGE_COMMAND, "render", "sales.gpl", "-d", "sales.csv", "-o",
                           picture, "--size", "1200"},
                          settings);
  }

  void ExpectNothingIsLeft() const {
    EXPECT_THAT(folder.NewNames(), IsEmpty());
    EXPECT_THAT(temporary.Names(), IsEmpty());
  }

  /// Sends the signal while the picture is being written.
  void ExpectCleanEnd(int signal) const {
    StartedProgram program = StartLongRender();
    ASSERT_TRUE(Becomes([&] { return HasUnfinished(folder); }));
    program.Send(signal);
    const RunResult result = program.Result();
    EXPECT_EQ(result.exitCode, 128 + signal);
    EXPECT_TRUE(result.endedBySignal);
    EXPECT_EQ(result.output, "");
    EXPECT_EQ(result.errors, "");
    ExpectNothingIsLeft();
  }

  const SampleFolder folder;
  const WorkFolder temporary;
  RunSettings settings;
};

TEST_F(InterruptionTest, CtrlCWhileAPictureIsWrittenLeavesNothing) { ExpectCleanEnd(SIGINT); }

TEST_F(InterruptionTest, TerminationWhileAPictureIsWrittenLeavesNothing) {
  ExpectCleanEnd(SIGTERM);
}

TEST_F(InterruptionTest, EndOfTheTerminalWhileAPictureIsWrittenLeavesNothing) {
  ExpectCleanEnd(SIGHUP);
}

TEST_F(InterruptionTest, ThePictureThatWasThereStays) {
  folder.Write("sales.png", "old");
  StartedProgram program = StartLongRender();
  ASSERT_TRUE(Becomes([&] { return HasUnfinished(folder); }));
  program.Send(SIGINT);
  EXPECT_EQ(program.Result().exitCode, 128 + SIGINT);
  EXPECT_THAT(folder.NewNames(), ElementsAre("sales.png"));
  EXPECT_EQ(folder.Read("sales.png"), "old");
}

TEST_F(InterruptionTest, WhileJavaStartsItLeavesNothingEither) {
  for (const int milliseconds : {0, 20, 60, 120}) {
    StartedProgram program = StartLongRender();
    ASSERT_TRUE(Becomes([&] { return !temporary.Names().empty(); }));
    std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds));
    program.Send(SIGTERM);
    EXPECT_EQ(program.Result().exitCode, 128 + SIGTERM) << milliseconds;
    ExpectNothingIsLeft();
  }
}

/// As under nohup, and in the background of a script.
TEST_F(InterruptionTest, SignalThatTheCallerIgnoresStaysIgnored) {
  settings.ignoresInterruption = true;
  StartedProgram program({CHARTBRIDGE_COMMAND, "render", "sales.gpl", "-d", "sales.csv", "-o",
                          "sales.png", "--size", "600"},
                         settings);
  ASSERT_TRUE(Becomes([&] { return HasUnfinished(folder); }));
  program.Send(SIGINT);
  EXPECT_EQ(program.Result().exitCode, 0);
  EXPECT_THAT(folder.NewNames(), ElementsAre("sales.png"));
}

}  // namespace
}  // namespace chartbridge
