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
       {"-Xmx8m", "-Xms8m", "-Xmn4m", "-XX:MaxHeapSize=8m", "-XX:InitialHeapSize=8m",
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

// Without an initial size the JVM begins with a part of the machine's memory.
TEST(DefaultOptions, KeepTheInitialSizeBesideALargerLimit) {
  Check({{"-Xms16m", "-Xmx256m", true},
         {"-Xms16m", "-Xmx16m", true},
         {"-Xms16m", "-Xmx16384k", true},
         {"-Xms16m", "-Xmx16777216", true},
         {"-Xms16m", "-Xmx16777215", false},
         {"-Xms16m", "-Xmx15m", false},
         {"-Xms16m", "-Xmx2G", true},
         {"-Xms16m", "-Xmx1T", true},
         {"-Xms16m", "-XX:MaxHeapSize=64M", true},
         {"-Xms16m", "-XX:MaxHeapSize=8M", false},
         {"-XX:InitialHeapSize=16m", "-Xmx1g", true},
         {"-XX:InitialHeapSize=16m", "-Xmx8m", false},
         {"-Xmx256m", "-Xms16m", true},
         {"-Xmx8m", "-Xms16m", false},
         {"-Xmx256m", "-Xmx1g", false},
         // Of what cannot be read, the JVM says what is wrong.
         {"-Xms16m", "-Xmx", false},
         {"-Xms16m", "-Xmxm", false},
         {"-Xms16m", "-Xmx1x", false},
         {"-Xms16m", "-Xmx1gg", false},
         {"-Xms16m", "-Xmx-1g", false},
         {"-Xms16m", "-Xmx99999999999999999999g", false},
         {"-Xms16m", "-Xmx18446744073709551616", false},
         {"-Xms16m", "-Xmx99999999999g", false},
         {"-Xms16m", "-XX:MaxHeapSize", false}});
  EXPECT_FALSE(Holds("-Xms16m", {"-Xmx8m", "-Xmx1g"}));
  EXPECT_FALSE(Holds("-Xms16m", {"-Xmx1g", "-Xms4m"}));
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

// -Xshare:auto is the JVM's own default: it turns off the search for an archive, and takes away
// none that the host names.
TEST(DefaultOptions, LeaveANamedArchiveUnlessThereIsAnother) {
  for (const char* given : {"-Xshare:auto", "-Xshare:on", "-XX:+UseSharedSpaces"}) {
    EXPECT_TRUE(DefaultOptions({given}).TakesNamedArchive()) << given;
    EXPECT_FALSE(DefaultOptions({given}).SearchesArchive()) << given;
  }
  for (const char* given :
       {"-Xshare:off", "-Xshare:dump", "-XX:SharedArchiveFile=x.jsa", "-XX:-UseSharedSpaces",
        "-XX:ArchiveClassesAtExit=x.jsa", "-XX:+AutoCreateSharedArchive", "-XX:AOTCache=x.aot",
        "-XX:AOTMode=off"}) {
    EXPECT_FALSE(DefaultOptions({given}).TakesNamedArchive()) << given;
    EXPECT_FALSE(DefaultOptions({given, "-Xshare:auto"}).TakesNamedArchive()) << given;
    EXPECT_FALSE(DefaultOptions({given}).SearchesArchive()) << given;
  }
  EXPECT_TRUE(DefaultOptions({"-Xmx1g"}).TakesNamedArchive());
  EXPECT_TRUE(DefaultOptions({"-Xmx1g"}).SearchesArchive());
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

TEST(DefaultOptions, LookAtFilesThatVariablesName) {
  const TempFolder folder;
  const std::string options = folder.Path() + "/options";
  const std::string flags = folder.Path() + "/flags";
  std::ofstream(options) << "-Dx=y\n-XX:+UseG1GC\n";
  std::ofstream(flags) << "+UseG1GC\n";
  for (const char* name : {"JAVA_TOOL_OPTIONS", "_JAVA_OPTIONS"}) {
    for (const std::string& value : {"-Da=b -XX:VMOptionsFile=" + options, "-XX:Flags=" + flags}) {
      const Variable variable(name, value.c_str());
      EXPECT_FALSE(Holds("-XX:+UseSerialGC", {})) << name << "=" << value;
      EXPECT_TRUE(Holds("-Xrs", {})) << name << "=" << value;
    }
  }
}

// Files of flags have names alone, and remarks.
TEST(DefaultOptions, LookAtFilesOfFlags) {
  const TempFolder folder;
  const std::string file = folder.Path() + "/flags";
  const std::string option = "-XX:Flags=" + file;
  std::ofstream(file) << "# +UsePerfData\n-UseParallelGC MaxHeapSize=8m # +UseZGC\n"
                         "+UseG1GC -DisableAttachMechanism";
  EXPECT_FALSE(Holds("-XX:+UseSerialGC", {option}));
  EXPECT_FALSE(Holds("-Xms16m", {option}));
  EXPECT_FALSE(Holds("-XX:+DisableAttachMechanism", {option}));
  EXPECT_TRUE(Holds("-XX:-UsePerfData", {option}));
  std::ofstream(file) << "# +UseG1GC\nMaxHeapSize=1g # +UseZGC";
  EXPECT_TRUE(Holds("-XX:+UseSerialGC", {option}));
  const std::string options = folder.Path() + "/options";
  std::ofstream(options) << option;
  std::ofstream(file) << "+UseG1GC";
  EXPECT_FALSE(Holds("-XX:+UseSerialGC", {"-XX:VMOptionsFile=" + options}));
  EXPECT_TRUE(Holds("-XX:+UseSerialGC", {"-XX:Flags=/no/such/file"}));
}

// The JVM does not read a file of options out of another one.
TEST(DefaultOptions, EndAtFilesThatNameThemselves) {
  const TempFolder folder;
  const std::string file = folder.Path() + "/options";
  std::ofstream(file) << "-XX:VMOptionsFile=" + file;
  EXPECT_TRUE(Holds("-XX:+UseSerialGC", {"-XX:VMOptionsFile=" + file}));
}

}  // namespace
}  // namespace chartbridge
