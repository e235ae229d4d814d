// SPDX-License-Identifier: Apache-2.0
// From PMML to pictures: the library, the reference host, the guard and the reference Java classes
// together. There is no display here; the window has tests of its own.
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <map>
#include <string>
#include <thread>
#include <vector>

#include "guard/jniguard.h"
#include "host/JvmSettings.h"
#include "host/JvmThreads.h"
#include "host/LocalFrame.h"
#include "platform/TeskJVM.h"
#include "tests/integration/ReadFile.h"
#include "tests/integration/TempFolder.h"
#include "tree/TreeEditor.h"

namespace chartbridge {
namespace {

constexpr char kExamples[] = CHARTBRIDGE_TEST_EXAMPLES;
constexpr char kPngStart[] = "\x89PNG\r\n\x1A\n";

std::string Model(const std::string& name) {
  return ReadFile(std::string(kExamples) + "/trees/" + name + ".pmml");
}

long BigEndian(const std::string& bytes, std::size_t at) {
  long value = 0;
  for (std::size_t i = 0; i < 4; ++i) {
    value = value << 8 | static_cast<unsigned char>(bytes.at(at + i));
  }
  return value;
}

bool IsPng(const std::string& bytes) {
  return bytes.size() > 24 && bytes.compare(0, 8, kPngStart, 8) == 0;
}

class RealTree : public testing::Test {
 protected:
  static void SetUpTestSuite() {
    JvmSettings settings;
    settings.classPath = {CHARTBRIDGE_TEST_RUNTIME_JAR};
    settings.options = {"-Djava.awt.headless=true"};
    SetJvmSettings(settings);
    ASSERT_TRUE(TeskJVM::GetInstance()->StartJVM());
  }

  void SetUp() override {
    setenv("DumpChartTimePath", _dumps.Path().c_str(), 1);
    JNIEnv* env = TeskJVM::GetInstance()->GetEnv();
    ASSERT_TRUE(Editor().StartEditorHeadless(env));
    ASSERT_TRUE(Editor().StartEditor(env, "", ""));
  }

  void TearDown() override {
    delete TreeEditor::GetInstance();
    TreeEditor::_instance = nullptr;
    unsetenv("DumpChartTimePath");
  }

  static TreeEditor& Editor() { return *TreeEditor::GetInstance(); }

  std::string Dump() const { return ReadFolder(_dumps.Path()); }

  std::string PathTo(const std::string& name) const { return _files.Path() + "/" + name; }

 private:
  TempFolder _files;
  TempFolder _dumps;
};

class RealTreeExample : public RealTree, public testing::WithParamInterface<const char*> {
 protected:
  const std::string model = Model(GetParam());
};

TEST_P(RealTreeExample, BecomesFileAndMemoryOfItsSize) {
  const LocalFrame frame;
  long width = 0;
  long height = 0;
  ASSERT_TRUE(Editor().CalculateSizeHeadless(model, "", width, height)) << Dump();
  ASSERT_TRUE(
      Editor().RenderToFileHeadless(model, "", PathTo("tree.png"), TreeEditor::IMAGE_PNG, false))
      << Dump();
  const std::string file = ReadFile(PathTo("tree.png"));
  ASSERT_TRUE(IsPng(file));
  EXPECT_EQ(BigEndian(file, 16), width);
  EXPECT_EQ(BigEndian(file, 20), height);

  unsigned int size = 0;
  std::string image;
  ASSERT_TRUE(Editor().RenderImageToMemoryHeadless(model, "", "", size, TreeEditor::IMAGE_PNG,
                                                   false, image))
      << Dump();
  EXPECT_EQ(size, image.size());
  EXPECT_TRUE(image == file);
  EXPECT_EQ(Dump(), "");
}

TEST_P(RealTreeExample, BecomesTheSameSetInMemoryAndInFiles) {
  const LocalFrame frame;
  std::map<std::string, unsigned int> sizes;
  std::map<std::string, std::string> images;
  ASSERT_TRUE(Editor().RenderModelToMemoryHeadless(model, "", "", "", "Set", TreeEditor::IMAGE_PNG,
                                                   0, sizes, images))
      << Dump();
  std::vector<std::string> files;
  ASSERT_TRUE(Editor().RenderModelToFileHeadless(model, "", "", "", "Set", PathTo("set"),
                                                 TreeEditor::IMAGE_PNG, 0, files))
      << Dump();
  ASSERT_GT(files.size(), 2U);
  EXPECT_EQ(files.size(), images.size());
  EXPECT_EQ(files.front(), PathTo("set") + "/Set-overview.png");
  for (const auto& [name, image] : images) {
    EXPECT_TRUE(IsPng(image)) << name;
    EXPECT_EQ(sizes[name], image.size()) << name;
    EXPECT_TRUE(ReadFile(PathTo("set") + "/" + name) == image) << name;
  }
  EXPECT_EQ(Dump(), "");
}

TEST_P(RealTreeExample, WorksInTheEditorWithoutADisplay) {
  const LocalFrame frame;
  long width = 7;
  long height = 7;
  // Started, but nothing rendered yet.
  EXPECT_FALSE(Editor().GetSize(width, height));
  EXPECT_EQ(width, 0);
  EXPECT_EQ(Editor().ExtractDisplayData(), "");
  EXPECT_TRUE(Editor().NeedsRerendering());

  Editor().RenderPMMLAtLocation(10, 20, 640, 480, model, "");
  EXPECT_FALSE(Editor().NeedsRerendering());
  ASSERT_TRUE(Editor().GetSize(width, height)) << Dump();
  long measuredWidth = 0;
  long measuredHeight = 0;
  ASSERT_TRUE(Editor().CalculateSize(model, "", measuredWidth, measuredHeight));
  EXPECT_EQ(measuredWidth, width);
  EXPECT_EQ(measuredHeight, height);
  EXPECT_NE(Editor().ExtractDisplayData().find("<tree-display "), std::string::npos);
  const std::string compressed = Editor().ExtractCompressedPMML();
  EXPECT_EQ(compressed.substr(0, 2), "\x1F\x8B");
  // What comes out goes in again.
  ASSERT_TRUE(Editor().CalculateSizeHeadless(compressed, Editor().ExtractDisplayData(),
                                             measuredWidth, measuredHeight));
  EXPECT_EQ(measuredWidth, width);

  Editor().SetDPI(192);
  EXPECT_TRUE(Editor().NeedsRerendering());
  ASSERT_TRUE(Editor().RenderToFile(model, "", PathTo("large.png"), TreeEditor::IMAGE_PNG, false));
  EXPECT_EQ(BigEndian(ReadFile(PathTo("large.png")), 16), 2 * width);

  Editor().Close();
  EXPECT_TRUE(Editor().IsStarted());
  EXPECT_FALSE(Editor().GetSize(width, height));
  EXPECT_NE(Editor().ExtractDisplayData(), "");
  EXPECT_EQ(Dump(), "");
}

INSTANTIATE_TEST_SUITE_P(Examples, RealTreeExample,
                         testing::Values("iris", "airquality", "titanic-forest",
                                         "kyphosis-boosted"),
                         [](const auto& information) {
                           std::string name = information.param;
                           for (char& c : name) c = c == '-' ? '_' : c;
                           return name;
                         });

TEST_F(RealTree, BecomesEveryType) {
  const struct {
    TreeEditor::IMAGE_TYPE type;
    std::string start;
  } kinds[] = {{TreeEditor::IMAGE_JPEG, "\xFF\xD8\xFF"}, {TreeEditor::IMAGE_BMP, "BM"},
               {TreeEditor::IMAGE_GIF, "GIF8"},          {TreeEditor::IMAGE_SVG, "<?xml"},
               {TreeEditor::IMAGE_PDF, "%PDF-"},         {TreeEditor::IMAGE_MAP, kPngStart}};
  for (const auto& kind : kinds) {
    const LocalFrame frame;
    const std::string path = PathTo("tree" + std::to_string(kind.type) + ".png");
    EXPECT_TRUE(Editor().RenderToFileHeadless(Model("iris"), "", path, kind.type, true)) << Dump();
    EXPECT_EQ(ReadFile(path).substr(0, kind.start.size()), kind.start);
  }
  EXPECT_EQ(Dump(), "");
}

TEST_F(RealTree, SaysWhatIsWrongWithTheModel) {
  const LocalFrame frame;
  EXPECT_FALSE(Editor().RenderToFileHeadless("<no-pmml/>", "", PathTo("none.png"),
                                             TreeEditor::IMAGE_PNG, false));
  EXPECT_NE(Dump().find("no-pmml"), std::string::npos) << Dump();
  EXPECT_FALSE(std::filesystem::exists(PathTo("none.png")));
}

TEST_F(RealTree, BecomesTheSameOnOtherThreads) {
  const std::string iris = Model("iris");
  std::vector<std::string> images(4);
  std::vector<std::thread> threads;
  for (std::string& image : images) {
    threads.emplace_back([&iris, &image] {
      for (int i = 0; i < 3; ++i) {
        const LocalFrame frame;
        unsigned int size = 0;
        Editor().RenderImageToMemoryHeadless(iris, "", "", size, TreeEditor::IMAGE_PNG, false,
                                             image);
      }
      DetachCurrentThread();
    });
  }
  for (std::thread& thread : threads) thread.join();
  for (const std::string& image : images) {
    EXPECT_TRUE(IsPng(image));
    EXPECT_TRUE(image == images.front());
  }
  EXPECT_EQ(Dump(), "");
}

}  // namespace
}  // namespace chartbridge
