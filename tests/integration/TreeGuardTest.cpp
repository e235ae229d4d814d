// SPDX-License-Identifier: Apache-2.0
// Which tree operations the guard is needed for: each in a process of its own, under the guard and
// without it.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <ostream>
#include <string>
#include <vector>

#include "tests/integration/ChildProcess.h"
#include "tests/integration/TempFolder.h"

namespace chartbridge {
namespace {

constexpr int kSeconds = 60;

struct Row {
  const char* name;
  /// What it prints under the guard.
  const char* output;
  /// What the dump then tells; empty when there is none.
  const char* record;
};

void PrintTo(const Row& row, std::ostream* stream) { *stream << row.name; }

constexpr Row kRows[] = {
    {"ModelToFiles", "answer=1\nfiles=3\ndone=1\n", ""},
    {"EmptyMapValue", "answer=1\na=abc\nb=0\ndone=1\n", ""},
    {"NullCompressedModel", "bytes=0\ndone=1\n", "JNI GetArrayLength: the array or string is null"},
    {"NullSize", "answer=0\nwidth=7\ndone=1\n", "JNI GetArrayLength: the array or string is null"},
    {"NullCalculatedSize", "answer=0\nwidth=7\ndone=1\n",
     "JNI GetArrayLength: the array or string is null"},
    {"NoImagerClass", "answer=0\ndone=1\n",
     "java.lang.NoClassDefFoundError: com/tesk/treemodeleditor/TreeImager"},
    {"NoEditorClass", "needs=0\ndone=1\n",
     "java.lang.NoClassDefFoundError: com/tesk/treemodeleditor/TreeEditor"},
};

class TreeGuard : public testing::TestWithParam<Row> {
 protected:
  std::string Dump() const {
    std::string text;
    for (const auto& entry : std::filesystem::directory_iterator(_dumps.Path())) {
      std::ifstream file(entry.path());
      text += std::string(std::istreambuf_iterator<char>(file), {});
    }
    return text;
  }

  ChildResult Run(const std::string& mode) const {
    std::vector<std::string> command = {CHARTBRIDGE_TEST_PROBE, GetParam().name};
    if (!mode.empty()) command.push_back(mode);
    return RunChild(command, {{"DumpChartTimePath", _dumps.Path()}}, kSeconds);
  }

 private:
  TempFolder _dumps;
};

TEST_P(TreeGuard, MakesItWork) {
  const ChildResult result = Run("");
  EXPECT_EQ(result.Words(), "exit 0") << result.errors;
  EXPECT_EQ(result.output, GetParam().output);
  if (*GetParam().record == '\0') {
    EXPECT_EQ(Dump(), "");
  } else {
    EXPECT_NE(Dump().find(GetParam().record), std::string::npos) << Dump();
  }
}

TEST_P(TreeGuard, IsNeeded) {
  const ChildResult result = Run("bare");
  EXPECT_NE(result.Words(), "exit 0");
  EXPECT_EQ(result.output.find("done=1"), std::string::npos) << result.output;
}

INSTANTIATE_TEST_SUITE_P(Operations, TreeGuard, testing::ValuesIn(kRows),
                         [](const auto& information) {
                           return std::string(information.param.name);
                         });

}  // namespace
}  // namespace chartbridge
