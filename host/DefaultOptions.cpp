// SPDX-License-Identifier: Apache-2.0
#include "host/DefaultOptions.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <limits>
#include <sstream>

#include "host/OptionText.h"

namespace chartbridge {
namespace {

constexpr char kOptionsFile[] = "-XX:VMOptionsFile=";
constexpr char kFlagsFile[] = "-XX:Flags=";

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

bool StartsWith(const std::string& text, const std::string& prefix) {
  return text.rfind(prefix, 0) == 0;
}

// How many bytes a size of the JVM means: digits, then perhaps one letter. 0: it cannot be read.
std::uint64_t BytesOf(const std::string& size) {
  constexpr std::uint64_t most = std::numeric_limits<std::uint64_t>::max();
  std::uint64_t bytes = 0;
  std::size_t at = 0;
  for (; at < size.size() && size[at] >= '0' && size[at] <= '9'; ++at) {
    const auto digit = static_cast<std::uint64_t>(size[at] - '0');
    if (bytes > (most - digit) / 10) return 0;
    bytes = 10 * bytes + digit;
  }
  if (at == size.size()) return bytes;
  const std::string letters = "kmgt";
  const std::size_t letter = letters.find(static_cast<char>(size[at] | ('a' - 'A')));
  if (at == 0 || at + 1 != size.size() || letter == std::string::npos) return 0;
  const std::uint64_t shift = 10 * (letter + 1);
  return bytes > (most >> shift) ? 0 : bytes << shift;
}

// The size that an option gives by one of two names. 0: it is another option.
std::uint64_t SizeBy(const std::string& option, const std::string& name, const std::string& flag) {
  if (StartsWith(option, name)) return BytesOf(option.substr(name.size()));
  return StartsWith(option, flag) ? BytesOf(option.substr(flag.size())) : 0;
}

std::uint64_t InitialSize(const std::string& option) {
  return SizeBy(option, "-Xms", "-XX:InitialHeapSize=");
}

std::uint64_t LargestSize(const std::string& option) {
  return SizeBy(option, "-Xmx", "-XX:MaxHeapSize=");
}

// A JVM that is told the largest size alone begins with a part of the machine's memory.
bool FitTogether(const std::string& option, const std::string& other) {
  const std::uint64_t initial = std::max(InitialSize(option), InitialSize(other));
  return initial > 0 && initial <= std::max(LargestSize(option), LargestSize(other));
}

bool AreRelated(const std::string& option, const std::string& other) {
  if (NameOf(option) == NameOf(other)) return true;
  if (FitTogether(option, other)) return false;
  return std::any_of(Families().begin(), Families().end(), [&](const Family& family) {
    return IsMember(family, option) && IsMember(family, other);
  });
}

// What happens to an archive that does not fit, whichever it is.
bool LeavesArchive(const std::string& option) {
  static const auto* const harmless =
      new Family{"-Xshare:auto", "-Xshare:on", "-XX:+UseSharedSpaces", "-XX:+RequireSharedSpaces"};
  return std::find(harmless->begin(), harmless->end(), option) != harmless->end();
}

std::string ContentOf(const std::string& path) {
  std::ifstream file(path);
  return {std::istreambuf_iterator<char>(file), {}};
}

// The JVM reads these texts by rules of its own, and says what is wrong with them.
std::vector<std::string> OptionsIn(const std::string& text) {
  std::vector<std::string> options;
  SplitOptions(text, options);
  return options;
}

}  // namespace

DefaultOptions::DefaultOptions(const std::vector<std::string>& given) {
  Look(given);
  for (const char* variable : {"JAVA_TOOL_OPTIONS", "_JAVA_OPTIONS"}) {
    const char* text = std::getenv(variable);
    if (text != nullptr) Look(OptionsIn(text));
  }
}

bool DefaultOptions::Holds(const std::string& option) const {
  return std::none_of(_given.begin(), _given.end(),
                      [&](const std::string& given) { return AreRelated(option, given); });
}

bool DefaultOptions::TakesNamedArchive() const {
  return std::none_of(_given.begin(), _given.end(), [](const std::string& given) {
    return !LeavesArchive(given) && AreRelated("-XX:SharedArchiveFile", given);
  });
}

bool DefaultOptions::SearchesArchive() const { return Holds("-Xshare:auto"); }

void DefaultOptions::Look(const std::vector<std::string>& options) {
  for (const std::string& option : options) {
    _given.push_back(option);
    LookIntoFile(option);
  }
}

// A file of options may name one of flags, but no other file of options.
void DefaultOptions::LookIntoFile(const std::string& option) {
  if (StartsWith(option, kFlagsFile)) LookIntoFlags(option.substr(sizeof kFlagsFile - 1));
  if (!StartsWith(option, kOptionsFile)) return;
  for (const std::string& inside : OptionsIn(ContentOf(option.substr(sizeof kOptionsFile - 1)))) {
    _given.push_back(inside);
    if (StartsWith(inside, kFlagsFile)) LookIntoFlags(inside.substr(sizeof kFlagsFile - 1));
  }
}

// Such a file has what follows -XX: in an option, and remarks behind a #.
void DefaultOptions::LookIntoFlags(const std::string& file) {
  std::istringstream lines(ContentOf(file));
  for (std::string line; std::getline(lines, line);) {
    for (const std::string& flag : OptionsIn(line.substr(0, line.find('#')))) {
      _given.push_back("-XX:" + flag);
    }
  }
}

}  // namespace chartbridge
