// SPDX-License-Identifier: Apache-2.0
// The tree window on an X server of its own.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <signal.h>

#include <chrono>
#include <future>
#include <string>
#include <thread>
#include <vector>

#include "tests/app/StartedProgram.h"
#include "tests/app/TreeFolder.h"
#include "tests/app/VirtualScreen.h"

namespace chartbridge {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

constexpr char kTitle[] = "Tree";

/// Whether two pictures of the screen are the same outside of a window.
bool SameAround(const VirtualScreen::Window& window, const std::string& a, const std::string& b) {
  for (int y = 0; y < VirtualScreen::kHeight; ++y) {
    for (int x = 0; x < VirtualScreen::kWidth; ++x) {
      const bool inside = x >= window.x && x < window.x + window.width && y >= window.y &&
                          y < window.y + window.height;
      const auto at = static_cast<std::size_t>(4 * (y * VirtualScreen::kWidth + x));
      if (!inside && a.compare(at, 4, b, at, 4) != 0) return false;
    }
  }
  return true;
}

class TreeShowTest : public testing::Test {
 protected:
  /// Runs `tree show ARGUMENTS` on the screen, beside the test.
  std::future<RunResult> Show(std::vector<std::string> arguments) const {
    arguments.insert(arguments.begin(), "show");
    RunSettings settings;
    settings.environment["DISPLAY"] = screen.Name();
    return std::async(std::launch::async,
                      [this, arguments, settings] { return folder.Tree(arguments, settings); });
  }

  static void ExpectDone(std::future<RunResult>& running) {
    const RunResult result = running.get();
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.output, "");
    EXPECT_EQ(result.errors, "");
  }

  const TreeFolder folder;
  VirtualScreen screen;
};

TEST_F(TreeShowTest, ShowsTheTreeWhereItIsAskedAndClosesWithTheWindow) {
  const std::string before = screen.Picture();
  auto running = Show({"iris.pmml", "--geometry", "640x480+120+90"});
  const VirtualScreen::Window window = screen.WaitFor(kTitle);
  EXPECT_EQ(window.x, 120);
  EXPECT_EQ(window.y, 90);
  EXPECT_EQ(window.width, 640);
  EXPECT_EQ(window.height, 480);
  const std::string shown = screen.SettledPicture(before);
  EXPECT_TRUE(SameAround(window, before, shown));
  EXPECT_EQ(running.wait_for(std::chrono::milliseconds(500)), std::future_status::timeout);
  screen.Close(window);
  ExpectDone(running);
  EXPECT_TRUE(screen.Becomes(before));
  EXPECT_THAT(folder.NewNames(), ElementsAre());
}

TEST_F(TreeShowTest, AClickCollapsesANodeAndTheDisplayDataKeepIt) {
  const std::string before = screen.Picture();
  auto running =
      Show({"airquality.pmml", "--geometry", "1000x900+0+0", "--save-display", "display.xml"});
  const VirtualScreen::Window window = screen.WaitFor(kTitle);
  const std::string open = screen.SettledPicture(before);
  // The root stands below the title, in the middle of a tree of this form.
  const std::string size = folder.SizeOf({"airquality.pmml"});
  const int middle = std::stoi(size) / 2;
  std::string collapsed = open;
  for (int y = 60; y < 400 && collapsed == open; y += 15) {
    screen.Click(middle, y);
    std::this_thread::sleep_for(screen.Stillness());
    collapsed = screen.Picture();
  }
  ASSERT_NE(collapsed, open);
  collapsed = screen.SettledPicture(open);
  EXPECT_THAT(folder.NewNames(), ElementsAre());
  screen.Close(window);
  ExpectDone(running);

  EXPECT_THAT(folder.NewNames(), ElementsAre("display.xml"));
  EXPECT_THAT(folder.Read("display.xml"), HasSubstr("<collapsed tree=\"1\" path=\"1\"/>"));
  EXPECT_NE(folder.SizeOf({"airquality.pmml", "--display", "display.xml"}), size);

  // Shown again with these data, the tree looks as it was left.
  auto again = Show({"airquality.pmml", "--geometry", "1000x900+0+0", "--display", "display.xml"});
  const VirtualScreen::Window second = screen.WaitFor(kTitle);
  EXPECT_TRUE(screen.Becomes(collapsed));
  screen.Close(second);
  ExpectDone(again);
}

TEST_F(TreeShowTest, InterruptionClosesTheWindowInOrder) {
  RunSettings settings;
  settings.environment["DISPLAY"] = screen.Name();
  settings.folder = folder.Path();
  StartedProgram program({CHARTBRIDGE_COMMAND, "tree", "show", "iris.pmml", "--depth", "1",
                          "--left-to-right", "--save-display", "-"},
                         settings);
  screen.WaitFor(kTitle);
  program.Send(SIGINT);
  const RunResult result = program.Result();
  EXPECT_EQ(result.exitCode, 0);
  EXPECT_EQ(result.errors, "");
  EXPECT_THAT(result.output, HasSubstr("<tree-display "));
  EXPECT_THAT(result.output, HasSubstr(" depth=\"1\""));
  EXPECT_THAT(result.output, HasSubstr(" orientation=\"left-to-right\""));
  EXPECT_FALSE(screen.Find(kTitle));
}

TEST_F(TreeShowTest, WrongModel) {
  folder.Write("model.pmml", "<chart/>");
  const RunResult result = Show({"model.pmml", "--save-display", "display.xml"}).get();
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_EQ(result.output, "");
  EXPECT_EQ(result.errors,
            "chartbridge: model.pmml: PMML document, line 1, column 1: found <chart>, expected "
            "<PMML>; this is no PMML document.\n");
  EXPECT_THAT(folder.NewNames(), ElementsAre("model.pmml"));
}

class TreeShowWithoutScreenTest : public testing::Test {
 protected:
  void ExpectEnd(const std::vector<std::string>& arguments, const std::string& display,
                 int exitCode, const std::string& errors) {
    std::vector<std::string> all = {"show"};
    all.insert(all.end(), arguments.begin(), arguments.end());
    RunSettings settings;
    settings.environment["DISPLAY"] = display;
    const RunResult result = folder.Tree(all, settings);
    EXPECT_EQ(result.exitCode, exitCode);
    EXPECT_EQ(result.output, "");
    EXPECT_EQ(result.errors, "chartbridge: " + errors + "\n");
    EXPECT_THAT(folder.NewNames(), ElementsAre());
  }

  const TreeFolder folder;
};

TEST_F(TreeShowWithoutScreenTest, SaysSo) {
  ExpectEnd({"iris.pmml"}, kUnset, 1,
            "there is no display to show a window on: DISPLAY is not set");
  ExpectEnd({"iris.pmml", "--save-display", "display.xml"}, "", 1,
            "there is no display to show a window on: DISPLAY is not set");
  ExpectEnd({"iris.pmml"}, ":59999", 1,
            "there is no display to show a window on: DISPLAY is :59999, where no X server "
            "answers");
}

TEST_F(TreeShowWithoutScreenTest, MissingFiles) {
  ExpectEnd({"none.pmml"}, kUnset, 1, "none.pmml: No such file or directory");
  ExpectEnd({"iris.pmml", "--save-display", "none/display.xml"}, kUnset, 1,
            "none/display.xml: cannot write there: the folder none does not exist");
}

TEST_F(TreeShowWithoutScreenTest, GeometryMustBeOne) {
  for (const char* geometry : {"1000", "0x700", "1000x700+1", "-5x9", "1000x700+1+1+1"}) {
    ExpectEnd({"iris.pmml", std::string("--geometry=") + geometry}, kUnset, 2,
              "--geometry: expected WIDTHxHEIGHT or WIDTHxHEIGHT+X+Y in pixels, such as "
              "1000x700+60+60 (see chartbridge tree show --help)");
  }
}

}  // namespace
}  // namespace chartbridge
