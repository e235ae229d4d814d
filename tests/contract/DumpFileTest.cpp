// SPDX-License-Identifier: Apache-2.0
#include <unistd.h>

#include <cfenv>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "bridge/JAccessor.h"
#include "tests/support/ClockProbe.h"
#include "tests/support/ContractTest.h"
#include "tests/support/Steps.h"
#include "tests/support/Thrown.h"

namespace chartbridge::testing {
namespace {

namespace fs = std::filesystem;

std::time_t At(int year, int month, int day, int hour, int minute, int second) {
  std::tm time{};
  time.tm_year = year - 1900;
  time.tm_mon = month - 1;
  time.tm_mday = day;
  time.tm_hour = hour;
  time.tm_min = minute;
  time.tm_sec = second;
  return timegm(&time);
}

std::string ReadFile(const fs::path& path) {
  std::ifstream file(path, std::ios::binary);
  std::ostringstream content;
  content << file.rdbuf();
  return content.str();
}

class DumpFileTest : public ContractTest {
 protected:
  DumpFileTest() {
    std::string name = (fs::temp_directory_path() / "chartbridge-dump-XXXXXX").string();
    folder = mkdtemp(name.data());
    setenv("DumpChartTimePath", folder.c_str(), 1);
  }
  ~DumpFileTest() override {
    unsetenv("DumpChartTimePath");
    fs::remove_all(folder);
  }

  // The names of the files that were written.
  std::vector<std::string> Files() const {
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(folder)) {
      names.push_back(entry.path().filename().string());
    }
    return names;
  }

  fs::path folder;
  JAccessor accessor{jvm.Env()};
};

TEST_F(DumpFileTest, NameHoldsTheMonthAndTheDay) {
  ClockProbe::Get().Set(At(2026, 11, 16, 9, 8, 7), 123);
  accessor.printDebugInfo("hello");
  EXPECT_EQ(Files(), std::vector<std::string>{"JNI_Exceptions_Nov16.txt"});
  EXPECT_EQ(ReadFile(folder / "JNI_Exceptions_Nov16.txt"),
            " time = 09:08:07.123 Message : hello\n");
}

TEST_F(DumpFileTest, ADayBelowTenKeepsItsSpace) {
  ClockProbe::Get().Set(At(2026, 11, 7, 23, 59, 59), 999);
  accessor.printDebugInfo("hello");
  EXPECT_EQ(Files(), std::vector<std::string>{"JNI_Exceptions_Nov 7.txt"});
  EXPECT_EQ(ReadFile(folder / "JNI_Exceptions_Nov 7.txt"),
            " time = 23:59:59.999 Message : hello\n");
}

TEST_F(DumpFileTest, MillisecondsHaveThreeDigits) {
  const std::pair<unsigned short, std::string> readings[] = {
      {0, "000"}, {5, "005"}, {42, "042"}, {999, "999"}};
  std::string expected;
  for (const auto& [milliseconds, text] : readings) {
    ClockProbe::Get().Set(At(2026, 1, 31, 0, 0, 0), milliseconds);
    accessor.printDebugInfo("x");
    expected += " time = 00:00:00." + text + " Message : x\n";
  }
  EXPECT_EQ(ReadFile(folder / "JNI_Exceptions_Jan31.txt"), expected);
}

TEST_F(DumpFileTest, ReadsTheVariableThenTheClockOnce) {
  const std::time_t second = At(2026, 11, 16, 9, 8, 7);
  ClockProbe::Get().Set(second, 5);
  accessor.printDebugInfo("hello");
  EXPECT_TRUE(
      Happened(Seq("getenv(DumpChartTimePath)", "ftime", "ctime(" + std::to_string(second) + ")")));
}

TEST_F(DumpFileTest, RecordsOfOneDayAreAppended) {
  ClockProbe::Get().Set(At(2026, 3, 10, 1, 2, 3), 4);
  accessor.printDebugInfo("first");
  ClockProbe::Get().Set(At(2026, 3, 10, 4, 5, 6), 70);
  accessor.printDebugInfo("second");
  ClockProbe::Get().Set(At(2026, 3, 11, 0, 0, 0), 0);
  accessor.printDebugInfo("next day");
  EXPECT_EQ(ReadFile(folder / "JNI_Exceptions_Mar10.txt"),
            " time = 01:02:03.004 Message : first\n time = 04:05:06.070 Message : second\n");
  EXPECT_EQ(ReadFile(folder / "JNI_Exceptions_Mar11.txt"),
            " time = 00:00:00.000 Message : next day\n");
}

TEST_F(DumpFileTest, AnExistingFileIsKept) {
  std::ofstream(folder / "JNI_Exceptions_Mar10.txt") << "from before\n";
  ClockProbe::Get().Set(At(2026, 3, 10, 1, 2, 3), 4);
  accessor.printDebugInfo("new");
  EXPECT_EQ(ReadFile(folder / "JNI_Exceptions_Mar10.txt"),
            "from before\n time = 01:02:03.004 Message : new\n");
}

TEST_F(DumpFileTest, MessagesGoThroughUnchanged) {
  ClockProbe::Get().Set(At(2026, 3, 10, 1, 2, 3), 4);
  const std::string message =
      "two\nlines\twith \xC3\xA9 and 12345 and 0x10 " + std::string(1, '\0');
  accessor.printDebugInfo(message);
  accessor.printDebugInfo("");
  EXPECT_EQ(ReadFile(folder / "JNI_Exceptions_Mar10.txt"),
            " time = 01:02:03.004 Message : " + message + "\n time = 01:02:03.004 Message : \n");
}

TEST_F(DumpFileTest, TheTimeIsLocal) {
  setenv("TZ", "EST5", 1);
  tzset();
  ClockProbe::Get().Set(At(2026, 11, 8, 2, 30, 0), 0);
  accessor.printDebugInfo("x");
  setenv("TZ", "UTC", 1);
  tzset();
  EXPECT_EQ(ReadFile(folder / "JNI_Exceptions_Nov 7.txt"), " time = 21:30:00.000 Message : x\n");
}

TEST_F(DumpFileTest, WithoutTheVariableNothingIsWrittenAndTheClockIsNotRead) {
  unsetenv("DumpChartTimePath");
  accessor.printDebugInfo("hello");
  EXPECT_TRUE(Happened(Seq("getenv(DumpChartTimePath)")));
  EXPECT_TRUE(Files().empty());
}

TEST_F(DumpFileTest, AnEmptyVariableMeansTheRootFolder) {
  setenv("DumpChartTimePath", "", 1);
  const std::time_t second = At(2026, 2, 28, 1, 2, 3);
  ClockProbe::Get().Set(second, 4);
  const fs::path file = "/JNI_Exceptions_Feb28.txt";
  const bool was_there = fs::exists(file);
  const std::string message = "from process " + std::to_string(getpid());
  EXPECT_EQ(Thrown([&] { accessor.printDebugInfo(message); }), "nothing");
  EXPECT_TRUE(
      Happened(Seq("getenv(DumpChartTimePath)", "ftime", "ctime(" + std::to_string(second) + ")")));
  EXPECT_TRUE(Files().empty());
  if (access("/", W_OK) != 0) GTEST_SKIP() << "this user may not write to /";
  const std::string content = ReadFile(file);
  if (!was_there) fs::remove(file);
  EXPECT_NE(content.find(" time = 01:02:03.004 Message : " + message + "\n"), std::string::npos);
}

TEST_F(DumpFileTest, AMissingFolderLosesTheRecordSilently) {
  const fs::path missing = folder / "missing";
  setenv("DumpChartTimePath", missing.c_str(), 1);
  EXPECT_EQ(Thrown([this] { accessor.printDebugInfo("hello"); }), "nothing");
  EXPECT_FALSE(fs::exists(missing));
}

TEST_F(DumpFileTest, AFileInPlaceOfTheFolderLosesTheRecordSilently) {
  std::ofstream(folder / "file") << "x";
  setenv("DumpChartTimePath", (folder / "file").c_str(), 1);
  EXPECT_EQ(Thrown([this] { accessor.printDebugInfo("hello"); }), "nothing");
  EXPECT_EQ(ReadFile(folder / "file"), "x");
}

TEST_F(DumpFileTest, AFolderWithATrailingSlashIsUsedAsItIs) {
  setenv("DumpChartTimePath", (folder.string() + "/").c_str(), 1);
  ClockProbe::Get().Set(At(2026, 3, 10, 1, 2, 3), 4);
  accessor.printDebugInfo("x");
  EXPECT_EQ(Files(), std::vector<std::string>{"JNI_Exceptions_Mar10.txt"});
}

TEST_F(DumpFileTest, UsesNoGuardAndNoJava) {
  accessor.printDebugInfo("hello");
  EXPECT_TRUE(Happened(Source::kFloatEnv, {}));
  accessor.printDebugInfo("hello");
  EXPECT_TRUE(Happened(Source::kJni, {}));
}

TEST_F(DumpFileTest, ACheckWritesItsThreeTexts) {
  const std::time_t second = At(2026, 11, 16, 9, 8, 7);
  ClockProbe::Get().Set(second, 5);
  const jthrowable exception = jvm.MakeThrowable("java/io/IOException", "disk full");
  jvm.SetPending(exception);
  accessor.exceptionCheck();
  EXPECT_TRUE(Happened(DumpedException(exception, second)));
  EXPECT_EQ(ReadFile(folder / "JNI_Exceptions_Nov16.txt"),
            " time = 09:08:07.005 Message : JAccessor::exceptionCheck()\n"
            "  message: disk full\n"
            "  type: java.io.IOException: disk full\n"
            "  stack: java.io.IOException: disk full\n"
            "\tat Chart.render(Chart.java:7)\n"
            "\n");
}

TEST_F(DumpFileTest, AMessageOfNullIsEmptyInTheRecord) {
  ClockProbe::Get().Set(At(2026, 11, 16, 9, 8, 7), 5);
  jvm.SetPending(jvm.MakeThrowableWithoutMessage("java/io/IOException"));
  accessor.exceptionCheck();
  EXPECT_EQ(ReadFile(folder / "JNI_Exceptions_Nov16.txt"),
            " time = 09:08:07.005 Message : JAccessor::exceptionCheck()\n"
            "  message: \n"
            "  type: java.io.IOException\n"
            "  stack: java.io.IOException\n"
            "\tat Chart.render(Chart.java:7)\n"
            "\n");
}

TEST_F(DumpFileTest, ACheckWithoutAnExceptionTouchesNoFile) {
  accessor.exceptionCheck();
  EXPECT_TRUE(Happened(NoPendingException()));
  EXPECT_TRUE(Files().empty());
}

TEST_F(DumpFileTest, TheRoundingModeChangesNoDigit) {
  ClockProbe::Get().Set(At(2026, 3, 10, 1, 2, 3), 45);
  std::fesetround(FE_UPWARD);
  accessor.printDebugInfo("x");
  std::fesetround(FE_TONEAREST);
  EXPECT_EQ(ReadFile(folder / "JNI_Exceptions_Mar10.txt"), " time = 01:02:03.045 Message : x\n");
}

}  // namespace
}  // namespace chartbridge::testing
