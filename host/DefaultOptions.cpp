// SPDX-License-Identifier: Apache-2.0
#include "host/DefaultOptions.h"

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <iterator>

#include "host/OptionText.h"

namespace chartbridge {
namespace {

constexpr char kOptionsFile[] = "-XX:VMOptionsFile=";

// What an option is about, without its value: "-XX:UseSerialGC" of -XX:-UseSerialGC,
// "-XX:MaxHeapSize" of -XX:MaxHeapSize=1g, "-Dname" of -Dname=value, "-Xmx" of -Xmx1g.
std::string NameOf(const std::string& option) {
  for (const char* sized : {"-Xmx", "-Xms", "-Xmn", "-Xshare"}) {
    if (option.rfind(sized, 0) == 0) return sized;
  }
  if (option.rfind("-XX:+", 0) == 0 || option.rfind("-XX:-", 0) == 0) {
    return "-XX:" + option.substr(5);
  }
  return option.substr(0, option.find('='));
}

// Options about one thing. A member with + or - stands for that choice alone: -XX:-UseG1GC says
// nothing against another collector, and a JVM that is left without any does not start.
using Family = std::vector<std::string>;

const std::vector<Family>& Families() {
  static const auto* const families = new std::vector<Family>{
      // The collector.
      {"-XX:UseSerialGC", "-XX:+UseParallelGC", "-XX:+UseParallelOldGC", "-XX:+UseG1GC",
       "-XX:+UseZGC", "-XX:+UseShenandoahGC", "-XX:+UseEpsilonGC", "-XX:+UseConcMarkSweepGC",
       "-XX:+AggressiveHeap"},
      // How large the heap is. The JVM refuses sizes that do not fit together.
      {"-Xmx", "-Xms", "-Xmn", "-XX:MaxHeapSize", "-XX:InitialHeapSize", "-XX:MinHeapSize",
       "-XX:SoftMaxHeapSize", "-XX:NewSize", "-XX:MaxNewSize", "-XX:OldSize", "-XX:MaxRAM",
       "-XX:MaxRAMPercentage", "-XX:MinRAMPercentage", "-XX:InitialRAMPercentage",
       "-XX:MaxRAMFraction", "-XX:MinRAMFraction", "-XX:InitialRAMFraction", "-XX:AggressiveHeap"},
      // When it grows and shrinks.
      {"-XX:MinHeapFreeRatio", "-XX:MaxHeapFreeRatio"},
      // The compiler.
      {"-XX:TieredStopAtLevel", "-XX:TieredCompilation", "-XX:CompilationMode", "-Xint", "-Xcomp",
       "-Xmixed", "-XX:UseJVMCICompiler"},
      // Counters in a file of the temporary folder.
      {"-XX:UsePerfData", "-XX:PerfDataSaveToFile", "-XX:PerfDataSaveFile",
       "-XX:PerfDisableSharedMem"},
      // Whether other processes may attach.
      {"-XX:DisableAttachMechanism", "-XX:StartAttachListener"},
      // Whose the signals are.
      {"-Xrs", "-XX:ReduceSignalUsage"},
      // Archives of classes.
      {"-XX:SharedArchiveFile", "-Xshare", "-XX:UseSharedSpaces", "-XX:RequireSharedSpaces",
       "-XX:ArchiveClassesAtExit", "-XX:AutoCreateSharedArchive", "-XX:RecordDynamicDumpInfo",
       "-XX:DynamicDumpSharedSpaces", "-XX:DumpSharedSpaces", "-XX:DumpLoadedClassList",
       "-XX:SharedClassListFile", "-XX:AOTCache", "-XX:AOTMode", "-XX:AOTConfiguration",
       "-XX:AOTCacheOutput"},
  };
  return *families;
}

bool IsMember(const Family& family, const std::string& option) {
  return std::any_of(family.begin(), family.end(), [&](const std::string& member) {
    return member == option || member == NameOf(option);
  });
}

bool AreRelated(const std::string& option, const std::string& other) {
  if (NameOf(option) == NameOf(other)) return true;
  return std::any_of(Families().begin(), Families().end(), [&](const Family& family) {
    return IsMember(family, option) && IsMember(family, other);
  });
}

}  // namespace

DefaultOptions::DefaultOptions(const std::vector<std::string>& given) {
  for (const std::string& option : given) Look(option);
  for (const char* variable : {"JAVA_TOOL_OPTIONS", "_JAVA_OPTIONS"}) {
    const char* text = std::getenv(variable);
    if (text != nullptr) LookInto(text);
  }
}

bool DefaultOptions::Holds(const std::string& option) const {
  return std::none_of(_given.begin(), _given.end(),
                      [&](const std::string& given) { return AreRelated(option, given); });
}

void DefaultOptions::Look(const std::string& option) {
  _given.push_back(option);
  if (option.rfind(kOptionsFile, 0) != 0) return;
  std::ifstream file(option.substr(sizeof kOptionsFile - 1));
  LookInto({std::istreambuf_iterator<char>(file), {}});
}

// The JVM reads these texts by rules of its own, and says what is wrong with them.
void DefaultOptions::LookInto(const std::string& text) {
  std::vector<std::string> options;
  SplitOptions(text, options);
  _given.insert(_given.end(), options.begin(), options.end());
}

}  // namespace chartbridge
