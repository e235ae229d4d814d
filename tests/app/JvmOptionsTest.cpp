// SPDX-License-Identifier: Apache-2.0
// Options of the JVM that the user gives, on every JVM of this machine.
#include <gtest/gtest.h>

#include <filesystem>
#include <regex>
#include <set>
#include <string>
#include <system_error>

#include "tests/app/CommandRun.h"
#include "tests/app/Samples.h"

namespace chartbridge {
namespace {

namespace fs = std::filesystem;

// "" stands for the JVM that the command finds by itself.
std::set<std::string> JavaHomes() {
  std::set<std::string> homes{""};
  std::error_code error;
  for (const auto& entry : fs::directory_iterator("/usr/lib/jvm", error)) {
    if (fs::exists(entry.path() / "bin/java", error)) homes.insert(fs::canonical(entry.path()));
  }
  return homes;
}

RunSettings With(const std::string& home, const std::string& options) {
  RunSettings settings;
  settings.environment = {{"TESK_JVM_OPTIONS", options}};
  if (!home.empty()) settings.environment["JAVA_HOME"] = home;
  return settings;
}

bool JvmKnows(const std::string& home, const std::string& option) {
  const std::string java = home.empty() ? "java" : home + "/bin/java";
  return RunProgram({java, option, "-version"}).exitCode == 0;
}

// An option, and what the JVM then says of one of its flags, which a default option sets otherwise.
struct Choice {
  const char* option;
  const char* flag;
  const char* value;
};

constexpr Choice kChoices[] = {
    {"-XX:+UseG1GC", "UseSerialGC", "false"},
    {"-XX:+UseG1GC", "UseG1GC", "true"},
    {"-XX:+UseParallelGC", "UseParallelGC", "true"},
    {"-XX:+UseZGC", "UseZGC", "true"},
    {"-XX:+UseShenandoahGC", "UseShenandoahGC", "true"},
    {"-XX:-UseSerialGC", "UseSerialGC", "false"},
    {"-Xmx48m", "MaxHeapSize", "50331648"},
    {"-Xms48m", "InitialHeapSize", "50331648"},
    {"-XX:MaxRAMPercentage=5", "MaxRAMPercentage", "5.000000"},
    {"-XX:MinHeapFreeRatio=60", "MinHeapFreeRatio", "60"},
    {"-XX:TieredStopAtLevel=4", "TieredStopAtLevel", "4"},
    {"-XX:+UsePerfData", "UsePerfData", "true"},
    {"-XX:-DisableAttachMechanism", "DisableAttachMechanism", "false"},
    {"-XX:-ReduceSignalUsage", "ReduceSignalUsage", "false"},
};

// The JVM lists its flags while it starts, which the command passes on with its other messages.
bool HasFlag(const std::string& errors, const Choice& choice) {
  const std::regex line(std::string("\\b") + choice.flag + " +:?= +" + choice.value + "\\b");
  return std::regex_search(errors, line);
}

TEST(JvmOptions, ReplaceTheDefaultOnes) {
  const SampleFolder folder;
  for (const std::string& home : JavaHomes()) {
    for (const Choice& choice : kChoices) {
      if (!JvmKnows(home, choice.option)) continue;
      const std::string picture = folder.File("chart.png");
      fs::remove(picture);
      const std::string options = std::string(choice.option) + " -XX:+PrintFlagsFinal";
      const RunResult result = folder.Render({"-o", picture}, With(home, options));
      EXPECT_EQ(result.exitCode, 0) << home << " " << choice.option;
      EXPECT_TRUE(HasFlag(result.errors, choice)) << home << " " << choice.option;
      EXPECT_TRUE(fs::exists(picture)) << home << " " << choice.option;
    }
  }
}

TEST(JvmOptions, AreSilent) {
  const SampleFolder folder;
  const RunResult result =
      folder.Render({"-o", folder.File("chart.png")}, With("", "-XX:+UseG1GC -Xmx48m"));
  EXPECT_EQ(result.exitCode, 0);
  EXPECT_EQ(result.errors, "");
}

}  // namespace
}  // namespace chartbridge
