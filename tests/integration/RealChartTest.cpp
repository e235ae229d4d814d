// SPDX-License-Identifier: Apache-2.0
// From a chart in the graph language and its data to pictures: the library, the reference host, the
// guard and the reference Java classes together.
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <string>
#include <thread>

#include "chart/ViZEditor.h"
#include "convert/VizConverter.h"
#include "guard/jniguard.h"
#include "host/JvmSettings.h"
#include "host/JvmThreads.h"
#include "host/LocalFrame.h"
#include "platform/TeskJVM.h"
#include "tests/integration/ReadFile.h"
#include "tests/integration/TempFolder.h"

namespace chartbridge {
namespace {

constexpr char kExamples[] = CHARTBRIDGE_TEST_EXAMPLES;
constexpr char kPngStart[] = "\x89PNG\r\n\x1A\n";

unsigned BigEndian(const std::string& bytes, std::size_t at) {
  unsigned value = 0;
  for (std::size_t i = 0; i < 4; ++i) {
    value = value << 8U | static_cast<unsigned char>(bytes.at(at + i));
  }
  return value;
}

// Width and height stand in the first chunk of a PNG.
std::string SizeOfPng(const std::string& png) {
  if (png.compare(0, 8, kPngStart, 8) != 0 || png.size() < 24) return "no PNG";
  return std::to_string(BigEndian(png, 16)) + " by " + std::to_string(BigEndian(png, 20));
}

class RealChart : public testing::Test {
 protected:
  static void SetUpTestSuite() {
    JvmSettings settings;
    settings.classPath = {CHARTBRIDGE_TEST_RUNTIME_JAR};
    SetJvmSettings(settings);
    ASSERT_TRUE(TeskJVM::GetInstance()->StartJVM());
  }

  void SetUp() override {
    setenv("DumpChartTimePath", _dumps.Path().c_str(), 1);
    JNIEnv* env = TeskJVM::GetInstance()->GetEnv();
    ASSERT_TRUE(VizConverter::GetInstance()->StartConverter(env));
    ASSERT_TRUE(ViZEditor::GetInstance()->StartEditorHeadless(env));
    const std::string source = ReadFile(std::string(kExamples) + "/charts/cars.gpl");
    ASSERT_FALSE(source.empty());
    ASSERT_TRUE(VizConverter::GetInstance()->GPLtoXML(source, _chart))
        << VizConverter::GetInstance()->GetErrorMessage();
    _data = ReadFile(std::string(kExamples) + "/data/cars.csv");
    ASSERT_FALSE(_data.empty());
  }

  void TearDown() override {
    ViZEditor::GetInstance()->StopHeadless();
    VizConverter::GetInstance()->Stop();
    unsetenv("DumpChartTimePath");
  }

  std::string Dump() const { return ReadFolder(_dumps.Path()); }

  const unsigned char* Data() const { return reinterpret_cast<const unsigned char*>(_data.data()); }

  bool ToFile(const std::string& path, ViZEditor::IMAGE_TYPE type, double size) const {
    const LocalFrame frame;
    return ViZEditor::GetInstance()->RenderToFileHeadless(_chart, Data(), _data.size(), path, type,
                                                          size, "", "", "", "", false);
  }

  std::string _chart;
  std::string _data;
  TempFolder _files;

 private:
  TempFolder _dumps;
};

TEST_F(RealChart, BecomesPngFile) {
  const std::string path = _files.Path() + "/cars.png";
  ASSERT_TRUE(ToFile(path, ViZEditor::IMAGE_PNG, 100)) << Dump();
  EXPECT_EQ(SizeOfPng(ReadFile(path)), "760 by 520");
  ASSERT_TRUE(ToFile(path, ViZEditor::IMAGE_PNG, 200)) << Dump();
  EXPECT_EQ(SizeOfPng(ReadFile(path)), "1520 by 1040");
  EXPECT_EQ(Dump(), "");
}

TEST_F(RealChart, BecomesPngInMemory) {
  const unsigned long long before = jniguard_count(JNIGUARD_BYTE_ARRAY_WRAPPED);
  std::string picture;
  unsigned int size = 0;
  ASSERT_TRUE(ViZEditor::GetInstance()->RenderImageToMemoryHeadless(
      _chart, _data, size, ViZEditor::IMAGE_PNG, 100, "", "", "", "", picture))
      << Dump();
  EXPECT_EQ(SizeOfPng(picture), "760 by 520");
  EXPECT_EQ(jniguard_count(JNIGUARD_BYTE_ARRAY_WRAPPED), before + 1);
  EXPECT_EQ(Dump(), "");
}

TEST_F(RealChart, BecomesImageMap) {
  std::string picture;
  std::string map;
  std::string json;
  ASSERT_TRUE(ViZEditor::GetInstance()->RenderImageToMemoryHeadless(
      _chart, Data(), _data.size(), ViZEditor::IMAGE_MAP, 100, picture, map, json, "", "", "", "",
      false))
      << Dump();
  EXPECT_EQ(SizeOfPng(picture), "760 by 520");
  EXPECT_NE(map.find("<area "), std::string::npos);
  EXPECT_EQ(json.substr(0, 1), "{");
  EXPECT_EQ(Dump(), "");
}

TEST_F(RealChart, BecomesFilesOfEveryType) {
  const struct {
    ViZEditor::IMAGE_TYPE type;
    std::string start;
  } kinds[] = {{ViZEditor::IMAGE_JPEG, "\xFF\xD8\xFF"},
               {ViZEditor::IMAGE_BMP, "BM"},
               {ViZEditor::IMAGE_GIF, "GIF8"},
               {ViZEditor::IMAGE_SVG, "<?xml"},
               {ViZEditor::IMAGE_PDF, "%PDF-"}};
  for (const auto& kind : kinds) {
    const std::string path = _files.Path() + "/picture" + std::to_string(kind.type);
    EXPECT_TRUE(ToFile(path, kind.type, 100)) << Dump();
    EXPECT_EQ(ReadFile(path).substr(0, kind.start.size()), kind.start);
  }
  EXPECT_EQ(Dump(), "");
}

TEST_F(RealChart, BecomesTheSameFromAnotherThread) {
  const std::string here = _files.Path() + "/here.png";
  const std::string there = _files.Path() + "/there.png";
  ASSERT_TRUE(ToFile(here, ViZEditor::IMAGE_PNG, 100)) << Dump();
  std::thread([&] {
    EXPECT_TRUE(ToFile(there, ViZEditor::IMAGE_PNG, 100)) << Dump();
    DetachCurrentThread();
  }).join();
  EXPECT_EQ(ReadFile(here), ReadFile(there));
}

TEST_F(RealChart, SaysWhatIsWrongWithTheData) {
  _data = "model,cylinders\nA,4\n";
  EXPECT_FALSE(ToFile(_files.Path() + "/none.png", ViZEditor::IMAGE_PNG, 100));
  EXPECT_NE(Dump().find("miles_per_gallon"), std::string::npos) << Dump();
  EXPECT_FALSE(std::filesystem::exists(_files.Path() + "/none.png"));
}

// Nothing that the Java classes or the JDK's own native code do is caught by the guard.
TEST_F(RealChart, NeedsTheGuardForNothingElse) {
  unsigned long long before[JNIGUARD_KINDS];
  unsigned long long after[JNIGUARD_KINDS];
  jniguard_counts(before, JNIGUARD_KINDS);
  ASSERT_TRUE(ToFile(_files.Path() + "/cars.png", ViZEditor::IMAGE_PNG, 100)) << Dump();
  jniguard_counts(after, JNIGUARD_KINDS);
  for (int kind = 0; kind < JNIGUARD_KINDS; ++kind) {
    EXPECT_EQ(after[kind], before[kind]) << jniguard_kind_name(kind);
  }
}

}  // namespace
}  // namespace chartbridge
