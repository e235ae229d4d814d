// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "tests/app/Samples.h"

namespace chartbridge {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

const std::string kStart =
    "<xsl:stylesheet version='1.0' xmlns:xsl='http://www.w3.org/1999/XSL/Transform' "
    "xmlns:c='urn:chartbridge:chart:2'>\n";
const std::string kCount = kStart +
                           "<xsl:output method='text'/><xsl:template match='/'>"
                           "<xsl:value-of select='count(//c:bar)'/></xsl:template>"
                           "</xsl:stylesheet>";

TEST(ConvertStyleTest, StyleSheetTurnsAChartIntoAVariantThatRenders) {
  const SampleFolder folder;
  const std::string sheet = std::string(CHARTBRIDGE_EXAMPLES) + "/style-sheets/dark.xsl";
  const RunResult result =
      folder.Run({"convert", "style", "sales.gpl", "--sheet", sheet, "-o", "dark.xml"});
  EXPECT_EQ(result.exitCode, 0) << result.errors;
  EXPECT_EQ(result.output + result.errors, "");
  EXPECT_THAT(folder.Read("dark.xml"), HasSubstr("style=\"dark\""));
  EXPECT_EQ(folder.Run({"render", "dark.xml", "-d", "sales.csv", "-o", "dark.png"}).exitCode, 0);
  EXPECT_THAT(folder.NewNames(), ElementsAre("dark.png", "dark.xml"));
}

TEST(ConvertStyleTest, ResultGoesToStandardOutputWhenNothingElseIsSaid) {
  const SampleFolder folder;
  folder.Write("count.xsl", kCount);
  EXPECT_EQ(folder.Run({"convert", "style", "sales.xml", "--sheet", "count.xsl"}).output, "1");
  RunSettings settings;
  settings.input = kCount;
  EXPECT_EQ(folder.Run({"convert", "style", "sales.gpl", "--sheet", "-"}, settings).output, "1");
}

void ExpectFailure(const std::string& chart, const std::string& sheet, const std::string& reason) {
  const SampleFolder folder;
  folder.Write("chart", chart);
  folder.Write("a.xsl", sheet);
  folder.Write("out", "old");
  const RunResult result =
      folder.Run({"convert", "style", "chart", "--sheet", "a.xsl", "-o", "out"});
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_THAT(result.errors, StartsWith("chartbridge: " + reason));
  EXPECT_EQ(result.errors.find('\n'), result.errors.size() - 1) << result.errors;
  EXPECT_EQ(folder.Read("out"), "old");
}

TEST(ConvertStyleTest, FailureNamesTheFileAndThePlace) {
  ExpectFailure("<chart", kCount, "chart: line 1, column 7: ");
  ExpectFailure("draw bar", kCount, "chart: line 1, column 9: ");
  ExpectFailure("", kCount, "chart: The document is empty.");
  ExpectFailure(kChartXml, "", "a.xsl: The style sheet is empty.");
  ExpectFailure(kChartXml, kStart + "<xsl:template match='/'><xsl:value-of select='$x'/>",
                "a.xsl: line 2, column 52: the document ends inside <");
  ExpectFailure(kChartXml,
                kStart +
                    "<xsl:template match='/'><xsl:value-of select='$x'/></xsl:template>"
                    "</xsl:stylesheet>",
                "a.xsl: line 2, column 39: ");
  ExpectFailure(kChartXml, kStart + "<xsl:include href='b.xsl'/></xsl:stylesheet>",
                "a.xsl: line 2, column 14: it asks for \"b.xsl\"; a style sheet can load no other "
                "document\n");
  ExpectFailure(kChartXml,
                kStart + "<xsl:output method='text'/><xsl:template match='/'/></xsl:stylesheet>",
                "a.xsl: the style sheet puts out nothing\n");
}

TEST(ConvertStyleTest, StandardInputCanBeReadOnce) {
  const SampleFolder folder;
  const RunResult result = folder.Run({"convert", "style", "-", "--sheet", "-"});
  EXPECT_EQ(result.exitCode, 2);
  EXPECT_THAT(result.errors, HasSubstr("only one of the inputs can be standard input"));
}

}  // namespace
}  // namespace chartbridge
