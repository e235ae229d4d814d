// SPDX-License-Identifier: Apache-2.0
// A signal at each step on the way to files that belong together: all of them appear, or none, and
// nothing else stays. The steps are the changes that the command makes to the file system.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <filesystem>
#include <map>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

#include "tests/app/Samples.h"
#include "tests/app/StartedProgram.h"
#include "tests/app/TreeFolder.h"

namespace chartbridge {
namespace {

using testing::AnyOf;
using testing::Contains;
using testing::Eq;
using testing::IsEmpty;
using testing::StartsWith;

using Files = std::map<std::string, std::string>;

/// What a command is to write, over and over again.
struct Work {
  std::vector<std::string> arguments;
  /// In the folder that a run starts with.
  Files before;
  Files inputs;
};

/// One run of the work, in a folder of its own.
class WorkRun {
 public:
  WorkRun(const Work& work, const std::string& signal, const std::string& signals) {
    for (const auto& [name, content] : work.inputs) _inputs.Write(name, content);
    for (const auto& [name, content] : work.before) _folder.Write(name, content);
    RunSettings settings;
    settings.folder = _inputs.Path();
    settings.environment = {{"LD_PRELOAD", CHARTBRIDGE_SIGNAL_AT_FILE_CHANGE},
                            {"TMPDIR", _temporary.Path()},
                            {"DumpChartTimePath", kUnset},
                            {"FILE_CHANGES_IN", CommonBeginning()},
                            {"FILE_CHANGES_LOG", _inputs.File("changes")},
                            {"FILE_CHANGES_SIGNAL", signal},
                            {"FILE_CHANGES_SIGNALS", signals}};
    std::vector<std::string> arguments = work.arguments;
    for (std::string& argument : arguments) {
      const std::size_t place = argument.find("OUT");
      if (place != std::string::npos) argument.replace(place, 3, _folder.Path());
    }
    result = RunCommand(arguments, settings);
  }

  /// Everything in the folder and those below it, by its path in there.
  Files Left() const {
    Files files;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(_folder.Path())) {
      const std::string name = entry.path().lexically_relative(_folder.Path()).string();
      files[name] = entry.is_directory() ? "a folder" : _folder.Read(name);
    }
    return files;
  }

  std::vector<std::string> Temporary() const { return _temporary.Names(); }

  std::vector<std::string> Changes() const {
    std::vector<std::string> lines;
    std::istringstream log(_inputs.Read("changes"));
    for (std::string line; std::getline(log, line);) lines.push_back(line);
    return lines;
  }

  RunResult result;

 private:
  std::string CommonBeginning() const {
    const std::string& one = _folder.Path();
    const std::string& other = _temporary.Path();
    const auto end = std::mismatch(one.begin(), one.end(), other.begin(), other.end()).first;
    return std::string(one.begin(), end);
  }

  const WorkFolder _folder;
  const WorkFolder _temporary;
  const WorkFolder _inputs;
};

std::vector<std::string> NamesOf(const Files& files) {
  std::vector<std::string> names;
  for (const auto& [name, content] : files) names.push_back(name);
  return names;
}

/// Signals come at every step.
void ExpectAllOrNothing(const Work& work, const std::string& signals) {
  const WorkRun whole(work, "0", "1");
  ASSERT_EQ(whole.result.exitCode, 0) << whole.result.errors;
  const Files all = whole.Left();
  ASSERT_NE(all, work.before);
  const std::vector<std::string> steps = whole.Changes();
  ASSERT_THAT(steps, Contains(StartsWith("rename ")));
  bool cameToNothing = false;
  bool cameToAll = false;
  for (std::size_t step = 1; step <= steps.size(); ++step) {
    SCOPED_TRACE("step " + std::to_string(step) + " of " + std::to_string(steps.size()) + ", " +
                 steps[step - 1]);
    const WorkRun run(work, std::to_string(step), signals);
    const Files left = run.Left();
    EXPECT_EQ(run.result.errors, "");
    EXPECT_THAT(NamesOf(left), AnyOf(Eq(NamesOf(work.before)), Eq(NamesOf(all))));
    const bool isAll = left == all;
    EXPECT_TRUE(isAll || left == work.before);
    // At its very end the command may be faster than the signal.
    if (!isAll || run.result.exitCode != 0) {
      EXPECT_EQ(run.result.exitCode, 128 + SIGTERM);
    }
    EXPECT_THAT(run.Temporary(), IsEmpty());
    (isAll ? cameToAll : cameToNothing) = true;
  }
  EXPECT_TRUE(cameToNothing);
  EXPECT_TRUE(cameToAll);
}

std::string Model() {
  const TreeFolder models;
  return models.Read("iris.pmml");
}

Work Batch() {
  return {{"tree", "batch", "iris.pmml", "-o", "OUT", "--type", "svg", "--depth", "1"},
          {},
          {{"iris.pmml", Model()}}};
}

Work BatchOverOldPictures() {
  Work work = Batch();
  const WorkRun whole(work, "0", "1");
  for (const std::string& name : NamesOf(whole.Left())) work.before[name] = "old " + name;
  work.before["other"] = "other";
  return work;
}

Work Map() {
  return {{"render", "sales.gpl", "-d", "sales.csv", "-o", "OUT/sales.png", "--map"},
          {{"sales.html", "old page"}, {"sales.png", "old picture"}},
          {{"sales.gpl", kChart}, {"sales.csv", kData}}};
}

Work ChartWithDataFile() {
  return {{"json", "sales.gpl", "-d", "sales.csv", "-o", "OUT/sales.vl.json", "--interactive",
           "--data-file", "OUT/rows.json"},
          {{"rows.json", "old rows"}},
          {{"sales.gpl", kChart}, {"sales.csv", kData}}};
}

TEST(SignalStepsTest, PicturesOfATreeModel) { ExpectAllOrNothing(Batch(), "1"); }

TEST(SignalStepsTest, PicturesOfATreeModelInFoldersThatAreMadeForThem) {
  Work work = Batch();
  work.arguments[4] = "OUT/a/b";
  ExpectAllOrNothing(work, "2");
}

TEST(SignalStepsTest, PicturesOfATreeModelOverOldOnes) {
  ExpectAllOrNothing(BatchOverOldPictures(), "1");
}

/// timeout sends its signal twice, to the program and to the group that it is in.
TEST(SignalStepsTest, PicturesOfATreeModelWhenTheSignalComesTwice) {
  ExpectAllOrNothing(Batch(), "2");
}

TEST(SignalStepsTest, PicturesOfATreeModelOverOldOnesWhenTheSignalComesTwice) {
  ExpectAllOrNothing(BatchOverOldPictures(), "2");
}

TEST(SignalStepsTest, PictureWithItsMap) { ExpectAllOrNothing(Map(), "2"); }

TEST(SignalStepsTest, ChartWithItsDataFile) { ExpectAllOrNothing(ChartWithDataFile(), "2"); }

/// Where the cleaning up hangs, a person who insists is heard.
TEST(SignalStepsTest, ASignalThatComesMuchLaterEndsTheCommandAtOnce) {
  const std::vector<std::string> steps = WorkRun(Map(), "0", "1").Changes();
  const auto rename = std::find_if(steps.begin(), steps.end(), [](const std::string& step) {
    return step.rfind("rename ", 0) == 0;
  });
  ASSERT_NE(rename, steps.end());
  const SampleFolder folder;
  RunSettings settings;
  settings.folder = folder.Path();
  settings.environment = {{"LD_PRELOAD", CHARTBRIDGE_SIGNAL_AT_FILE_CHANGE},
                          {"TMPDIR", folder.Path()},
                          {"DumpChartTimePath", kUnset},
                          {"FILE_CHANGES_IN", folder.Path()},
                          {"FILE_CHANGES_LOG", folder.File("changes")},
                          {"FILE_CHANGES_SIGNAL", std::to_string(rename - steps.begin() + 1)},
                          {"FILE_CHANGES_SLEEP", "50"}};
  StartedProgram program({CHARTBRIDGE_COMMAND, "render", "sales.gpl", "-d", "sales.csv", "-o",
                          folder.File("sales.png"), "--map"},
                         settings);
  const auto isHanging = [&] {
    return folder.Read("changes").find("\nrename ") != std::string::npos;
  };
  for (int i = 0; i < 3000 && !isHanging(); ++i) {
    std::this_thread::sleep_for(std::chrono::milliseconds(10));
  }
  ASSERT_TRUE(isHanging());
  std::this_thread::sleep_for(std::chrono::seconds(8));
  const auto start = std::chrono::steady_clock::now();
  program.Send(SIGTERM);
  EXPECT_EQ(program.Result().exitCode, 128 + SIGTERM);
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(30));
}

}  // namespace
}  // namespace chartbridge
