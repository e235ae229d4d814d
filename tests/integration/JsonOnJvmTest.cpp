// SPDX-License-Identifier: Apache-2.0
// On which threads charts can be exported as JSON, under the guard and without it.
#include <gtest/gtest.h>

#include <string>

#include "tests/integration/ChildProcess.h"

namespace chartbridge {
namespace {

constexpr int kSeconds = 60;

ChildResult Probe(const std::string& name, const std::string& mode) {
  return RunChild({CHARTBRIDGE_TEST_PROBE, name, mode}, {}, kSeconds);
}

void ExpectOutput(const ChildResult& result, const std::string& output) {
  EXPECT_EQ(result.Words(), "exit 0") << result.errors;
  EXPECT_EQ(result.output, output);
}

TEST(JsonOnJvm, TheThreadThatStartedNeedsNoGuard) {
  ExpectOutput(Probe("OnTheThreadThatStarted", "guarded"), "answer=1\nvega=1\nforeign=0\ndone=1\n");
  ExpectOutput(Probe("OnTheThreadThatStarted", "bare"), "answer=1\nvega=1\nforeign=0\ndone=1\n");
}

TEST(JsonOnJvm, AnotherThreadWorksUnderTheGuard) {
  ExpectOutput(Probe("OnAnotherThread", "guarded"), "answer=1\nvega=1\nforeign=1\ndone=1\n");
}

TEST(JsonOnJvm, AnotherThreadEndsTheProcessWithoutTheGuard) {
  const ChildResult result = Probe("OnAnotherThread", "bare");
  EXPECT_NE(result.Words(), "exit 0");
  EXPECT_EQ(result.output.find("done=1"), std::string::npos) << result.output;
}

TEST(JsonOnJvm, ManyThreadsWorkUnderTheGuard) {
  std::string answers;
  for (int i = 0; i < 20; ++i) answers += "answer=1\n";
  ExpectOutput(Probe("OnManyThreads", "guarded"), answers + "vega=1\nforeign=1\ndone=1\n");
}

TEST(JsonOnJvm, AnotherThreadGivesTheEditorItsEnvWithoutTheGuard) {
  ExpectOutput(Probe("OnAnotherThreadWithItsEnv", "bare"), "answer=1\nvega=1\nforeign=0\ndone=1\n");
}

}  // namespace
}  // namespace chartbridge
