// SPDX-License-Identifier: Apache-2.0
// The class-data-sharing archive that the command makes in the user's cache, for a jar that has
// none beside it.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <chrono>
#include <filesystem>
#include <string>
#include <thread>
#include <vector>

#include "tests/app/CommandRun.h"
#include "tests/app/Samples.h"
#include "tests/app/StartedProgram.h"
#include "tests/app/WorkFolder.h"

namespace chartbridge {
namespace {

namespace fs = std::filesystem;

using testing::IsEmpty;

class ClassArchiveTest : public testing::Test {
 protected:
  void SetUp() override {
    const fs::path built = CHARTBRIDGE_JAVA_FOLDER;
    if (!fs::exists(built / "chartbridge.classlist")) {
      GTEST_SKIP() << "this build lists no classes";
    }
    fs::create_directory(classes.File("java"));
    for (const char* name : {"chartbridge-runtime.jar", "libraries.txt", "chartbridge.classlist"}) {
      fs::copy(built / name, classes.File("java/") + name);
    }
  }

  RunSettings Settings(const std::string& options = "") const {
    RunSettings settings;
    settings.environment = {{"XDG_CACHE_HOME", classes.File("cache")},
                            {"TESK_CLASSPATH", kUnset},
                            {"TESK_JVM_OPTIONS", options}};
    return settings;
  }

  std::vector<std::string> Arguments() const {
    return {"-o", "a.png", "--classpath", classes.File("java/chartbridge-runtime.jar")};
  }

  void Render(const std::string& options = "") const {
    const RunResult result = samples.Render(Arguments(), Settings(options));
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.errors, "");
  }

  // Whether a run takes the command's classes out of an archive.
  bool IsUsed() const {
    Render("-Xlog:class+load:file=" + classes.File("loaded"));
    const std::string loaded = classes.Read("loaded");
    return loaded.find("ChartImager source: shared objects file") != std::string::npos;
  }

  std::vector<std::string> Cached() const {
    std::vector<std::string> names;
    std::error_code error;
    for (const auto& entry : fs::directory_iterator(classes.File("cache/chartbridge"), error)) {
      names.push_back(entry.path().filename());
    }
    return names;
  }

  // The names in the cache, once they are one file with this ending. The process that makes it has
  // the lowest priority: on a machine that is busy all the time that takes minutes.
  std::vector<std::string> CachedAtLast(const std::string& ending) const {
    for (int tenths = 0; tenths < 6000; ++tenths) {
      const std::vector<std::string> names = Cached();
      if (names.size() == 1 && fs::path(names.front()).extension() == ending) return names;
      std::this_thread::sleep_for(std::chrono::milliseconds(100));
    }
    return Cached();
  }

  SampleFolder samples;
  WorkFolder classes;
};

TEST_F(ClassArchiveTest, IsMadeOnceAndUsedFromThenOn) {
  EXPECT_FALSE(IsUsed());
  const std::vector<std::string> names = CachedAtLast(".jsa");
  ASSERT_EQ(names.size(), 1U);
  EXPECT_THAT(names.front(), testing::StartsWith("classes-"));
  const fs::path archive = classes.File("cache/chartbridge/") + names.front();
  EXPECT_EQ(fs::status(archive.parent_path()).permissions(), fs::perms::owner_all);
  EXPECT_EQ(fs::status(archive).permissions() & (fs::perms::group_all | fs::perms::others_all),
            fs::perms::none);
  const auto made = fs::last_write_time(archive);
  Render();
  EXPECT_EQ(fs::last_write_time(archive), made);
  EXPECT_EQ(Cached(), names);
  EXPECT_TRUE(IsUsed());
}

TEST_F(ClassArchiveTest, IsMadeAnewForAnotherJar) {
  Render();
  ASSERT_EQ(CachedAtLast(".jsa").size(), 1U);
  fs::last_write_time(classes.File("java/chartbridge-runtime.jar"),
                      fs::file_time_type::clock::now() + std::chrono::hours(1));
  EXPECT_FALSE(IsUsed());
}

TEST_F(ClassArchiveTest, TwoAtOnceMakeOne) {
  RunSettings settings = Settings();
  settings.folder = samples.Path();
  std::vector<std::string> command{CHARTBRIDGE_COMMAND, "render", "sales.gpl", "-d", "sales.csv"};
  for (const std::string& argument : Arguments()) command.push_back(argument);
  StartedProgram first(command, settings);
  StartedProgram second(command, settings);
  EXPECT_EQ(first.Result().exitCode, 0);
  EXPECT_EQ(second.Result().exitCode, 0);
  EXPECT_EQ(CachedAtLast(".jsa").size(), 1U);
  EXPECT_TRUE(IsUsed());
}

TEST_F(ClassArchiveTest, AFailureIsNotRepeated) {
  fs::remove(classes.File("java/chartbridge.classlist"));
  fs::create_directory(classes.File("java/chartbridge.classlist"));
  Render();
  const std::vector<std::string> names = CachedAtLast(".failed");
  ASSERT_EQ(names.size(), 1U);
  const fs::path mark = classes.File("cache/chartbridge/") + names.front();
  EXPECT_EQ(mark.extension(), ".failed");
  Render();
  EXPECT_EQ(Cached(), names);
}

TEST_F(ClassArchiveTest, AFolderOfOthersIsNotUsed) {
  fs::create_directories(classes.File("cache/chartbridge"));
  fs::permissions(classes.File("cache/chartbridge"), fs::perms::all);
  Render();
  EXPECT_THAT(Cached(), IsEmpty());
}

TEST_F(ClassArchiveTest, IsUsedOnlyWhereNobodyElseCanHaveWrittenIt) {
  Render();
  const std::vector<std::string> names = CachedAtLast(".jsa");
  ASSERT_EQ(names.size(), 1U);
  const std::string archive = classes.File("cache/chartbridge/") + names.front();
  EXPECT_TRUE(IsUsed());
  fs::permissions(archive, fs::perms::group_write, fs::perm_options::add);
  EXPECT_FALSE(IsUsed());
}

TEST_F(ClassArchiveTest, AChoiceOfTheUserIsLeftAlone) {
  Render("-Xshare:auto");
  std::this_thread::sleep_for(std::chrono::seconds(1));
  EXPECT_THAT(Cached(), IsEmpty());
}

}  // namespace
}  // namespace chartbridge
