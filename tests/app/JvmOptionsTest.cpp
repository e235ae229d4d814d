// SPDX-License-Identifier: Apache-2.0
// Options of the JVM that the user gives, on every JVM of this machine.
#include <gtest/gtest.h>

#include <filesystem>
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

TEST(JvmOptions, ReplaceTheDefaultOnes) {
  const SampleFolder folder;
  for (const std::string& home : JavaHomes()) {
    for (const char* option :
         {"-XX:+UseG1GC", "-XX:+UseParallelGC", "-XX:+UseZGC", "-XX:+UseShenandoahGC",
          "-XX:-UseSerialGC", "-Xmx48m", "-Xms48m", "-XX:MaxRAMPercentage=5",
          "-XX:MinHeapFreeRatio=60", "-XX:TieredStopAtLevel=4", "-XX:+UsePerfData",
          "-XX:-DisableAttachMechanism", "-XX:-ReduceSignalUsage", "-Xshare:off"}) {
      if (!JvmKnows(home, option)) continue;
      const std::string picture = folder.File("chart.png");
      fs::remove(picture);
      const RunResult result = folder.Render({"-o", picture}, With(home, option));
      EXPECT_EQ(result.exitCode, 0) << home << " " << option << ": " << result.errors;
      EXPECT_EQ(result.errors, "") << home << " " << option;
      EXPECT_TRUE(fs::exists(picture)) << home << " " << option;
    }
  }
}

}  // namespace
}  // namespace chartbridge
