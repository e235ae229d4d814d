// SPDX-License-Identifier: Apache-2.0
// What a host's process keeps while it draws: host programs of their own, on every JVM here.
#include <gtest/gtest.h>
#include <sys/wait.h>

#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <map>
#include <set>
#include <sstream>
#include <string>
#include <tuple>
#include <vector>

#include "tests/integration/ChildProcess.h"
#include "tests/integration/JavaHomes.h"
#include "tests/integration/TempFolder.h"

namespace chartbridge {
namespace {

namespace fs = std::filesystem;

// Far more than it takes, for machines on which much else runs.
constexpr int kSeconds = 250;

/// The names of differences that stay, each for a reason that docs/host-guide.md gives.
std::set<std::string> Expected() {
  std::set<std::string> names;
  // The JVM finds null pointers and wants its threads to stop by them.
  for (const int signal : {SIGSEGV, SIGBUS, SIGFPE, SIGILL}) {
    names.insert("signal " + std::to_string(signal));
  }
  // A closed pipe and a file that is too large are Java exceptions.
  names.insert("signal " + std::to_string(SIGPIPE));
  names.insert("signal " + std::to_string(SIGXFSZ));
  // The JVM stops threads by the last real-time signal, in place of SIGUSR2.
  names.insert("signal " + std::to_string(SIGRTMAX));
  // Java wakes threads of its own that wait for a file.
  names.insert("signal " + std::to_string(SIGRTMAX - 2));
  // The C library's own, with the first threads.
  names.insert("signal 32");
  names.insert("signal 33");
  return names;
}

/// Host programs on one of the JVMs of this machine.
class OnOneJvm : public testing::Test {
 protected:
  void Use(const std::string& jvm) {
    _home = jvm == "default" ? DefaultJavaHome() : OtherJavaHome();
    if (_home.empty()) GTEST_SKIP() << "there is one JVM on this machine";
  }

  ChildResult Run(const std::vector<std::string>& command,
                  const std::map<std::string, std::string>& more = {}) const {
    std::map<std::string, std::string> environment{{"JAVA_HOME", _home},
                                                   {"TESK_CLASSPATH", ""},
                                                   {"TESK_JVM_OPTIONS", ""},
                                                   {"_JAVA_SR_SIGNUM", ""},
                                                   {"LANG", "C"},
                                                   {"LC_ALL", ""},
                                                   {"DISPLAY", ""},
                                                   {"PROBE_LOCALE", "C.UTF-8"}};
    for (const auto& [name, value] : more) environment[name] = value;
    return RunChild(command, environment, kSeconds);
  }

  ChildResult Probe(const std::vector<std::string>& arguments,
                    const std::map<std::string, std::string>& more = {}) const {
    std::vector<std::string> command{CHARTBRIDGE_TEST_PROBE};
    command.insert(command.end(), arguments.begin(), arguments.end());
    return Run(command, more);
  }

 private:
  std::string _home;
};

class HostProcess : public OnOneJvm, public testing::WithParamInterface<const char*> {
 protected:
  void SetUp() override { Use(GetParam()); }
};

/// A JVM and its collector.
class HostUnderTraps : public OnOneJvm,
                       public testing::WithParamInterface<std::tuple<const char*, const char*>> {
 protected:
  void SetUp() override { Use(std::get<0>(GetParam())); }
};

std::vector<std::string> Lines(const std::string& text) {
  std::vector<std::string> lines;
  std::istringstream stream(text);
  for (std::string line; std::getline(stream, line);) lines.push_back(line);
  return lines;
}

bool IsClosedOnExec(const std::string& line) {
  return line.rfind("  descriptor ", 0) == 0 && line.find(": none -> ") != std::string::npos &&
         line.find(", closed on exec") != std::string::npos;
}

// Java 17 makes a pair of sockets when it first needs its file channels, and keeps one of them: a
// socket whose other end is closed, which nobody can tell from one of the host's.
bool IsJavasSocket(const std::string& line) {
  return line.rfind("  descriptor ", 0) == 0 && line.find(": none -> socket:") != std::string::npos;
}

void ExpectKept(const ChildResult& result, const std::string& locale) {
  EXPECT_EQ(result.Words(), "exit 0") << result.errors;
  EXPECT_EQ(result.errors, "");
  const std::set<std::string> expected = Expected();
  std::size_t steps = 0;
  std::size_t sockets = 0;
  for (const std::string& line : Lines(result.output)) {
    if (line.rfind("  ", 0) != 0) {
      ++steps;
      EXPECT_NE(line.find(": done"), std::string::npos) << line;
      continue;
    }
    if (IsClosedOnExec(line)) continue;
    if (IsJavasSocket(line) && ++sockets == 1) continue;
    EXPECT_EQ(expected.count(line.substr(2, line.find(':') - 2)), 1U)
        << line << ", in locale " << locale;
  }
  EXPECT_EQ(steps, 8U) << result.output;
}

TEST_P(HostProcess, StaysAsItIsByDefault) { ExpectKept(Probe({"Compare", "default"}), "C.UTF-8"); }

// Handlers of its own for every signal, a blocked one, another rounding, traps, a file mode mask.
TEST_P(HostProcess, StaysAsTheHostHasIt) { ExpectKept(Probe({"Compare", "own"}), "C.UTF-8"); }

// Where the locale is another than the one that the environment names, Java's own choice differs.
TEST_P(HostProcess, KeepsItsLocale) {
  const TempFolder folder;
  const std::string compile =
      "localedef -i de_DE -f UTF-8 " + folder.Path() + "/de_DE.UTF-8 >/dev/null 2>&1";
  const bool isThere = std::system(compile.c_str()) == 0;
  const std::string locale = isThere ? "de_DE.UTF-8" : "C.UTF-8";
  const ChildResult result =
      Probe({"Compare", "default"}, {{"PROBE_LOCALE", locale}, {"LOCPATH", folder.Path()}});
  ExpectKept(result, locale);
}

TEST_P(HostProcess, LetsTheUserChooseTheSuspendSignal) {
  const ChildResult result = Probe({"SuspendSignal"}, {{"_JAVA_SR_SIGNUM", "40"}});
  EXPECT_EQ(result.output, "started\nenvironment: 40\ntaken: 40\n") << result.errors;
  const ChildResult usual = Probe({"SuspendSignal"});
  EXPECT_EQ(usual.output, "started\nenvironment: none\ntaken: 64\n") << usual.errors;
}

TEST_P(HostProcess, LeavesNothingBehindWhenItIsKilled) {
  const ChildResult result = Probe({"Killed"});
  EXPECT_EQ(result.Words(), "signal 9");
  EXPECT_EQ(result.output, "started\nattach file: 0\ncounters: 0\n") << result.errors;
}

TEST_P(HostProcess, CanBeAttachedToWhereTheUserWantsIt) {
  const ChildResult result =
      Probe({"Attachable"}, {{"TESK_JVM_OPTIONS", "-XX:-DisableAttachMechanism"}});
  EXPECT_EQ(result.output, "started\nattach file: 1\n") << result.errors;
}

// A host that computes under traps draws on two threads while memory is short.
TEST_P(HostUnderTraps, Draws) {
  const std::string collector = std::get<1>(GetParam());
  // The smallest heap in which the Z collector has room.
  const std::string options = "-XX:+IgnoreUnrecognizedVMOptions -XX:+Use" + collector + "GC -Xmx" +
                              (collector == "Z" ? "64m" : "32m");
  const ChildResult result = Probe({"Soak", "15"}, {{"TESK_JVM_OPTIONS", options}});
  EXPECT_EQ(result.output, "started\ndrawn\n") << result.errors;
  EXPECT_EQ(result.Words(), "exit 0");
}

// What Java does to the floating-point environment without a trap of the caller's stays.
TEST_P(HostProcess, LeavesWhatJavaChangesInItsFloatingPoint) {
  EXPECT_EQ(Probe({"JavaChanges", "none"}).output, "started\nrounding: up\ntraps: none\n");
  EXPECT_EQ(Probe({"JavaChanges", "traps"}).output, "started\nrounding: up\ntraps: own\n");
}

TEST_P(HostProcess, KeepsLibrariesThatAreClosed) {
  const ChildResult result = Run({CHARTBRIDGE_TEST_UNLOAD_PROBE});
  EXPECT_EQ(result.output, "used=1\nstays=1\nstays=1\nstays=1\nattached=1\nthread=1\ncallback=1\n")
      << result.errors;
  EXPECT_EQ(result.Words(), "exit 0");
}

INSTANTIATE_TEST_SUITE_P(OnJvm, HostProcess, testing::Values("default", "other"),
                         [](const auto& one) { return std::string(one.param); });

INSTANTIATE_TEST_SUITE_P(
    OnJvm, HostUnderTraps,
    testing::Combine(testing::Values("default", "other"),
                     testing::Values("Serial", "Parallel", "G1", "Z", "Shenandoah")),
    [](const auto& one) { return std::string(std::get<0>(one.param)) + std::get<1>(one.param); });

}  // namespace
}  // namespace chartbridge
