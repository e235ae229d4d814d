// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/app/Samples.h"

namespace chartbridge {
namespace {

using testing::ElementsAre;
using testing::StartsWith;

const std::string kSvg =
    "<svg xmlns='http://www.w3.org/2000/svg' width='20' height='10'>"
    "<rect width='10' height='10' fill='#ff0000'/></svg>";

TEST(ConvertImageTest, EndingOfTheOutputSaysTheFormat) {
  const SampleFolder folder;
  ASSERT_EQ(folder.Render({"-o", "sales.png"}).exitCode, 0);
  folder.Write("red.svg", kSvg);
  const std::vector<std::vector<std::string>> conversions = {{"sales.png", "a.jpg", "\xFF\xD8\xFF"},
                                                             {"sales.png", "a.gif", "GIF8"},
                                                             {"sales.png", "a.bmp", "BM"},
                                                             {"red.svg", "a.png", "\x89PNG"},
                                                             {"red.svg", "a.pdf", "%PDF"}};
  for (const auto& conversion : conversions) {
    const RunResult result = folder.Run({"convert", "image", conversion[0], "-o", conversion[1]});
    EXPECT_EQ(result.exitCode, 0) << result.errors;
    EXPECT_EQ(result.output + result.errors, "");
    EXPECT_THAT(folder.Read(conversion[1]), StartsWith(conversion[2]));
  }
}

TEST(ConvertImageTest, PicturesGoThroughPipes) {
  const SampleFolder folder;
  RunSettings settings;
  settings.input = kSvg;
  EXPECT_THAT(folder.Run({"convert", "image", "-", "-o", "-"}, settings).output,
              StartsWith("\x89PNG"));
  EXPECT_THAT(folder.Run({"convert", "image", "-", "-o", "-", "--type", "gif"}, settings).output,
              StartsWith("GIF8"));
  EXPECT_THAT(folder.NewNames(), ElementsAre());
}

TEST(ConvertImageTest, TypeWinsOverTheEnding) {
  const SampleFolder folder;
  folder.Write("red.svg", kSvg);
  EXPECT_EQ(folder.Run({"convert", "image", "red.svg", "-o", "a.dat", "-t", "bmp"}).exitCode, 0);
  EXPECT_THAT(folder.Read("a.dat"), StartsWith("BM"));
}

void ExpectFailure(const std::string& content, const std::string& output,
                   const std::string& reason) {
  const SampleFolder folder;
  folder.Write("in", content);
  const RunResult result = folder.Run({"convert", "image", "in", "-o", output});
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_EQ(result.output, "");
  EXPECT_EQ(result.errors, "chartbridge: " + reason + "\n");
  EXPECT_THAT(folder.NewNames(), ElementsAre("in"));
}

TEST(ConvertImageTest, WhatCannotBeConvertedIsTold) {
  ExpectFailure("text", "a.png",
                "in: The image is none of PNG, JPEG, BMP, GIF and SVG; it begins with the bytes "
                "74 65 78 74.");
  ExpectFailure("", "a.png", "in: The image is empty.");
  ExpectFailure(kSvg, "a.svg", "in: The image is SVG already.");
  ExpectFailure("<svg xmlns='http://www.w3.org/2000/svg'><use href='b.svg#a'/></svg>", "a.png",
                "in: The SVG image: line 1, column 41: <use> refers to \"b.svg#a\"; an SVG image "
                "that is converted may refer to its own parts (#name) and to PNG, JPEG and GIF "
                "inside it (data:image/png;base64,...) only");
  ExpectFailure(kSvg, "none/a.png",
                "none/a.png: cannot write there: the folder none does not exist");
}

TEST(ConvertImageTest, FormatMustBeKnown) {
  const SampleFolder folder;
  folder.Write("red.svg", kSvg);
  const RunResult result = folder.Run({"convert", "image", "red.svg", "-o", "a.tiff"});
  EXPECT_EQ(result.exitCode, 2);
  EXPECT_THAT(result.errors, StartsWith("chartbridge: a.tiff: the ending is none of png"));
}

}  // namespace
}  // namespace chartbridge
