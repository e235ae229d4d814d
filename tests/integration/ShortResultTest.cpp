// SPDX-License-Identifier: Apache-2.0
// Results of fewer bytes than the library reads, on real JVMs whose process has a heap full of old
// bytes: under the guard, and without it.
#include <gtest/gtest.h>

#include <iostream>
#include <map>
#include <ostream>
#include <string>
#include <vector>

#include "tests/integration/ChildProcess.h"
#include "tests/integration/JavaHomes.h"

namespace chartbridge {
namespace {

constexpr int kSeconds = 60;

/// What happens without the guard, on every JVM of today.
enum class Bare {
  /// The same.
  kSame,
  /// Whatever the heap holds decides. Most often the process dies.
  kUndefined,
};

struct Row {
  const char* name;
  /// What it prints under the guard.
  const char* output;
  Bare bare;
};

void PrintTo(const Row& row, std::ostream* stream) { *stream << row.name; }

constexpr Row kRows[] = {
    // Three lengths are read behind an array of no bytes. Today's JVMs have a page of zeros there.
    {"MapOfNothing", "answer=0\nfirst=\nsecond=\nthird=\nsame=1\n", Bare::kSame},
    {"PictureOfNothing", "answer=0\nfirst=\nsecond=old\nthird=old\nsame=1\n", Bare::kSame},
    // Behind other arrays they have whatever the heap holds.
    {"MapOfOneBlock", "answer=1\nfirst=one\nsecond=\nthird=\nsame=1\n", Bare::kUndefined},
    {"MapOfTwoBlocks", "answer=1\nfirst=one\nsecond=two\nthird=\nsame=1\n", Bare::kUndefined},
    {"MapOfThreeBlocks", "answer=1\nfirst=one\nsecond=two\nthird=three\nsame=1\n", Bare::kSame},
    {"ChartsOfNothing", "answer=0\npicture=\nstyled=0\ndocument=\ngraph=\n", Bare::kSame},
    {"ConversionsOfNothing", "answer=1\nxml=\nupgraded=1\nnewXml=\n", Bare::kSame},
    {"TreesOfNothing", "display=\nmodel=\nsize=0\nmeasured=0\nwidth=7\nanswer=0\nbytes=0\nimage=\n",
     Bare::kSame},
};

class ShortResult : public testing::TestWithParam<Row> {
 protected:
  static ChildResult Run(const std::string& home, const std::string& mode) {
    std::vector<std::string> command = {CHARTBRIDGE_TEST_PROBE, GetParam().name};
    if (!mode.empty()) command.push_back(mode);
    // The C library itself fills all memory with old bytes, and keeps none of its own aside.
    const std::map<std::string, std::string> environment = {
        {"JAVA_HOME", home},
        {"TESK_CLASSPATH", ""},
        {"DumpChartTimePath", ""},
        {"GLIBC_TUNABLES", "glibc.malloc.perturb=90:glibc.malloc.tcache_count=0"}};
    return RunChild(command, environment, kSeconds);
  }

  static std::string Expected() {
    return std::string("dirty=1\n") + GetParam().output + "done=1\n";
  }

  static void ExpectGuarded(const std::string& home) {
    const ChildResult result = Run(home, "");
    EXPECT_EQ(result.Words(), "exit 0") << result.errors;
    EXPECT_EQ(result.output, Expected());
  }

  static void ExpectBare(const std::string& home) {
    const ChildResult result = Run(home, "bare");
    // For whoever reads the log: what this JVM really did.
    std::cout << "bare on " << home << ": " << result.Words() << "\n"
              << result.output.substr(0, 200) << "\n";
    EXPECT_EQ(result.output.substr(0, 8), "dirty=1\n");
    if (GetParam().bare == Bare::kUndefined) return;
    EXPECT_EQ(result.Words(), "exit 0") << result.errors;
    EXPECT_EQ(result.output, Expected());
  }
};

TEST_P(ShortResult, GuardedOnDefaultJvm) { ExpectGuarded(DefaultJavaHome()); }

TEST_P(ShortResult, BareOnDefaultJvm) { ExpectBare(DefaultJavaHome()); }

TEST_P(ShortResult, GuardedOnOtherJvm) {
  if (OtherJavaHome().empty()) GTEST_SKIP() << "there is one JVM on this machine";
  ExpectGuarded(OtherJavaHome());
}

TEST_P(ShortResult, BareOnOtherJvm) {
  if (OtherJavaHome().empty()) GTEST_SKIP() << "there is one JVM on this machine";
  ExpectBare(OtherJavaHome());
}

INSTANTIATE_TEST_SUITE_P(All, ShortResult, testing::ValuesIn(kRows),
                         [](const auto& each) { return std::string(each.param.name); });

}  // namespace
}  // namespace chartbridge
