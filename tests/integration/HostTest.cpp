// SPDX-License-Identifier: Apache-2.0
// The reference host on a real JVM, each test in a process of its own.
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>
#include <regex>
#include <set>
#include <string>
#include <vector>

#include "tests/integration/ChildProcess.h"
#include "tests/integration/JavaHomes.h"
#include "tests/integration/TempFolder.h"

namespace chartbridge {
namespace {

namespace fs = std::filesystem;

using Environment = std::map<std::string, std::string>;

constexpr int kSeconds = 30;

// What a test asks for, on top of a JVM that is found and variables that are unset.
ChildResult Probe(const std::vector<std::string>& arguments, const Environment& more = {}) {
  Environment environment{{"JAVA_HOME", DefaultJavaHome()},
                          {"TESK_CLASSPATH", ""},
                          {"TESK_JVM_OPTIONS", ""},
                          {"DISPLAY", ""}};
  for (const auto& [name, value] : more) environment[name] = value;
  std::vector<std::string> command{CHARTBRIDGE_TEST_PROBE};
  command.insert(command.end(), arguments.begin(), arguments.end());
  return RunChild(command, environment, kSeconds);
}

void Expect(const ChildResult& result, const std::string& output) {
  EXPECT_EQ(result.Words(), "exit 0");
  EXPECT_EQ(result.output, output);
  EXPECT_EQ(result.errors, "");
}

std::string Started(const std::string& home) {
  return "started=1\nagain=1\nguard=1\nhome=" + home + "\n";
}

std::vector<std::string> JavaHomes() {
  std::vector<std::string> homes{DefaultJavaHome()};
  if (!OtherJavaHome().empty()) homes.push_back(OtherJavaHome());
  return homes;
}

// The JVM's own word on its settings, in a probe that starts it: "UseSerialGC=true" and so on, for
// those that were given as options. It prints "bool UseSerialGC = true {product} {command line}".
std::set<std::string> Flags(const std::string& home, const std::vector<std::string>& probe,
                            const std::string& options = "", Environment environment = {}) {
  environment["JAVA_HOME"] = home;
  environment["TESK_JVM_OPTIONS"] = "-XX:+PrintFlagsFinal " + options;
  const ChildResult result = Probe(probe, environment);
  EXPECT_EQ(result.output, "started=1\n") << home << " " << options;
  static const std::regex kFlag(R"((\w+) += +(\S*) +\{[^}]*\} +\{(command line|environment)\})");
  std::set<std::string> flags;
  for (std::sregex_iterator at(result.errors.begin(), result.errors.end(), kFlag), end; at != end;
       ++at) {
    flags.insert((*at)[1].str() + "=" + (*at)[2].str());
  }
  return flags;
}

TEST(JvmStart, UsesJavaHome) { Expect(Probe({"PlainStart"}), Started(DefaultJavaHome())); }

TEST(JvmStart, UsesOtherJvm) {
  const std::string home = OtherJavaHome();
  if (home.empty()) GTEST_SKIP() << "there is one JVM on this machine";
  Expect(Probe({"PlainStart"}, {{"JAVA_HOME", home}}), Started(home));
}

TEST(JvmStart, NamesWrongJavaHome) {
  Expect(Probe({"PlainStart"}, {{"JAVA_HOME", "/no/such/home"}}),
         "message=cannot start Java: no JVM found; tried JAVA_HOME (/no/such/home has no "
         "lib/server/libjvm.so)\nstarted=0\n");
}

TEST(JvmStart, SettingsGoBeforeJavaHome) {
  Expect(Probe({"StartIn", DefaultJavaHome()}, {{"JAVA_HOME", "/no/such/home"}}), "started=1\n");
  Expect(Probe({"StartIn", "/no/home"}),
         "message=cannot start Java: no JVM found; tried the Java home of the settings (/no/home "
         "has no lib/server/libjvm.so)\nstarted=0\n");
}

// The command on the path is a link to a link into the JVM's home, as distributions make them.
TEST(JvmStart, UsesJavaOnPath) {
  const TempFolder folder;
  fs::create_symlink(DefaultJavaHome() + "/bin/java", folder.Path() + "/alternative");
  fs::create_symlink(folder.Path() + "/alternative", folder.Path() + "/java");
  Expect(Probe({"PlainStart"}, {{"JAVA_HOME", ""}, {"PATH", "/no/such:" + folder.Path()}}),
         Started(DefaultJavaHome()));
}

TEST(JvmStart, UsesDistributionsDefault) {
  if (!fs::exists("/usr/lib/jvm/java-17-openjdk-amd64/lib/server/libjvm.so") ||
      fs::exists("/usr/lib/jvm/default-java")) {
    GTEST_SKIP() << "another distribution's JVM";
  }
  Expect(Probe({"PlainStart"}, {{"JAVA_HOME", ""}, {"PATH", "/no/such"}}),
         Started("/usr/lib/jvm/java-17-openjdk-amd64"));
}

TEST(JvmStart, SaysWhichOptionTheJvmRejects) {
  const ChildResult result = Probe({"StartWithOption", "-XX:NoSuchFlag=3"});
  EXPECT_EQ(result.Words(), "exit 0");
  EXPECT_EQ(result.output,
            "message=cannot start Java: the JVM " + DefaultJavaHome() +
                "/lib/server/libjvm.so did not start: Unrecognized VM option 'NoSuchFlag=3'\n"
                "started=0\n");
  EXPECT_EQ(result.errors, "");
}

// Some options make the JVM end the process. Its reason still comes out.
TEST(JvmStart, SaysWhyTheJvmEndedTheProcess) {
  const ChildResult result = Probe({"StartWithOption", "-Xmx1k"});
  EXPECT_EQ(result.Words(), "exit 1");
  EXPECT_EQ(result.errors.find("cannot start Java: "), 0U) << result.errors;
  EXPECT_NE(result.errors.find("Too small maximum heap"), std::string::npos) << result.errors;
}

TEST(JvmStart, SaysThatGuardIsMissing) {
  const ChildResult missing = Probe({"StartWithGuard", "/no/such/guard.so"});
  EXPECT_EQ(missing.output.find("message=cannot start Java: the guard cannot be loaded: "
                                "/no/such/guard.so: cannot open shared object file"),
            0U)
      << missing.output;
  EXPECT_NE(missing.output.find("\nstarted=0\nrunning=0\n"), std::string::npos);
  const std::string wrong = DefaultJavaHome() + "/lib/libjsig.so";
  Expect(Probe({"StartWithGuard", wrong}),
         "message=cannot start Java: the guard cannot be loaded: " + wrong +
             " is not the guard\nstarted=0\nrunning=0\n");
}

TEST(JvmStart, WorksWithoutGuard) { Expect(Probe({"StartWithoutGuard"}), "started=1\nguard=0\n"); }

TEST(JvmStart, IsSafeOnManyThreads) { Expect(Probe({"StartOnManyThreads"}), "started=8\n"); }

TEST(JvmStart, TakesOverJvmOfTheProcess) {
  Expect(Probe({"AdoptJvm", DefaultJavaHome() + "/lib/server/libjvm.so"}),
         "created=1\nstarted=1\nsame=1\nguard=1\n");
}

TEST(JvmStart, IgnoresUnfitArchiveInSilence) {
  const TempFolder folder;
  const std::string archive = folder.Path() + "/unfit.jsa";
  std::ofstream(archive) << std::string(10000, 'x');
  Expect(Probe({"StartWithArchive", archive}), "started=1\nversion=1\n");
  Expect(Probe({"StartWithArchive", "/no/such/archive.jsa"}), "started=1\nversion=1\n");
}

TEST(JvmStart, EndsOnce) {
  Expect(Probe({"EndOfJvm"}),
         "started=1\ndestroyed=1\nrunning=0\nmessage=cannot start Java: this process has ended its "
         "JVM, and there is no second one\nagain=0\ndestroyed=0\n");
}

TEST(JvmStart, NothingWorksBefore) {
  Expect(Probe({"BeforeStart"}),
         "started=0\nattached=0\nenv=null\nown=null\nframe=0\ndetached=1\ndestroyed=0\n");
}

TEST(JvmStart, LeavesSignalsToHost) {
  Expect(Probe({"Signals", "leave"}), "started=1\nint=1\nterm=1\nquit=1\nhup=1\n");
  Expect(Probe({"Signals", "take"}), "started=1\nint=0\nterm=0\nquit=0\nhup=0\n");
}

TEST(JvmOptions, JoinsClassPaths) {
  Expect(Probe({"ShowProperty", "java.class.path"}),
         "started=1\njava.class.path=/first.jar:/second.jar\n");
  Expect(Probe({"ShowProperty", "java.class.path"}, {{"TESK_CLASSPATH", ":/third.jar::/fourth"}}),
         "started=1\njava.class.path=/first.jar:/second.jar:/third.jar:/fourth\n");
}

TEST(JvmOptions, ReadsQuotedOptions) {
  const std::string options =
      " -Dprobe.a='x \"y\" \\z'\t-Dprobe.b=\"p \\\"q\\\" \\r '\" -Dprobe.c=\\'m\\ n ";
  const Environment environment{{"TESK_JVM_OPTIONS", options}};
  Expect(Probe({"ShowProperty", "probe.a"}, environment), "started=1\nprobe.a=x \"y\" \\z\n");
  Expect(Probe({"ShowProperty", "probe.b"}, environment), "started=1\nprobe.b=p \"q\" \\r '\n");
  Expect(Probe({"ShowProperty", "probe.c"}, environment), "started=1\nprobe.c='m n\n");
}

TEST(JvmOptions, EnvironmentGoesLast) {
  Expect(Probe({"ShowProperty", "probe.order"}), "started=1\nprobe.order=settings\n");
  Expect(Probe({"ShowProperty", "probe.order"}, {{"TESK_JVM_OPTIONS", "-Dprobe.order=user"}}),
         "started=1\nprobe.order=user\n");
}

TEST(JvmOptions, RefusesOpenQuote) {
  for (const char* text : {"'-Dx=1", "-Dx=\"1", "-Dx=1\\"}) {
    Expect(Probe({"ShowProperty", "x"}, {{"TESK_JVM_OPTIONS", text}}),
           "message=cannot start Java: TESK_JVM_OPTIONS has an open quote or ends in a backslash\n"
           "started=0\n");
  }
}

// The default collector, heap and the like make way, or the JVM would not start.
TEST(JvmOptions, UserReplacesDefaults) {
  for (const std::string& home : JavaHomes()) {
    for (const char* option :
         {"-XX:+UseG1GC", "-XX:+UseParallelGC", "-XX:+UseZGC", "-XX:-UseSerialGC", "-XX:-UseG1GC",
          "-Xms64m", "-Xmx8m", "-XX:MaxHeapSize=100m", "-XX:MaxRAMPercentage=3", "-Xmn3m",
          "-XX:MinHeapFreeRatio=60", "-XX:MaxHeapFreeRatio=45", "-XX:MinHeapSize=60m",
          "-XX:+UsePerfData", "-XX:-DisableAttachMechanism", "-XX:-ReduceSignalUsage",
          "-Xshare:off", "-XX:-TieredCompilation"}) {
      const Environment environment{{"JAVA_HOME", home}, {"TESK_JVM_OPTIONS", option}};
      EXPECT_EQ(Probe({"StartWithClasses"}, environment).output, "started=1\n") << home << option;
    }
  }
}

// What a host that sets nothing gets, by the JVM's own word.
TEST(JvmOptions, AreKindToAHostByDefault) {
  for (const std::string& home : JavaHomes()) {
    const std::set<std::string> flags = Flags(home, {"StartWithClasses"});
    for (const char* flag : {"UseSerialGC=true", "InitialHeapSize=16777216", "MinHeapFreeRatio=20",
                             "MaxHeapFreeRatio=40", "ShrinkHeapInSteps=false", "UsePerfData=false",
                             "DisableAttachMechanism=true", "ReduceSignalUsage=true"}) {
      EXPECT_EQ(flags.count(flag), 1U) << home << " " << flag;
    }
  }
}

// Without it the heap would begin with a part of the machine's memory.
TEST(JvmOptions, ALimitKeepsTheInitialSize) {
  for (const std::string& home : JavaHomes()) {
    for (const char* limit : {"-Xmx256m", "-XX:MaxHeapSize=256m", "-Xmx16m"}) {
      EXPECT_EQ(Flags(home, {"StartWithClasses"}, limit).count("InitialHeapSize=16777216"), 1U)
          << home << " " << limit;
    }
    EXPECT_EQ(Flags(home, {"StartWithClasses"}, "-Xmx8m").count("InitialHeapSize=16777216"), 0U);
  }
}

TEST(JvmOptions, TheHostsDefaultsReplaceTheLibrarys) {
  const std::map<std::string, std::string> replaced{
      {"-XX:+UseG1GC", "UseSerialGC=true"},
      {"-Xmx8m", "InitialHeapSize=16777216"},
      {"-XX:MinHeapFreeRatio=60", "MaxHeapFreeRatio=40"},
      {"-XX:-ReduceSignalUsage", "ReduceSignalUsage=true"}};
  for (const std::string& home : JavaHomes()) {
    for (const auto& [option, flag] : replaced) {
      const std::set<std::string> flags = Flags(home, {"StartWithDefault", option});
      EXPECT_EQ(flags.count(flag), 0U) << home << " " << option;
      EXPECT_EQ(flags.count("UsePerfData=false"), 1U) << home << " " << option;
    }
  }
}

TEST(JvmOptions, ANamedArchiveMakesWayForAnotherOneAlone) {
  const TempFolder folder;
  const std::string archive = folder.Path() + "/unfit.jsa";
  std::ofstream(archive) << std::string(10000, 'x');
  const std::string named = "SharedArchiveFile=" + archive;
  for (const std::string& home : JavaHomes()) {
    const std::vector<std::string> probe{"StartWithDefault", "-XX:SharedArchiveFile=" + archive};
    EXPECT_EQ(Flags(home, probe).count(named), 1U) << home;
    EXPECT_EQ(Flags(home, probe, "-Xshare:off").count(named), 0U) << home;
    EXPECT_EQ(Flags(home, {"StartWithTwoArchives", archive}).count(named + ".other"), 1U) << home;
  }
}

TEST(JvmStart, TakesTheNamedArchiveBesideTheJvmsOwnChoice) {
  const TempFolder folder;
  const std::string archive = folder.Path() + "/unfit.jsa";
  std::ofstream(archive) << std::string(10000, 'x');
  const std::string named = "SharedArchiveFile=" + archive;
  for (const std::string& home : JavaHomes()) {
    const std::vector<std::string> probe{"StartWithNamedArchive", archive};
    EXPECT_EQ(Flags(home, probe).count(named), 1U) << home;
    EXPECT_EQ(Flags(home, probe, "-Xshare:auto").count(named), 1U) << home;
    EXPECT_EQ(Flags(home, probe, "-Xshare:off").count(named), 0U) << home;
    const std::string other = folder.Path() + "/other.jsa";
    EXPECT_EQ(Flags(home, probe, "-XX:SharedArchiveFile=" + other).count(named), 0U) << home;
  }
}

// Those that the JVM reads by itself count as well.
TEST(JvmOptions, VariablesOfTheJvmReplaceDefaults) {
  for (const char* name : {"JAVA_TOOL_OPTIONS", "_JAVA_OPTIONS"}) {
    for (const char* option : {"-XX:+UseG1GC", "-Xmx8m"}) {
      EXPECT_EQ(Probe({"StartWithClasses"}, {{name, option}}).output, "started=1\n") << option;
    }
  }
}

TEST(JvmOptions, TakesDefaultsOfTheHost) {
  Expect(Probe({"ShowDefaults"}), "started=1\nprobe.first=default\nprobe.second=default\n");
  Expect(Probe({"ShowDefaults"}, {{"TESK_JVM_OPTIONS", "-Dprobe.second=user"}}),
         "started=1\nprobe.first=default\nprobe.second=user\n");
}

TEST(JvmOptions, SaysWhereTheClassPathGoes) {
  for (const std::string option : {"-cp", "-classpath", "--class-path=x.jar"}) {
    Expect(Probe({"StartWithClasses"}, {{"TESK_JVM_OPTIONS", option + " y.jar"}}),
           "message=cannot start Java: " + option +
               " is an option of the java command alone; the environment variable TESK_CLASSPATH "
               "adds to the class path\nstarted=0\n");
  }
}

TEST(JvmOptions, IsHeadlessWithoutDisplay) {
  const std::string name = "java.awt.headless";
  Expect(Probe({"ShowProperty", name}), "started=1\njava.awt.headless=true\n");
  Expect(Probe({"ShowProperty", name}, {{"DISPLAY", ":7"}}), "started=1\njava.awt.headless=null\n");
  Expect(Probe({"ShowProperty", name}, {{"TESK_JVM_OPTIONS", "-Djava.awt.headless=false"}}),
         "started=1\njava.awt.headless=false\n");
}

TEST(JvmThreads, AttachesManyThreadsAsDaemons) {
  Expect(Probe({"AttachManyThreads"}), "started=1\ngood=16\ndifferent=16\n");
}

TEST(JvmThreads, AttachesAgainForNextToNothing) {
  Expect(Probe({"AttachAgainIsCheap"}), "started=1\ncheap=1\n");
}

TEST(JvmThreads, NeverDetachesByItself) {
  Expect(Probe({"ObjectOutlivesItsThread"}), "started=1\nmade=plain\n");
}

TEST(JvmThreads, DetachesWhenAsked) {
  Expect(Probe({"DetachAndAttach"}),
         "started=1\nbefore=0\ndetach=1\nattach=1\nduring=1\ndetach=1\nafter=0\nattach=1\n"
         "daemon=1\nattach=1\ndaemon=1\n");
}

TEST(LocalFrame, GivesReferencesBack) {
  Expect(Probe({"FrameReleases"}),
         "started=1\nwithout=500\nactive=1\ninside=500\nnested=1\nwith=0\nhuge=1\npending=none\n");
}

TEST(LocalFrame, AttachesItsThread) {
  const ChildResult result = Probe({"FrameOnNewThread"});
  EXPECT_EQ(result.Words(), "exit 0");
  EXPECT_EQ(result.output, "started=1\nactive=1\npending=none\n");
  EXPECT_EQ(result.errors,
            "LocalFrame: a Java exception was still pending and is cleared: "
            "java.lang.NoClassDefFoundError: no/such/Type\n");
}

}  // namespace
}  // namespace chartbridge
