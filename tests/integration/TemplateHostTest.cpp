// SPDX-License-Identifier: Apache-2.0
// Hosts whose process does not have the library when the JVM starts.
#include <gtest/gtest.h>

#include <fstream>
#include <string>
#include <vector>

#include "tests/integration/ChildProcess.h"
#include "tests/integration/TempFolder.h"

namespace chartbridge {
namespace {

constexpr int kSeconds = 60;

class TemplateHost : public testing::Test {
 protected:
  void SetUp() override {
    std::ofstream(_folder.Path() + "/house.xml")
        << "<template xmlns=\"urn:chartbridge:template:1\"/>";
  }

  ChildResult Run(const std::vector<std::string>& library) const {
    std::vector<std::string> command = {CHARTBRIDGE_TEST_PROBE, _folder.Path()};
    command.insert(command.end(), library.begin(), library.end());
    return RunChild(command, {}, kSeconds);
  }

 private:
  TempFolder _folder;
};

TEST_F(TemplateHost, WithoutTheLibraryGetsAClearException) {
  const ChildResult result = Run({});
  EXPECT_EQ(result.Words(), "exit 0") << result.errors;
  EXPECT_EQ(result.output,
            "thrown=org.chartbridge.chart.ChartException: The template \"house\" cannot be "
            "applied: the host has not bound the native method of "
            "com.tesk.charteditor.template.ApplyTemplate.\ndrawn=0\n");
}

TEST_F(TemplateHost, CanLoadTheLibraryLater) {
  const ChildResult result = Run({CHARTBRIDGE_TEST_LIBRARY});
  EXPECT_EQ(result.Words(), "exit 0") << result.errors;
  EXPECT_EQ(result.output, "bound=1\nthrown=none\ndrawn=1\n");
}

}  // namespace
}  // namespace chartbridge
