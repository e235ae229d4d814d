// SPDX-License-Identifier: Apache-2.0
// Which given options replace which default ones.
#include "host/DefaultOptions.h"

#include <gtest/gtest.h>
#include <stdlib.h>

#include <fstream>
#include <string>
#include <vector>

#include "tests/integration/TempFolder.h"

namespace chartbridge {
namespace {

struct Row {
  const char* standard;
  const char* given;
  bool holds;
};

// Sets an environment variable, for its scope.
class Variable {
 public:
  Variable(const char* name, const char* value) : _name(name) { setenv(name, value, 1); }
  ~Variable() { unsetenv(_name); }
  Variable(const Variable&) = delete;
  Variable& operator=(const Variable&) = delete;

 private:
  const char* _name;
};

bool Holds(const std::string& option, const std::vector<std::string>& given) {
  return DefaultOptions(given).Holds(option);
}

void Check(const std::vector<Row>& rows) {
  for (const Row& row : rows) {
    EXPECT_EQ(Holds(row.standard, {"-Dfirst=1", row.given, "-ea"}), row.holds)
        << row.standard << " beside " << row.given;
  }
}

TEST(DefaultOptions, HoldWhileNothingIsSaid) {
  for (const char* option : {"-XX:+UseSerialGC", "-Xrs", "-Djava.awt.headless=true", "-Xmx1g"}) {
    EXPECT_TRUE(Holds(option, {})) << option;
    EXPECT_TRUE(Holds(option, {"-Dx=y", "-verbose:gc", "-XX:+PrintFlagsFinal", "-Xss1m"}))
        << option;
  }
}

TEST(DefaultOptions, GiveWayToEveryCollector) {
  Check({{"-XX:+UseSerialGC", "-XX:+UseG1GC", false},
         {"-XX:+UseSerialGC", "-XX:+UseParallelGC", false},
         {"-XX:+UseSerialGC", "-XX:+UseZGC", false},
         {"-XX:+UseSerialGC", "-XX:+UseShenandoahGC", false},
         {"-XX:+UseSerialGC", "-XX:+UseEpsilonGC", false},
         {"-XX:+UseSerialGC", "-XX:+UseConcMarkSweepGC", false},
         {"-XX:+UseSerialGC", "-XX:+AggressiveHeap", false},
         {"-XX:+UseSerialGC", "-XX:+UseSerialGC", false},
         {"-XX:+UseSerialGC", "-XX:-UseSerialGC", false},
         // Without any collector the JVM would not start.
         {"-XX:+UseSerialGC", "-XX:-UseG1GC", true},
         {"-XX:+UseSerialGC", "-XX:+UseGCOverheadLimit", true}});
}

TEST(DefaultOptions, GiveWayToEveryHeapSize) {
  for (const char* given :
       {"-Xmx1g", "-Xms8m", "-Xmn4m", "-XX:MaxHeapSize=1g", "-XX:InitialHeapSize=8m",
        "-XX:MinHeapSize=8m", "-XX:MaxRAM=1g", "-XX:MaxRAMPercentage=10",
        "-XX:InitialRAMPercentage=1", "-XX:MaxRAMFraction=8"}) {
    EXPECT_FALSE(Holds("-Xms16m", {given})) << given;
    EXPECT_FALSE(Holds("-XX:InitialHeapSize=16m", {given})) << given;
    EXPECT_FALSE(Holds("-XX:MaxRAMPercentage=25", {given})) << given;
    EXPECT_TRUE(Holds("-XX:+UseSerialGC", {given})) << given;
  }
  Check({{"-XX:MinHeapFreeRatio=20", "-XX:MaxHeapFreeRatio=80", false},
         {"-XX:MaxHeapFreeRatio=40", "-XX:MinHeapFreeRatio=80", false},
         {"-XX:MaxHeapFreeRatio=40", "-Xmx1g", true}});
}

TEST(DefaultOptions, GiveWayWithinTheirFamily) {
  Check({{"-XX:TieredStopAtLevel=1", "-XX:TieredStopAtLevel=4", false},
         {"-XX:TieredStopAtLevel=1", "-XX:-TieredCompilation", false},
         {"-XX:TieredStopAtLevel=1", "-XX:+TieredCompilation", false},
         {"-XX:TieredStopAtLevel=1", "-XX:CompilationMode=high-only", false},
         {"-XX:TieredStopAtLevel=1", "-Xint", false},
         {"-XX:TieredStopAtLevel=1", "-XX:CompileThreshold=5", true},
         {"-XX:-UsePerfData", "-XX:+UsePerfData", false},
         {"-XX:-UsePerfData", "-XX:+PerfDataSaveToFile", false},
         {"-XX:-UsePerfData", "-XX:PerfDataSaveFile=/tmp/counters", false},
         {"-XX:+DisableAttachMechanism", "-XX:-DisableAttachMechanism", false},
         {"-XX:+DisableAttachMechanism", "-XX:+StartAttachListener", false},
         {"-Xrs", "-XX:-ReduceSignalUsage", false},
         {"-Xrs", "-XX:+ReduceSignalUsage", false},
         {"-Djava.awt.headless=true", "-Djava.awt.headless=false", false},
         {"-Djava.awt.headless=true", "-Djava.awt.headless", false},
         {"-Djava.awt.headless=true", "-Djava.awt.headlessly=1", true},
         {"-Xlog:cds=off", "-Xlog:cds=debug", false},
         {"-Xlog:cds=off", "-Xlog:class+load", true}});
}

TEST(DefaultOptions, GiveWayToEveryArchive) {
  for (const char* given :
       {"-Xshare:off", "-Xshare:dump", "-XX:SharedArchiveFile=x.jsa", "-XX:-UseSharedSpaces",
        "-XX:ArchiveClassesAtExit=x.jsa", "-XX:+AutoCreateSharedArchive",
        "-XX:DumpLoadedClassList=list", "-XX:AOTCache=x.aot", "-XX:AOTMode=off"}) {
    EXPECT_FALSE(Holds("-XX:SharedArchiveFile=own.jsa", {given})) << given;
    EXPECT_FALSE(Holds("-Xshare:auto", {given})) << given;
  }
}

// An option that no family names is one for itself.
TEST(DefaultOptions, TakeOptionsThatAreNotInTheTable) {
  Check({{"-Dname=1", "-Dname=2", false},
         {"-Dname=1", "-Dother=2", true},
         {"-XX:+AlwaysPreTouch", "-XX:-AlwaysPreTouch", false},
         {"-XX:MaxMetaspaceSize=64m", "-XX:MaxMetaspaceSize=1g", false}});
}

TEST(DefaultOptions, LookAtWhatTheJvmReadsByItself) {
  for (const char* name : {"JAVA_TOOL_OPTIONS", "_JAVA_OPTIONS"}) {
    const Variable variable(name, "-Dx=y  -XX:+UseG1GC");
    EXPECT_FALSE(Holds("-XX:+UseSerialGC", {})) << name;
    EXPECT_TRUE(Holds("-Xrs", {})) << name;
  }
  const TempFolder folder;
  const std::string file = folder.Path() + "/options";
  std::ofstream(file) << "-Dx=y\n-XX:+UseG1GC\n";
  EXPECT_FALSE(Holds("-XX:+UseSerialGC", {"-XX:VMOptionsFile=" + file}));
  EXPECT_TRUE(Holds("-XX:+UseSerialGC", {"-XX:VMOptionsFile=/no/such/file"}));
}

}  // namespace
}  // namespace chartbridge
