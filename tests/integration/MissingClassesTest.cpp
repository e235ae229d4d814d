// SPDX-License-Identifier: Apache-2.0
// The library on a real JVM that has none of the Java classes: operations fail, the process goes
// on.
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "chart/ViZEditor.h"
#include "convert/VizConverter.h"
#include "host/JvmSettings.h"
#include "platform/TeskJVM.h"
#include "tests/integration/TempFolder.h"

namespace chartbridge {
namespace {

class MissingClasses : public testing::Test {
 protected:
  void SetUp() override {
    JvmSettings settings;
    SetJvmSettings(settings);
    ASSERT_TRUE(TeskJVM::GetInstance()->StartJVM());
    setenv("DumpChartTimePath", _dumps.Path().c_str(), 1);
  }

  std::string Dump() const {
    std::string text;
    for (const auto& entry : std::filesystem::directory_iterator(_dumps.Path())) {
      std::ifstream file(entry.path());
      text += std::string(std::istreambuf_iterator<char>(file), {});
    }
    return text;
  }

 private:
  TempFolder _dumps;
};

TEST_F(MissingClasses, ConverterSaysNo) {
  VizConverter& converter = *VizConverter::GetInstance();
  EXPECT_TRUE(converter.StartConverter(TeskJVM::GetInstance()->GetEnv()));
  EXPECT_NE(Dump().find("java.lang.NoClassDefFoundError: com/tesk/vizconverter/VizConverter"),
            std::string::npos)
      << Dump();
  EXPECT_NE(Dump().find("JNI NewObject: the class is null"), std::string::npos) << Dump();
  std::string xml = "old";
  EXPECT_FALSE(converter.GPLtoXML("a", xml));
  EXPECT_EQ(xml, "old");
  EXPECT_NE(Dump().find("JNI CallObjectMethod: the object is null"), std::string::npos) << Dump();
  EXPECT_EQ(converter.GetErrorMessage(), "");
  converter.Stop();
}

TEST_F(MissingClasses, EditorSaysNo) {
  ViZEditor& editor = *ViZEditor::GetInstance();
  EXPECT_TRUE(editor.StartEditorHeadless(TeskJVM::GetInstance()->GetEnv()));
  const std::string data = "data";
  const auto* bytes = reinterpret_cast<const unsigned char*>(data.data());
  EXPECT_FALSE(editor.RenderToFileHeadless("chart", bytes, data.size(), "/no/such/folder/file",
                                           ViZEditor::IMAGE_PNG, 100.0, "", "", "", "", true));
  unsigned int size = 0;
  std::string picture;
  EXPECT_FALSE(editor.RenderImageToMemoryHeadless("chart", data, size, ViZEditor::IMAGE_PNG, 100.0,
                                                  "", "", "", "", picture));
  std::string map;
  std::string json;
  EXPECT_FALSE(editor.RenderImageToMemoryHeadless("chart", bytes, data.size(), ViZEditor::IMAGE_MAP,
                                                  100.0, picture, map, json, "", "", "", "", true));
  EXPECT_EQ(picture + map + json, "");
  EXPECT_NE(Dump().find("java.lang.NoClassDefFoundError: com/tesk/charteditor/ChartImager"),
            std::string::npos)
      << Dump();
  editor.StopHeadless();
}

}  // namespace
}  // namespace chartbridge
