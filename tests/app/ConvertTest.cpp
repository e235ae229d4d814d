// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/app/Samples.h"

namespace chartbridge {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

void ExpectDone(const RunResult& result) {
  EXPECT_EQ(result.exitCode, 0);
  EXPECT_EQ(result.errors, "");
}

TEST(ConvertTest, GraphLanguageBecomesChartXml) {
  const SampleFolder folder;
  const RunResult result = folder.Run({"convert", "gpl", "sales.gpl", "-o", "new.xml"});
  ExpectDone(result);
  EXPECT_EQ(result.output, "");
  EXPECT_EQ(folder.Read("new.xml"), kChartXml);
  EXPECT_THAT(folder.NewNames(), ElementsAre("new.xml"));
}

TEST(ConvertTest, ChartXmlGoesToStandardOutputWhenNothingElseIsSaid) {
  const SampleFolder folder;
  EXPECT_EQ(folder.Run({"convert", "gpl", "sales.gpl"}).output, kChartXml);
  EXPECT_EQ(folder.Run({"convert", "gpl", "sales.gpl", "-o", "-"}).output, kChartXml);
  EXPECT_THAT(folder.NewNames(), IsEmpty());
}

TEST(ConvertTest, StandardInputIsAnInput) {
  const SampleFolder folder;
  RunSettings settings;
  settings.input = kChart;
  EXPECT_EQ(folder.Run({"convert", "gpl", "-"}, settings).output, kChartXml);
}

TEST(ConvertTest, CurrentDocumentStaysByteForByte) {
  const SampleFolder folder;
  const std::string odd = "<?xml version='1.0'?>\r\n<!-- kept -->" + kChartXml.substr(39);
  folder.Write("odd.xml", odd);
  const RunResult result = folder.Run({"convert", "upgrade", "odd.xml"});
  ExpectDone(result);
  EXPECT_EQ(result.output, odd);
}

TEST(ConvertTest, OldDocumentBecomesOneThatCanBeRendered) {
  const SampleFolder folder;
  folder.Write("old.xml", kOldChartXml);
  ExpectDone(folder.Run({"convert", "upgrade", "old.xml", "-o", "new.xml"}));
  EXPECT_THAT(folder.Read("new.xml"), HasSubstr("urn:chartbridge:chart:2"));
  ExpectDone(folder.Run({"render", "old.xml", "-d", "sales.csv", "-o", "old.png"}));
  ExpectDone(folder.Run({"render", "new.xml", "-d", "sales.csv", "-o", "new.png"}));
  ExpectDone(folder.Render({"-o", "sales.png"}));
  EXPECT_EQ(folder.Read("old.png"), folder.Read("new.png"));
  EXPECT_EQ(folder.Read("old.png"), folder.Read("sales.png"));
}

TEST(ConvertTest, DocumentMayReplaceItself) {
  const SampleFolder folder;
  folder.Write("chart.xml", kOldChartXml);
  ExpectDone(folder.Run({"convert", "upgrade", "chart.xml", "-o", "chart.xml"}));
  EXPECT_THAT(folder.Read("chart.xml"), HasSubstr("urn:chartbridge:chart:2"));
}

/// What goes wrong: one line, exit code 1, and the output as it was.
void ExpectFailure(const std::string& conversion, const std::string& content,
                   const std::string& reason) {
  const SampleFolder folder;
  folder.Write("in", content);
  folder.Write("out", "old");
  const RunResult result = folder.Run({"convert", conversion, "in", "-o", "out"});
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_EQ(result.output, "");
  EXPECT_EQ(result.errors, "chartbridge: in: " + reason + "\n");
  EXPECT_EQ(folder.Read("out"), "old");
  EXPECT_THAT(folder.NewNames(), ElementsAre("in", "out"));
}

TEST(ConvertTest, MistakeInTheGraphLanguage) {
  ExpectFailure("gpl", "title \"Sales\ndraw bar: x a, y b\n",
                "line 1, column 7: the text that begins here is not closed with \" on its line");
}

TEST(ConvertTest, XmlThatIsNoChart) {
  ExpectFailure("upgrade", "<table/>",
                "line 1, column 1: found <table>, which is not a chart; expected <chart "
                "xmlns=\"urn:chartbridge:chart:2\">");
}

TEST(ConvertTest, XmlThatIsTruncated) {
  ExpectFailure("upgrade", kChartXml.substr(0, kChartXml.find("<y ")),
                "line 7, column 7: the document ends inside <bar>, which begins at line 5, "
                "column 5");
}

TEST(ConvertTest, MissingInputAndFolder) {
  const SampleFolder folder;
  RunResult result = folder.Run({"convert", "gpl", "none.gpl", "-o", "out.xml"});
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_EQ(result.errors, "chartbridge: none.gpl: No such file or directory\n");
  result = folder.Run({"convert", "gpl", "sales.gpl", "-o", "none/out.xml"});
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_EQ(result.errors,
            "chartbridge: none/out.xml: cannot write there: the folder none does not exist\n");
  EXPECT_THAT(folder.NewNames(), IsEmpty());
}

}  // namespace
}  // namespace chartbridge
