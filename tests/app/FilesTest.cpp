// SPDX-License-Identifier: Apache-2.0
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <functional>
#include <string>
#include <thread>
#include <vector>

#include "app/DumpFolder.h"
#include "app/Failure.h"
#include "app/InputFile.h"
#include "app/OutputFile.h"
#include "app/PictureFormat.h"
#include "tests/app/WorkFolder.h"

namespace chartbridge {
namespace {

std::string ReasonOf(const std::function<void()>& action) {
  try {
    action();
  } catch (const Failure& failure) {
    return failure.what();
  }
  return "no failure";
}

mode_t ModeOf(const std::string& path) {
  struct stat status {};
  stat(path.c_str(), &status);
  return status.st_mode & 0777;
}

TEST(InputFileTest, HoldsTheWholeFile) {
  const WorkFolder folder;
  const std::string content("a\0b\n", 4);
  folder.Write("in", content);
  const InputFile input(folder.File("in"));
  EXPECT_EQ(input.Name(), folder.File("in"));
  EXPECT_EQ(input.Text(), content);
  EXPECT_EQ(input.Size(), 4U);
}

TEST(InputFileTest, EmptyFileHasAnAddress) {
  const WorkFolder folder;
  folder.Write("in", "");
  const InputFile input(folder.File("in"));
  EXPECT_EQ(input.Size(), 0U);
  EXPECT_NE(input.Data(), nullptr);
}

TEST(InputFileTest, ReadsWhatCannotBeMapped) {
  const InputFile input("/proc/self/comm");
  EXPECT_EQ(input.Text(), "app_tests\n");
}

TEST(InputFileTest, SaysWhyItCannotBeRead) {
  const WorkFolder folder;
  EXPECT_EQ(ReasonOf([&] { InputFile(folder.File("none")); }),
            folder.File("none") + ": No such file or directory");
  EXPECT_EQ(ReasonOf([&] { InputFile(std::string(folder.Path())); }),
            folder.Path() + ": Is a directory");
}

TEST(OutputFileTest, ReplacesTheFileAndLeavesNothingElse) {
  const WorkFolder folder;
  folder.Write("out", "old");
  const OutputFile output(folder.File("out"), true);
  EXPECT_TRUE(output.IsReplaceable());
  EXPECT_EQ(folder.Read("out"), "old");
  output.Write("new content");
  EXPECT_EQ(folder.Read("out"), "new content");
  EXPECT_EQ(folder.Names(), std::vector<std::string>{"out"});
}

TEST(OutputFileTest, NewFileHasTheUsualPermissions) {
  const WorkFolder folder;
  const mode_t before = umask(027);
  OutputFile(folder.File("out"), true).Write("x");
  umask(before);
  EXPECT_EQ(ModeOf(folder.File("out")), static_cast<mode_t>(0640));
}

TEST(OutputFileTest, SymbolicLinkStaysALink) {
  const WorkFolder folder;
  folder.Write("real", "old");
  ASSERT_EQ(symlink("real", folder.File("link").c_str()), 0);
  OutputFile(folder.File("link"), true).Write("new");
  EXPECT_EQ(folder.Read("real"), "new");
  struct stat status {};
  ASSERT_EQ(lstat(folder.File("link").c_str(), &status), 0);
  EXPECT_TRUE(S_ISLNK(status.st_mode));
}

TEST(OutputFileTest, WhatASymbolicLinkPointsAtIsMadeWhereItIsNotThereYet) {
  const WorkFolder folder;
  ASSERT_EQ(mkdir(folder.File("far").c_str(), 0700), 0);
  ASSERT_EQ(symlink("../real", folder.File("far/away").c_str()), 0);
  ASSERT_EQ(symlink("far/away", folder.File("link").c_str()), 0);
  ASSERT_EQ(symlink(folder.File("link").c_str(), folder.File("first").c_str()), 0);
  const OutputFile output(folder.File("first"), true);
  EXPECT_TRUE(output.IsReplaceable());
  output.Write("new");
  EXPECT_EQ(folder.Read("real"), "new");
  EXPECT_EQ(folder.Names(), (std::vector<std::string>{"far", "first", "link", "real"}));
  for (const char* name : {"first", "link", "far/away"}) {
    struct stat status {};
    ASSERT_EQ(lstat(folder.File(name).c_str(), &status), 0);
    EXPECT_TRUE(S_ISLNK(status.st_mode)) << name;
  }
}

TEST(OutputFileTest, TheWayOfALinkIsThatOfTheSystem) {
  const WorkFolder folder;
  ASSERT_EQ(mkdir(folder.File("a").c_str(), 0700), 0);
  ASSERT_EQ(mkdir(folder.File("a/b").c_str(), 0700), 0);
  ASSERT_EQ(symlink("a/b", folder.File("short").c_str()), 0);
  // Above the folder that "short" points at, and not above "short".
  ASSERT_EQ(symlink("short/../real", folder.File("link").c_str()), 0);
  OutputFile(folder.File("link"), true).Write("new");
  EXPECT_EQ(folder.Read("a/real"), "new");
}

TEST(OutputFileTest, SymbolicLinkThatLeadsNowhere) {
  const WorkFolder folder;
  ASSERT_EQ(symlink("self", folder.File("self").c_str()), 0);
  ASSERT_EQ(symlink("none/real", folder.File("link").c_str()), 0);
  ASSERT_EQ(symlink(folder.Path().c_str(), folder.File("folder").c_str()), 0);
  EXPECT_EQ(ReasonOf([&] { OutputFile(folder.File("self"), true); }),
            folder.File("self") + ": Too many levels of symbolic links");
  EXPECT_EQ(ReasonOf([&] { OutputFile(folder.File("link"), true); }),
            folder.File("link") + ": cannot write there: the folder " + folder.File("none") +
                " does not exist");
  EXPECT_EQ(ReasonOf([&] { OutputFile(folder.File("folder"), true); }),
            folder.File("folder") + ": Is a directory");
}

TEST(WriteAllTest, WaitsForAPipeThatNeverBlocks) {
  int ends[2];
  ASSERT_EQ(pipe2(ends, O_NONBLOCK), 0);
  const std::string content(1 << 20, 'x');
  std::string read;
  std::thread reader([&] {
    const int flags = fcntl(ends[0], F_GETFL);
    fcntl(ends[0], F_SETFL, flags & ~O_NONBLOCK);
    char chunk[4096];
    while (read.size() < content.size()) {
      const ssize_t count = ::read(ends[0], chunk, sizeof chunk);
      if (count <= 0) break;
      read.append(chunk, static_cast<std::size_t>(count));
    }
  });
  EXPECT_EQ(ReasonOf([&] { WriteAll(ends[1], content, "pipe"); }), "no failure");
  close(ends[1]);
  reader.join();
  close(ends[0]);
  EXPECT_EQ(read, content);
}

TEST(OutputFileTest, DeviceTakesTheBytesAndStays) {
  const OutputFile output("/dev/null", true);
  EXPECT_FALSE(output.IsReplaceable());
  output.Write("x");
  struct stat status {};
  ASSERT_EQ(stat("/dev/null", &status), 0);
  EXPECT_TRUE(S_ISCHR(status.st_mode));
}

TEST(OutputFileTest, SaysWhyItCannotBeWritten) {
  const WorkFolder folder;
  folder.Write("file", "");
  EXPECT_EQ(ReasonOf([&] { OutputFile(folder.Path(), true); }), folder.Path() + ": Is a directory");
  const std::string inMissing = folder.File("none") + "/out";
  EXPECT_EQ(
      ReasonOf([&] { OutputFile(inMissing, true); }),
      inMissing + ": cannot write there: the folder " + folder.File("none") + " does not exist");
  const std::string inFile = folder.File("file") + "/out";
  EXPECT_EQ(ReasonOf([&] { OutputFile(inFile, true); }),
            inFile + ": cannot write there: " + folder.File("file") + " is not a folder");
}

TEST(OutputFileTest, FolderWithoutPermissionIsSaidBeforeTheWork) {
  const WorkFolder folder;
  ASSERT_EQ(chmod(folder.Path().c_str(), 0500), 0);
  const bool root = geteuid() == 0;
  // Root may write everywhere.
  if (root) {
    ASSERT_EQ(seteuid(65534), 0);
  }
  const std::string reason = ReasonOf([&] { OutputFile(folder.File("out"), true); });
  if (root) {
    ASSERT_EQ(seteuid(0), 0);
  }
  EXPECT_EQ(reason, folder.File("out") + ": cannot write there: the folder " + folder.Path() +
                        ": Permission denied");
  chmod(folder.Path().c_str(), 0700);
}

TEST(PictureFormatTest, GoesByTheEnding) {
  EXPECT_EQ(FormatOfPath("a/b.png"), ViZEditor::IMAGE_PNG);
  EXPECT_EQ(FormatOfPath("b.JPG"), ViZEditor::IMAGE_JPEG);
  EXPECT_EQ(FormatOfPath("b.jpeg"), ViZEditor::IMAGE_JPEG);
  EXPECT_EQ(FormatOfPath("b.bmp"), ViZEditor::IMAGE_BMP);
  EXPECT_EQ(FormatOfPath("b.gif"), ViZEditor::IMAGE_GIF);
  EXPECT_EQ(FormatOfPath("b.svg"), ViZEditor::IMAGE_SVG);
  EXPECT_EQ(FormatOfPath("b.tar.Pdf"), ViZEditor::IMAGE_PDF);
  EXPECT_EQ(FormatOfPath("png"), std::nullopt);
  EXPECT_EQ(FormatOfPath("b.tiff"), std::nullopt);
  EXPECT_EQ(FormatOfPath("b."), std::nullopt);
  EXPECT_EQ(FormatOfPath("a.png/b"), std::nullopt);
}

TEST(DumpFolderTest, PrivateFolderLivesAsLongAsTheObject) {
  unsetenv("DumpChartTimePath");
  const WorkFolder folder;
  setenv("TMPDIR", folder.Path().c_str(), 1);
  {
    const DumpFolder dumps;
    ASSERT_EQ(folder.Names().size(), 1U);
    EXPECT_EQ(std::getenv("DumpChartTimePath"), folder.File(folder.Names().front()));
    EXPECT_EQ(dumps.NewRecords(), "");
    folder.Write(folder.Names().front() + "/JNI_Exceptions_Nov 7.txt", "a record");
    EXPECT_EQ(dumps.NewRecords(), "a record");
  }
  EXPECT_TRUE(folder.Names().empty());
  EXPECT_EQ(std::getenv("DumpChartTimePath"), nullptr);
  unsetenv("TMPDIR");
}

TEST(DumpFolderTest, FolderOfTheUserStaysAndOnlyNewRecordsCount) {
  const WorkFolder folder;
  folder.Write("JNI_Exceptions_Nov 7.txt", "old");
  setenv("DumpChartTimePath", folder.Path().c_str(), 1);
  {
    const DumpFolder dumps;
    EXPECT_EQ(dumps.NewRecords(), "");
    folder.Write("JNI_Exceptions_Nov 7.txt", "old, new");
    folder.Write("unrelated.txt", "x");
    EXPECT_EQ(dumps.NewRecords(), ", new");
  }
  EXPECT_EQ(folder.Read("JNI_Exceptions_Nov 7.txt"), "old, new");
  EXPECT_EQ(std::getenv("DumpChartTimePath"), folder.Path());
  unsetenv("DumpChartTimePath");
}

}  // namespace
}  // namespace chartbridge
