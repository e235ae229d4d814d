// SPDX-License-Identifier: Apache-2.0
// How a class archive is made in the user's cache, for a jar and a JVM that are made up: the java
// command is a script.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <stdlib.h>
#include <sys/stat.h>
#include <unistd.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <string>
#include <system_error>
#include <thread>
#include <vector>

#include "host/ClassArchive.h"
#include "host/JvmSettings.h"
#include "tests/integration/ReadFile.h"
#include "tests/integration/TempFolder.h"

namespace chartbridge {
namespace {

namespace fs = std::filesystem;

// A program calls it while it ends.
static_assert(noexcept(MakeClassArchive()));

class ArchiveMaking : public testing::Test {
 protected:
  void SetUp() override {
    fs::create_directories(folder.Path() + "/java/lib/server");
    fs::create_directories(folder.Path() + "/java/bin");
    Write("java/lib/server/libjvm.so", "");
    Write("java/release", "JAVA_VERSION=\"0\"\n");
    Write("classes.jar", "");
    Write("chartbridge.classlist", "");
    Script("exit 1");
    JvmSettings settings;
    settings.javaHome = folder.Path() + "/java";
    settings.classPath = {folder.Path() + "/classes.jar"};
    SetJvmSettings(settings);
    setenv("XDG_CACHE_HOME", Cache().parent_path().c_str(), 1);
  }

  void TearDown() override {
    unsetenv("XDG_CACHE_HOME");
    SetJvmSettings({});
  }

  fs::path Cache() const { return folder.Path() + "/cache/chartbridge"; }

  void Write(const std::string& name, const std::string& text) const {
    std::ofstream(folder.Path() + "/" + name) << text;
  }

  void Script(const std::string& line) const {
    Write("java/bin/java", "#!/bin/sh\n" + line + "\n");
    fs::permissions(folder.Path() + "/java/bin/java", fs::perms::owner_all);
  }

  std::vector<std::string> Cached(const std::string& ending) const {
    std::vector<std::string> names;
    std::error_code error;
    for (const auto& entry : fs::directory_iterator(Cache(), error)) {
      if (entry.path().extension() == ending) names.push_back(entry.path().filename());
    }
    return names;
  }

  // Once the work is over.
  std::vector<std::string> CachedAtLast(const std::string& ending) const {
    for (int tenths = 0; tenths < 300; ++tenths) {
      if (!Cached(ending).empty() && Cached(".making").empty()) break;
      std::this_thread::sleep_for(std::chrono::milliseconds(100));
    }
    return Cached(ending);
  }

  void AddOldArchives() const {
    for (const char* name : {"a", "b", "c", "d", "e", "f"}) {
      std::ofstream(Cache() / (std::string(name) + ".jsa")) << name;
    }
  }

  TempFolder folder;
};

TEST_F(ArchiveMaking, KeepsOldArchivesWhenNothingIsBegun) {
  EXPECT_TRUE(MakeClassArchive());
  ASSERT_EQ(CachedAtLast(".failed").size(), 1U);
  AddOldArchives();
  EXPECT_FALSE(MakeClassArchive());
  EXPECT_EQ(Cached(".jsa").size(), 6U);
}

TEST_F(ArchiveMaking, MakesRoomForOneMore) {
  fs::create_directories(Cache());
  AddOldArchives();
  EXPECT_TRUE(MakeClassArchive());
  ASSERT_EQ(CachedAtLast(".failed").size(), 1U);
  EXPECT_EQ(Cached(".jsa").size(), 3U);
}

// Whoever takes another process for dead does not write to its file.
TEST_F(ArchiveMaking, WritesToAFileOfItsOwn) {
  Script("for last in \"$@\"; do :; done; echo \"$*\" >\"${last%/*}/arguments\"; exit 1");
  EXPECT_TRUE(MakeClassArchive());
  ASSERT_EQ(CachedAtLast(".failed").size(), 1U);
  EXPECT_THAT(ReadFile(folder.Path() + "/arguments"),
              testing::HasSubstr(".jsa." + std::to_string(getpid()) + ".part "));
}

TEST_F(ArchiveMaking, ClearsAwayWhatKilledProcessesLeft) {
  fs::create_directories(Cache());
  for (const char* name : {"old.part", "new.part"}) std::ofstream(Cache() / name) << name;
  fs::last_write_time(Cache() / "old.part",
                      fs::file_time_type::clock::now() - std::chrono::hours(1));
  EXPECT_TRUE(MakeClassArchive());
  ASSERT_EQ(CachedAtLast(".failed").size(), 1U);
  EXPECT_THAT(Cached(".part"), testing::ElementsAre("new.part"));
}

// As root with the environment of a user: the user could not enter what is made.
TEST_F(ArchiveMaking, MakesNoFolderInTheHomeOfAnother) {
  if (geteuid() != 0) GTEST_SKIP() << "only root can make folders in the home of another";
  const fs::path home = folder.Path() + "/home";
  fs::create_directory(home);
  setenv("HOME", home.c_str(), 1);
  unsetenv("XDG_CACHE_HOME");
  ASSERT_EQ(chown(home.c_str(), 12345, 12345), 0);
  EXPECT_FALSE(MakeClassArchive());
  EXPECT_FALSE(fs::exists(home / ".cache"));
  setenv("XDG_CACHE_HOME", (home / "caches").c_str(), 1);
  EXPECT_FALSE(MakeClassArchive());
  EXPECT_FALSE(fs::exists(home / "caches"));
  unsetenv("XDG_CACHE_HOME");
  ASSERT_EQ(chown(home.c_str(), 0, 0), 0);
  EXPECT_TRUE(MakeClassArchive());
  EXPECT_TRUE(fs::exists(home / ".cache/chartbridge"));
  for (int tenths = 0; tenths < 300 && fs::is_empty(home / ".cache/chartbridge"); ++tenths) {
    std::this_thread::sleep_for(std::chrono::milliseconds(100));
  }
}

}  // namespace
}  // namespace chartbridge
