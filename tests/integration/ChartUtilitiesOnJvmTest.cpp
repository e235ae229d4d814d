// SPDX-License-Identifier: Apache-2.0
// What the chart editor and the template converter do besides drawing: the library, the reference
// host, the guard and the reference Java classes together, and what a host sees when Java fails.
#include <gtest/gtest.h>

#include <cfenv>
#include <cstdlib>
#include <fstream>
#include <memory>
#include <string>
#include <vector>

#include "chart/ViZEditor.h"
#include "convert/graphBoardConverter.h"
#include "host/DebugOutput.h"
#include "host/JvmSettings.h"
#include "host/LocalFrame.h"
#include "platform/TeskJVM.h"
#include "tests/integration/ReadFile.h"
#include "tests/integration/TempFolder.h"

namespace chartbridge {
namespace {

const std::string kChart = "title \"Waits\"\ndraw line: x waiting, y count\n";
const std::string kData = "waiting\n54\n62\n54\n71\n";
const std::string kSheetStart =
    "<xsl:stylesheet version='1.0' xmlns:xsl='http://www.w3.org/1999/XSL/Transform' "
    "xmlns:c='urn:chartbridge:chart:2'>";
const std::string kTitleSheet = kSheetStart +
                                "<xsl:output method='text'/><xsl:template match='/'>"
                                "<xsl:value-of select='//c:titles/@title'/>"
                                "</xsl:template></xsl:stylesheet>";
const std::string kSilentSheet =
    kSheetStart + "<xsl:output method='text'/><xsl:template match='/'/></xsl:stylesheet>";
const std::string kTemplate =
    "{\"version\":1,\"slots\":[{\"name\":\"what\",\"kind\":\"column\"}],"
    "\"chart\":{\"elements\":[{\"bar\":{\"x\":{\"column\":{\"slot\":\"what\"}}}}]}}";

class ChartUtilities : public testing::Test {
 protected:
  static void SetUpTestSuite() {
    JvmSettings settings;
    settings.classPath = {CHARTBRIDGE_TEST_RUNTIME_JAR};
    SetJvmSettings(settings);
    ASSERT_TRUE(TeskJVM::GetInstance()->StartJVM());
  }

  void SetUp() override {
    setenv("DumpChartTimePath", _dumps.Path().c_str(), 1);
    ASSERT_TRUE(ViZEditor::GetInstance()->StartEditorHeadless(TeskJVM::GetInstance()->GetEnv()));
    _frame = std::make_unique<LocalFrame>();
    ASSERT_EQ(std::fesetround(FE_UPWARD), 0);
  }

  void TearDown() override {
    EXPECT_EQ(std::fegetround(), FE_UPWARD) << "the caller's rounding mode was changed";
    std::fesetround(FE_TONEAREST);
    _frame.reset();
    ViZEditor::GetInstance()->StopHeadless();
    unsetenv("DumpChartTimePath");
  }

  /// What Java has thrown, as a host finds it afterwards.
  std::string Dump() const { return ReadFolder(_dumps.Path()); }

  void ExpectNothingThrown() const { EXPECT_EQ(Dump(), ""); }
  void ExpectThrown(const std::string& message) const {
    const std::string dump = Dump();
    EXPECT_NE(dump.find(message), std::string::npos) << dump;
  }

  std::string Embed(std::vector<double> numbers, unsigned count, const std::string& look) const {
    return ViZEditor::GetInstance()->EmbedHistogramInGraph(
        kChart, look, reinterpret_cast<unsigned char*>(numbers.data()),
        numbers.size() * sizeof(double), count);
  }

  std::string Picture(const std::string& chart, ViZEditor::IMAGE_TYPE type) const {
    std::string picture;
    std::string html;
    std::string json;
    ViZEditor::GetInstance()->RenderImageToMemoryHeadless(
        chart, reinterpret_cast<const unsigned char*>(kData.data()), kData.size(), type, 100,
        picture, html, json, "", "", "", "", false);
    return picture;
  }

  const TempFolder _dumps;
  std::unique_ptr<LocalFrame> _frame;
};

TEST_F(ChartUtilities, HistogramOfTheHostsNumbersIsPartOfTheChart) {
  const std::string chart = Embed({50, 60, 70, 80.5, 2, 0.5, 1}, 3, "");
  EXPECT_NE(chart.find("<bin from=\"70\" to=\"80.5\" value=\"1\"/>"), std::string::npos) << chart;
  EXPECT_LT(chart.find("<histogram"), chart.find("<line")) << "the histogram is the bottom layer";
  const std::string svg = Picture(chart, ViZEditor::IMAGE_SVG);
  EXPECT_NE(svg, "");
  EXPECT_NE(svg, Picture(kChart, ViZEditor::IMAGE_SVG));
  ExpectNothingThrown();
}

TEST_F(ChartUtilities, HistogramLooksAsTheHostAsks) {
  const std::string chart =
      Embed({0, 1, 2}, 1, "<histogram xmlns='urn:chartbridge:chart:2' fill='#123456'/>");
  EXPECT_NE(chart.find("<histogram fill=\"#123456\" opacity=\"0.5\">"), std::string::npos) << chart;
}

TEST_F(ChartUtilities, HistogramThatDoesNotFitGivesNothing) {
  EXPECT_EQ(Embed({0, 1, 2}, 2, ""), "");
  ExpectThrown("The buffer of the histogram has 24 bytes; 2 bins take 40");
  EXPECT_EQ(Embed({1, 0, 2}, 1, ""), "");
  ExpectThrown("Edge 2 of the histogram is 0.0, which is not above edge 1, 1.0");
  EXPECT_EQ(Embed({0, 1, 2}, 0, ""), "");
  ExpectThrown("The histogram has 0 bins");
  EXPECT_NE(Embed({0, 1, 2}, 1, ""), "") << "the editor works on after failures";
}

TEST_F(ChartUtilities, PictureBecomesOneOfAnotherType) {
  const TempFolder folder;
  const std::string path = folder.Path() + "/p\xC3\xA4int.gif";
  ViZEditor* editor = ViZEditor::GetInstance();
  EXPECT_TRUE(
      editor->ConvertImage(Picture(kChart, ViZEditor::IMAGE_PNG), path, ViZEditor::IMAGE_GIF));
  EXPECT_EQ(ReadFile(path).substr(0, 4), "GIF8");
  EXPECT_TRUE(
      editor->ConvertImage(Picture(kChart, ViZEditor::IMAGE_SVG), path, ViZEditor::IMAGE_PNG));
  EXPECT_EQ(ReadFile(path).substr(1, 3), "PNG");
  ExpectNothingThrown();
}

TEST_F(ChartUtilities, PictureThatCannotBeReadLeavesTheFileAlone) {
  const TempFolder folder;
  const std::string path = folder.Path() + "/old.png";
  std::ofstream(path) << "old";
  ViZEditor* editor = ViZEditor::GetInstance();
  EXPECT_FALSE(editor->ConvertImage("no image", path, ViZEditor::IMAGE_PNG));
  ExpectThrown("The image is none of PNG, JPEG, BMP, GIF and SVG");
  EXPECT_FALSE(editor->ConvertImage("", path, ViZEditor::IMAGE_PNG));
  EXPECT_EQ(ReadFile(path), "old");
  EXPECT_FALSE(editor->ConvertImage(Picture(kChart, ViZEditor::IMAGE_PNG),
                                    folder.Path() + "/none/x.png", ViZEditor::IMAGE_PNG));
  ExpectThrown("does not exist");
}

TEST_F(ChartUtilities, StyleSheetReplacesTheDocument) {
  std::string document = kChart;
  EXPECT_TRUE(ViZEditor::GetInstance()->ApplyStyleSheet(document, kTitleSheet));
  EXPECT_EQ(document, "Waits");
  ExpectNothingThrown();
}

TEST_F(ChartUtilities, StyleSheetThatPutsOutNothingEmptiesTheDocument) {
  std::string document = kChart;
  EXPECT_FALSE(ViZEditor::GetInstance()->ApplyStyleSheet(document, kSilentSheet));
  EXPECT_EQ(document, "");
  ExpectNothingThrown();
}

TEST_F(ChartUtilities, StyleSheetThatFailsIsToldInTheDump) {
  std::string printed;
  SetDebugOutput([&printed](const std::string& text) { printed += text; });
  std::string document = kChart;
  EXPECT_FALSE(ViZEditor::GetInstance()->ApplyStyleSheet(document, kSheetStart + "<oops/>"));
  SetDebugOutput(nullptr);
  ExpectThrown("The style sheet: line 1, column ");
  EXPECT_EQ(printed, "") << "no native exception has passed";
  EXPECT_TRUE(ViZEditor::GetInstance()->ApplyStyleSheet(document = kChart, kTitleSheet));
}

TEST_F(ChartUtilities, ClientTemplateBecomesAChart) {
  graphBoardConverter* converter = graphBoardConverter::GetInstance();
  const std::string chart =
      converter->ConvertClientViZTemplate(kTemplate + "{\"what\":\"waiting\"}");
  EXPECT_NE(chart.find("<x column=\"waiting\"/>"), std::string::npos) << chart;
  EXPECT_NE(Picture(chart, ViZEditor::IMAGE_PNG), "");
  ExpectNothingThrown();
}

TEST_F(ChartUtilities, ClientTemplateThatFailsGivesNothing) {
  graphBoardConverter* converter = graphBoardConverter::GetInstance();
  EXPECT_EQ(converter->ConvertClientViZTemplate(kTemplate), "");
  ExpectThrown("slot \"what\" has no value; expected the name of a column");
  EXPECT_EQ(converter->ConvertClientViZTemplate(""), "");
  ExpectThrown("The template is empty.");
  EXPECT_NE(converter->ConvertClientViZTemplate(kTemplate + "{\"what\":\"waiting\"}"), "");
}

TEST_F(ChartUtilities, ConverterAppliesStyleSheetsInTheOrderOfItsArguments) {
  graphBoardConverter* converter = graphBoardConverter::GetInstance();
  EXPECT_EQ(converter->applyStyleSheet(kChart, kTitleSheet), "Waits");
  EXPECT_EQ(converter->applyStyleSheet(kChart, kSilentSheet), "");
  ExpectNothingThrown();
  EXPECT_EQ(converter->applyStyleSheet(kTitleSheet, kChart), "");
  ExpectThrown("The style sheet: ");
}

TEST_F(ChartUtilities, ConversionsGoOnForLong) {
  graphBoardConverter* converter = graphBoardConverter::GetInstance();
  for (int i = 0; i < 50; ++i) {
    const LocalFrame frame;
    ASSERT_NE(converter->ConvertClientViZTemplate(kTemplate + "{\"what\":\"waiting\"}"), "");
    ASSERT_EQ(converter->applyStyleSheet(kChart, kTitleSheet), "Waits");
    ASSERT_NE(Embed({0, 1, 2}, 1, ""), "");
  }
  ExpectNothingThrown();
}

}  // namespace
}  // namespace chartbridge
