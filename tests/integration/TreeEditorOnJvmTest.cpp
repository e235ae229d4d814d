// SPDX-License-Identifier: Apache-2.0
// The tree editor on a real JVM under the guard, with stand-ins for the Java classes.
#include <gtest/gtest.h>

#include <atomic>
#include <cstdlib>
#include <map>
#include <stdexcept>
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

constexpr TreeEditor::IMAGE_TYPE kSvg = TreeEditor::IMAGE_SVG;

/// Both bindings started, and a folder for files and dumps.
class TreeEditorOnJvm : public testing::Test {
 protected:
  using Sizes = std::map<std::string, unsigned int>;
  using Images = std::map<std::string, std::string>;

  static void SetUpTestSuite() {
    JvmSettings settings;
    settings.classPath = {CHARTBRIDGE_TEST_JAR};
    settings.options = {"-Xmx256m", "-Dfile.encoding=UTF-8"};
    SetJvmSettings(settings);
    ASSERT_TRUE(TeskJVM::GetInstance()->StartJVM());
  }

  void SetUp() override {
    setenv("DumpChartTimePath", _dumps.Path().c_str(), 1);
    JNIEnv* env = TeskJVM::GetInstance()->GetEnv();
    ASSERT_TRUE(Editor().StartEditorHeadless(env));
    ASSERT_TRUE(Editor().StartEditor(env, "", ""));
    ASSERT_EQ(Dump(), "");
  }

  void TearDown() override {
    delete TreeEditor::GetInstance();
    TreeEditor::_instance = nullptr;
    unsetenv("DumpChartTimePath");
  }

  static TreeEditor& Editor() { return *TreeEditor::GetInstance(); }

  std::string PathTo(const std::string& name) const { return _files.Path() + "/" + name; }

  std::string Dump() const { return ReadFolder(_dumps.Path()); }

  std::size_t Records() const {
    const std::string label = "Message : JAccessor::exceptionCheck()";
    const std::string dump = Dump();
    std::size_t count = 0;
    for (std::size_t at = dump.find(label); at != std::string::npos;
         at = dump.find(label, at + 1)) {
      ++count;
    }
    return count;
  }

  void ExpectOneRecord(const std::string& reason) const {
    EXPECT_EQ(Records(), 1U) << Dump();
    EXPECT_NE(Dump().find(reason), std::string::npos) << Dump();
  }

  void ExpectRecordOfTheException() const {
    ExpectOneRecord("type: java.lang.IllegalStateException: the tree says so");
  }

  /// The display data of the stand-in: all its calls.
  static std::string Calls() { return Editor().ExtractDisplayData(); }

  static bool ToMemory(const std::string& model, Sizes& sizes, Images& images) {
    return Editor().RenderModelToMemoryHeadless(model, "display", "style", "samples", "title", kSvg,
                                                3, sizes, images);
  }

  static bool ToFiles(const std::string& model, std::vector<std::string>& files) {
    return Editor().RenderModelToFileHeadless(model, "display", "style", "samples", "title",
                                              "folder", kSvg, 3, files);
  }

 private:
  TempFolder _files;
  TempFolder _dumps;
};

TEST_F(TreeEditorOnJvm, HeadlessRenderingReachesJava) {
  ASSERT_TRUE(Editor().RenderToFileHeadless("m", "d", PathTo("out"), kSvg, true));
  EXPECT_EQ(ReadFile(PathTo("out")), "renderToFile m d 5 true 100 ");
  unsigned int size = 0;
  std::string image;
  ASSERT_TRUE(Editor().RenderImageToMemoryHeadless("m", "d", "unused", size, kSvg, true, image));
  EXPECT_EQ(image, "renderToMemory m d 5 100");
  EXPECT_EQ(size, image.size());
  long width = 0;
  long height = 0;
  ASSERT_TRUE(Editor().CalculateSizeHeadless("m", "d", width, height));
  EXPECT_EQ(width, 300);
  EXPECT_EQ(height, 200);
  EXPECT_EQ(Dump(), "");
}

TEST_F(TreeEditorOnJvm, SetsComeBackWhole) {
  Sizes sizes;
  Images images = {{"a", "old"}};
  ASSERT_TRUE(ToMemory("m", sizes, images));
  // An empty value is a picture of no bytes; a name ends at its first zero byte.
  EXPECT_EQ(sizes, (Sizes{{"a", 3}, {"b", 0}, {"call", 33}, {"\xC3\xBC", 1}}));
  EXPECT_EQ(images, (Images{{"a", "old"},
                            {"b", ""},
                            {"call", "m display style samples title 5 3"},
                            {"\xC3\xBC", "d"}}));
  std::vector<std::string> files = {"old"};
  ASSERT_TRUE(ToFiles("m", files));
  EXPECT_EQ(files, (std::vector<std::string>{"old", "m display style samples title folder 5 3", "",
                                             "\xC3\xBC"}));
  EXPECT_EQ(Dump(), "");
  EXPECT_GT(jniguard_count(JNIGUARD_REFERENCE_KIND), 0U);
}

TEST_F(TreeEditorOnJvm, EmptyAndNullSets) {
  Sizes sizes;
  Images images = {{"kept", "old"}};
  std::vector<std::string> files = {"old"};
  EXPECT_FALSE(ToMemory("empty", sizes, images));
  EXPECT_FALSE(ToMemory("null", sizes, images));
  EXPECT_TRUE(ToFiles("empty", files));
  EXPECT_FALSE(ToFiles("null", files));
  EXPECT_EQ(sizes, Sizes());
  EXPECT_EQ(images, (Images{{"kept", "old"}}));
  EXPECT_EQ(files, std::vector<std::string>{"old"});
  EXPECT_EQ(Dump(), "");
}

TEST_F(TreeEditorOnJvm, NamelessPictureIsALogicError) {
  Sizes sizes;
  Images images;
  EXPECT_THROW(ToMemory("nameless", sizes, images), std::logic_error);
  EXPECT_EQ(sizes, (Sizes{{"first", 1}}));
  EXPECT_EQ(images, Images());
  EXPECT_EQ(Dump(), "");
  // The lock is free again, and the editor as before.
  std::thread([] {
    long width = 0;
    long height = 0;
    EXPECT_TRUE(Editor().CalculateSizeHeadless("m", "", width, height));
    DetachCurrentThread();
  }).join();
}

TEST_F(TreeEditorOnJvm, HeadlessNullsAndShortSizes) {
  unsigned int size = 7;
  std::string image;
  EXPECT_FALSE(Editor().RenderImageToMemoryHeadless("null", "", "", size, kSvg, false, image));
  EXPECT_EQ(size, 7U);
  image = "old";
  EXPECT_TRUE(Editor().RenderImageToMemoryHeadless("null", "", "", size, kSvg, false, image));
  EXPECT_EQ(image, "old");
  EXPECT_FALSE(Editor().RenderImageToMemoryHeadless("empty", "", "", size, kSvg, false, image));
  EXPECT_EQ(size, 0U);
  long width = 7;
  long height = 7;
  EXPECT_FALSE(Editor().CalculateSizeHeadless("null", "", width, height));
  EXPECT_FALSE(Editor().CalculateSizeHeadless("short", "", width, height));
  EXPECT_EQ(width, 7);
  EXPECT_FALSE(Editor().CalculateSizeHeadless("flat", "", width, height));
  EXPECT_EQ(width, 120);
  EXPECT_EQ(height, 0);
  EXPECT_FALSE(Editor().RenderToFileHeadless("false", "", PathTo("out"), kSvg, false));
  EXPECT_EQ(Dump(), "");
}

TEST_F(TreeEditorOnJvm, RenderToFileHeadlessThatThrows) {
  EXPECT_FALSE(Editor().RenderToFileHeadless("throw", "", PathTo("out"), kSvg, false));
  ExpectRecordOfTheException();
}

TEST_F(TreeEditorOnJvm, RenderImageToMemoryHeadlessThatThrows) {
  unsigned int size = 7;
  std::string image;
  EXPECT_FALSE(Editor().RenderImageToMemoryHeadless("throw", "", "", size, kSvg, false, image));
  EXPECT_EQ(size, 7U);
  ExpectRecordOfTheException();
}

TEST_F(TreeEditorOnJvm, CalculateSizeHeadlessThatThrows) {
  long width = 7;
  long height = 7;
  EXPECT_FALSE(Editor().CalculateSizeHeadless("throw", "", width, height));
  EXPECT_EQ(width, 7);
  ExpectRecordOfTheException();
}

TEST_F(TreeEditorOnJvm, RenderModelToMemoryHeadlessThatThrows) {
  Sizes sizes;
  Images images = {{"kept", "old"}};
  EXPECT_FALSE(ToMemory("throw", sizes, images));
  EXPECT_EQ(images.size(), 1U);
  ExpectRecordOfTheException();
}

TEST_F(TreeEditorOnJvm, RenderModelToFileHeadlessThatThrows) {
  std::vector<std::string> files = {"old"};
  EXPECT_FALSE(ToFiles("throw", files));
  EXPECT_EQ(files.size(), 1U);
  ExpectRecordOfTheException();
}

TEST_F(TreeEditorOnJvm, InteractiveOperationsReachJava) {
  EXPECT_FALSE(Editor().SetSchemaPath("no codepage"));
  ASSERT_TRUE(Editor().SetCodepage("UTF-8"));
  EXPECT_TRUE(Editor().SetSchemaPath("schemas"));
  // Only the low 32 bits arrive.
  Editor().SetThreadId((1L << 32) + 5);
  Editor().SetThreadId((1L << 31));
  Editor().SetDPI(144);
  EXPECT_FALSE(Editor().NeedsRerendering());
  Editor().SetNeedsRerendering(true);
  EXPECT_TRUE(Editor().NeedsRerendering());
  Editor().RenderPMMLAtLocation(1, 2, 3, 4, "m", "d");
  EXPECT_EQ(Calls(), "schema schemas;thread 5;thread -2147483648;dpi 144;render 1 2 3 4 m d;");
  EXPECT_EQ(Editor().ExtractCompressedPMML(), std::string("\x1F\x8B\0\1", 4));
  ASSERT_TRUE(Editor().RenderToFile("m", "d", PathTo("out"), kSvg, true));
  EXPECT_EQ(ReadFile(PathTo("out")), "renderToFile m d 5 true");
  EXPECT_FALSE(Editor().RenderToFile("false", "d", PathTo("out"), kSvg, true));
  EXPECT_TRUE(Editor().RenderToFileHeadless("m", "d", PathTo("out"), kSvg, false));
  EXPECT_EQ(ReadFile(PathTo("out")), "renderToFile m d 5 false 100 schemas");
  EXPECT_EQ(Dump(), "");
}

TEST_F(TreeEditorOnJvm, SizesCloseAndStart) {
  long width = 0;
  long height = 0;
  EXPECT_TRUE(Editor().GetSize(width, height));
  EXPECT_EQ(width, 300);
  EXPECT_EQ(height, 200);
  // Measuring deactivates first.
  EXPECT_TRUE(Editor().CalculateSize("m", "", width, height));
  EXPECT_FALSE(Editor().CalculateSize("flat", "", width, height));
  EXPECT_EQ(width, 120);
  EXPECT_EQ(height, 0);
  Editor().Close();
  EXPECT_TRUE(Editor().IsStarted());
  EXPECT_TRUE(Editor().GetSize(width, height));
  EXPECT_EQ(Calls(), "size;deActivate;calculate m;deActivate;calculate flat;close;size;");
  // A second start keeps the object with its calls.
  EXPECT_TRUE(Editor().StartEditor(nullptr, "UTF-8", "schemas"));
  EXPECT_EQ(Calls(), "size;deActivate;calculate m;deActivate;calculate flat;close;size;");
  EXPECT_EQ(Dump(), "");
}

TEST_F(TreeEditorOnJvm, NullDisplayDataAreEmpty) {
  Editor().RenderPMMLAtLocation(0, 0, 1, 1, "null", "");
  EXPECT_EQ(Editor().ExtractDisplayData(), "");
  EXPECT_EQ(Dump(), "");
}

// Each wrong call that goes on with the null result leaves a record of its own.
TEST_F(TreeEditorOnJvm, NullCompressedModelIsEmptyAndRecorded) {
  Editor().RenderPMMLAtLocation(0, 0, 1, 1, "null", "");
  EXPECT_EQ(Editor().ExtractCompressedPMML(), "");
  EXPECT_EQ(Records(), 3U) << Dump();
  EXPECT_NE(Dump().find("JNI GetArrayLength: the array or string is null"), std::string::npos);
  EXPECT_NE(Dump().find("JNI GetByteArrayElements: the array is null"), std::string::npos);
  EXPECT_NE(Dump().find("JNI ReleaseByteArrayElements: the array is null"), std::string::npos);
}

TEST_F(TreeEditorOnJvm, NullSizesAreFalseAndRecorded) {
  long width = 7;
  long height = 7;
  EXPECT_FALSE(Editor().CalculateSize("null", "", width, height));
  ExpectOneRecord("JNI GetArrayLength: the array or string is null");
  Editor().RenderPMMLAtLocation(0, 0, 1, 1, "null", "");
  EXPECT_FALSE(Editor().GetSize(width, height));
  EXPECT_EQ(Records(), 2U) << Dump();
  EXPECT_EQ(width, 7);
  EXPECT_EQ(height, 7);
}

TEST_F(TreeEditorOnJvm, ShowingThatThrows) {
  Editor().RenderPMMLAtLocation(0, 0, 1, 1, "throw", "");
  ExpectRecordOfTheException();
  EXPECT_EQ(Editor().ExtractDisplayData(), "");
  EXPECT_EQ(Records(), 2U) << Dump();
}

TEST_F(TreeEditorOnJvm, RenderToFileThatThrows) {
  EXPECT_FALSE(Editor().RenderToFile("throw", "", PathTo("out"), kSvg, false));
  ExpectRecordOfTheException();
}

TEST_F(TreeEditorOnJvm, SizesThatThrow) {
  long width = 7;
  long height = 7;
  EXPECT_FALSE(Editor().CalculateSize("throw", "", width, height));
  EXPECT_NE(Dump().find("IllegalStateException: the tree says so"), std::string::npos) << Dump();
  EXPECT_EQ(width, 7);
}

TEST_F(TreeEditorOnJvm, ManyThreadsGetTheirOwn) {
  constexpr int kThreads = 8;
  constexpr int kTimes = 50;
  std::atomic<int> good{0};
  std::vector<std::thread> threads;
  for (int number = 0; number < kThreads; ++number) {
    threads.emplace_back([&good, number] {
      const std::string model = "m" + std::to_string(number);
      for (int i = 0; i < kTimes; ++i) {
        const LocalFrame frame;
        unsigned int size = 0;
        std::string image;
        Sizes sizes;
        Images images;
        std::vector<std::string> files;
        long width = 0;
        long height = 0;
        bool done = Editor().RenderImageToMemoryHeadless(model, "", "", size, kSvg, false, image);
        done = done && image == "renderToMemory " + model + "  5 100";
        done = done && ToMemory(model, sizes, images) &&
               images["call"] == model + " display style samples title 5 3";
        done = done && ToFiles(model, files) && files.size() == 3;
        done = done && Editor().CalculateSize(model, "", width, height) && width == 300;
        good += done && Editor().GetSize(width, height) ? 1 : 0;
      }
      DetachCurrentThread();
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(good.load(), kThreads * kTimes);
  EXPECT_EQ(Dump(), "");
}

}  // namespace
}  // namespace chartbridge
