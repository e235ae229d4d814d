// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <nlohmann/json.hpp>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "tests/app/Samples.h"

namespace chartbridge {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

const std::string kPngSignature = "\x89PNG\r\n\x1a\n";

std::uint32_t BigEndian(const std::string& bytes, std::size_t offset) {
  std::uint32_t value = 0;
  for (std::size_t i = 0; i < 4; ++i) {
    value = value << 8 | static_cast<unsigned char>(bytes.at(offset + i));
  }
  return value;
}

/// Width and height of a PNG file, from its header.
std::pair<std::uint32_t, std::uint32_t> SizeOfPng(const std::string& png) {
  if (png.rfind(kPngSignature, 0) != 0) return {0, 0};
  return {BigEndian(png, 16), BigEndian(png, 20)};
}

/// The colour of the lower left corner of a BMP file: blue, green, red.
std::string CornerOfBmp(const std::string& bmp) {
  const std::size_t pixels = static_cast<unsigned char>(bmp.at(10));
  return bmp.substr(pixels, 3);
}

void ExpectDone(const RunResult& result) {
  EXPECT_EQ(result.exitCode, 0);
  EXPECT_EQ(result.errors, "");
}

std::string TextOfSvg(const SampleFolder& folder, const std::vector<std::string>& options) {
  std::vector<std::string> arguments = {"-o", "-", "-t", "svg"};
  arguments.insert(arguments.end(), options.begin(), options.end());
  const RunResult result = folder.Render(arguments);
  ExpectDone(result);
  return result.output;
}

TEST(RenderTest, WritesThePictureAndNothingElse) {
  const SampleFolder folder;
  const RunResult result = folder.Render({"-o", "sales.png"});
  ExpectDone(result);
  EXPECT_EQ(result.output, "");
  EXPECT_EQ(SizeOfPng(folder.Read("sales.png")), std::make_pair(800U, 600U));
  EXPECT_THAT(folder.NewNames(), ElementsAre("sales.png"));
}

TEST(RenderTest, ChartXmlGivesTheSamePictureAsGraphLanguage) {
  const SampleFolder folder;
  ExpectDone(folder.Render({"-o", "a.png"}));
  ExpectDone(folder.Run({"render", "sales.xml", "--data", "sales.csv", "--output", "b.png"}));
  EXPECT_EQ(folder.Read("a.png"), folder.Read("b.png"));
}

TEST(RenderTest, ReplacesAnOldPicture) {
  const SampleFolder folder;
  folder.Write("sales.png", "old");
  ExpectDone(folder.Render({"-o", "sales.png"}));
  EXPECT_THAT(folder.Read("sales.png"), StartsWith(kPngSignature));
}

TEST(RenderTest, DifferentDataGiveADifferentPicture) {
  const SampleFolder folder;
  ExpectDone(folder.Render({"-o", "a.png"}));
  folder.Write("sales.csv", kData + "West,Tea,3000\n");
  ExpectDone(folder.Render({"-o", "b.png"}));
  EXPECT_NE(folder.Read("a.png"), folder.Read("b.png"));
}

TEST(RenderTest, FormatGoesByTheEnding) {
  const SampleFolder folder;
  const std::vector<std::pair<std::string, std::string>> signatures = {
      {"a.png", kPngSignature}, {"a.jpg", "\xFF\xD8\xFF"}, {"a.JPEG", "\xFF\xD8\xFF"},
      {"a.bmp", "BM"},          {"a.gif", "GIF8"},         {"a.svg", "<?xml"},
      {"a.pdf", "%PDF-1."}};
  for (const auto& [name, signature] : signatures) {
    ExpectDone(folder.Render({"-o", name}));
    EXPECT_THAT(folder.Read(name), StartsWith(signature)) << name;
  }
}

TEST(RenderTest, TypeOverridesTheEnding) {
  const SampleFolder folder;
  ExpectDone(folder.Render({"-o", "picture.png", "--type", "GIF"}));
  EXPECT_THAT(folder.Read("picture.png"), StartsWith("GIF8"));
  ExpectDone(folder.Render({"-o", "picture", "-t", "bmp"}));
  EXPECT_THAT(folder.Read("picture"), StartsWith("BM"));
}

TEST(RenderTest, SvgIsWellFormedAndHoldsRealText) {
  const SampleFolder folder;
  ExpectDone(folder.Render({"-o", "a.svg"}));
  EXPECT_EQ(RunProgram({"xmllint", "--noout", "--nonet", folder.File("a.svg")}).exitCode, 0);
  for (const char* text : {">Sales<", ">North<", ">South<", ">Coffee<"}) {
    EXPECT_THAT(folder.Read("a.svg"), HasSubstr(text));
  }
}

TEST(RenderTest, PdfEmbedsItsFontsAndHoldsRealText) {
  const SampleFolder folder;
  ExpectDone(folder.Render({"-o", "a.pdf"}));
  const RunResult fonts = RunProgram({"pdffonts", folder.File("a.pdf")});
  ASSERT_EQ(fonts.exitCode, 0);
  // Two lines of heading, then one for each font: name, type, encoding, emb, sub, uni, object ID.
  std::istringstream lines(fonts.output);
  std::string line;
  std::getline(lines, line);
  const std::size_t embedded = line.find("emb");
  ASSERT_NE(embedded, std::string::npos);
  std::getline(lines, line);
  int count = 0;
  while (std::getline(lines, line)) {
    EXPECT_EQ(line.substr(embedded, 3), "yes") << line;
    ++count;
  }
  EXPECT_GE(count, 1);
  const RunResult text = RunProgram({"pdftotext", folder.File("a.pdf"), "-"});
  EXPECT_THAT(text.output, HasSubstr("Sales"));
  EXPECT_THAT(text.output, HasSubstr("North"));
}

TEST(RenderTest, SizeIsAPercentage) {
  const SampleFolder folder;
  ExpectDone(folder.Render({"-o", "a.png", "--size", "200"}));
  EXPECT_EQ(SizeOfPng(folder.Read("a.png")), std::make_pair(1600U, 1200U));
  ExpectDone(folder.Render({"-o", "a.png", "-s", "37.5"}));
  EXPECT_EQ(SizeOfPng(folder.Read("a.png")), std::make_pair(300U, 225U));
}

TEST(RenderTest, LocaleIsThatOfTheNumbers) {
  const SampleFolder folder;
  EXPECT_THAT(TextOfSvg(folder, {}), HasSubstr(">2,000<"));
  EXPECT_THAT(TextOfSvg(folder, {"--locale", "de-DE"}), HasSubstr(">2.000<"));
}

TEST(RenderTest, LocaleOfTheUserDoesNotShiftDecimalPoints) {
  const SampleFolder folder;
  RunSettings settings;
  settings.environment["LC_ALL"] = "de_DE.UTF-8";
  ExpectDone(folder.Render({"-o", "a.png", "-s", "37.5"}, settings));
  EXPECT_EQ(SizeOfPng(folder.Read("a.png")), std::make_pair(300U, 225U));
}

TEST(RenderTest, TextsAreReplaced) {
  const SampleFolder folder;
  folder.Write("de.properties", "Sales=Umsätze\nNorth=unused\n");
  const std::string svg = TextOfSvg(folder, {"--texts", "de.properties"});
  EXPECT_THAT(svg, HasSubstr(">Umsätze<"));
  EXPECT_THAT(svg, Not(HasSubstr(">Sales<")));
}

TEST(RenderTest, StyleChangesThePicture) {
  const SampleFolder folder;
  const std::string print = TextOfSvg(folder, {});
  const std::string dark = TextOfSvg(folder, {"--style", "dark"});
  EXPECT_NE(print, dark);
  EXPECT_EQ(print, TextOfSvg(folder, {"--style", "print"}));
}

TEST(RenderTest, StyleFileChangesSingleSettings) {
  const SampleFolder folder;
  folder.Write("warm.xml",
               "<style xmlns=\"urn:chartbridge:style:1\"><colors background=\"#fdf6e3\"/></style>");
  ExpectDone(folder.Render({"-o", "white.bmp"}));
  ExpectDone(folder.Render({"-o", "warm.bmp", "--style-file", "warm.xml"}));
  EXPECT_EQ(CornerOfBmp(folder.Read("white.bmp")), "\xFF\xFF\xFF");
  EXPECT_EQ(CornerOfBmp(folder.Read("warm.bmp")), "\xE3\xF6\xFD");
}

TEST(RenderTest, MapComesWithPageAndMarks) {
  const SampleFolder folder;
  ExpectDone(folder.Render({"-o", "sales.png", "--map"}));
  EXPECT_THAT(folder.NewNames(), ElementsAre("sales.html", "sales.json", "sales.png"));
  EXPECT_EQ(SizeOfPng(folder.Read("sales.png")), std::make_pair(800U, 600U));

  const std::string page = folder.Read("sales.html");
  EXPECT_THAT(page, HasSubstr("sales.png"));
  std::size_t areas = 0;
  for (std::size_t at = page.find("<area "); at != std::string::npos;
       at = page.find("<area ", at + 1)) {
    ++areas;
  }
  EXPECT_EQ(areas, 4U);
  EXPECT_THAT(page, HasSubstr("Coffee"));

  const auto marks = nlohmann::json::parse(folder.Read("sales.json"), nullptr, false);
  ASSERT_FALSE(marks.is_discarded());
  EXPECT_THAT(marks.dump(), HasSubstr("Coffee"));
}

TEST(RenderTest, StandardOutputTakesAPngUnlessToldOtherwise) {
  const SampleFolder folder;
  const RunResult png = folder.Render({"-o", "-"});
  ExpectDone(png);
  EXPECT_EQ(SizeOfPng(png.output), std::make_pair(800U, 600U));
  const RunResult gif = folder.Render({"-o", "-", "--type", "gif"});
  ExpectDone(gif);
  EXPECT_THAT(gif.output, StartsWith("GIF8"));
  EXPECT_THAT(folder.NewNames(), IsEmpty());
}

TEST(RenderTest, PictureOnStandardOutputIsThatOfTheFile) {
  const SampleFolder folder;
  ExpectDone(folder.Render({"-o", "a.png"}));
  EXPECT_EQ(folder.Render({"-o", "-"}).output, folder.Read("a.png"));
}

TEST(RenderTest, StandardInputGivesTheDataOrTheChart) {
  const SampleFolder folder;
  ExpectDone(folder.Render({"-o", "a.png"}));
  RunSettings data;
  data.input = kData;
  ExpectDone(folder.Run({"render", "sales.gpl", "-d", "-", "-o", "b.png"}, data));
  RunSettings chart;
  chart.input = kChart;
  ExpectDone(folder.Run({"render", "-", "-d", "sales.csv", "-o", "c.png"}, chart));
  EXPECT_EQ(folder.Read("a.png"), folder.Read("b.png"));
  EXPECT_EQ(folder.Read("a.png"), folder.Read("c.png"));
}

TEST(RenderTest, DeviceTakesThePicture) {
  const SampleFolder folder;
  ExpectDone(folder.Render({"-o", "/dev/null", "--type", "png"}));
  EXPECT_EQ(RunProgram({"test", "-c", "/dev/null"}).exitCode, 0);
}

TEST(RenderTest, WorksWithoutTheGuard) {
  const SampleFolder folder;
  ExpectDone(folder.Render({"-o", "a.png", "--no-guard"}));
  EXPECT_THAT(folder.Read("a.png"), StartsWith(kPngSignature));
}

TEST(RenderTest, LeavesNothingInTheTemporaryFolder) {
  const SampleFolder folder;
  const WorkFolder temporary;
  RunSettings settings;
  settings.environment["TMPDIR"] = temporary.Path();
  settings.environment["DumpChartTimePath"] = kUnset;
  ExpectDone(folder.Render({"-o", "a.png"}, settings));
  folder.Write("sales.gpl", "draw nothing");
  EXPECT_EQ(folder.Render({"-o", "b.png"}, settings).exitCode, 1);
  EXPECT_THAT(temporary.Names(), IsEmpty());
}

}  // namespace
}  // namespace chartbridge
