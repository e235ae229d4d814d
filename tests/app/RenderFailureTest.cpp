// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <string>
#include <vector>

#include "tests/app/Samples.h"

namespace chartbridge {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

/// Wrong input: one line says why, the exit code is 1, and no file appears, changes or is left
/// over.
class RenderFailureTest : public testing::Test {
 protected:
  void ExpectFailure(const std::vector<std::string>& arguments, const std::string& reason) {
    folder.Write("out.png", "old");
    std::vector<std::string> names = folder.Names();
    const RunResult result = folder.Run(arguments);
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_EQ(result.output, "");
    EXPECT_EQ(result.errors, "chartbridge: " + reason + "\n");
    EXPECT_EQ(folder.Read("out.png"), "old");
    EXPECT_EQ(folder.Names(), names);
  }

  /// With chart.gpl of this content instead of the sample.
  void ExpectChartFailure(const std::string& chart, const std::string& reason) {
    folder.Write("chart.gpl", chart);
    ExpectFailure({"render", "chart.gpl", "-d", "sales.csv", "-o", "out.png"}, reason);
  }

  /// With data.csv of this content instead of the sample.
  void ExpectDataFailure(const std::string& data, const std::string& reason) {
    folder.Write("data.csv", data);
    ExpectFailure({"render", "sales.gpl", "-d", "data.csv", "-o", "out.png"}, reason);
  }

  /// With more options for the sample.
  void ExpectOptionFailure(const std::vector<std::string>& options, const std::string& reason) {
    std::vector<std::string> arguments = {"render",    "sales.gpl", "-d",
                                          "sales.csv", "-o",        "out.png"};
    arguments.insert(arguments.end(), options.begin(), options.end());
    ExpectFailure(arguments, reason);
  }

  const SampleFolder folder;
};

TEST_F(RenderFailureTest, MissingFiles) {
  ExpectFailure({"render", "none.gpl", "-d", "sales.csv", "-o", "out.png"},
                "none.gpl: No such file or directory");
  ExpectFailure({"render", "sales.gpl", "-d", "none.csv", "-o", "out.png"},
                "none.csv: No such file or directory");
  ExpectOptionFailure({"--texts", "none.properties"}, "none.properties: No such file or directory");
  ExpectOptionFailure({"--style-file", "none.xml"}, "none.xml: No such file or directory");
}

TEST_F(RenderFailureTest, FoldersInPlaceOfFiles) {
  ASSERT_EQ(mkdir(folder.File("inner").c_str(), 0700), 0);
  ExpectFailure({"render", "inner", "-d", "sales.csv", "-o", "out.png"}, "inner: Is a directory");
  ExpectFailure({"render", "sales.gpl", "-d", "inner", "-o", "out.png"}, "inner: Is a directory");
  ExpectFailure({"render", "sales.gpl", "-d", "sales.csv", "-o", "inner", "-t", "png"},
                "inner: Is a directory");
}

TEST_F(RenderFailureTest, OutputFolderDoesNotExist) {
  ExpectFailure({"render", "sales.gpl", "-d", "sales.csv", "-o", "none/out.png"},
                "none/out.png: cannot write there: the folder none does not exist");
}

TEST_F(RenderFailureTest, OutputFolderIsAFile) {
  ExpectFailure({"render", "sales.gpl", "-d", "sales.csv", "-o", "sales.csv/out.png"},
                "sales.csv/out.png: cannot write there: sales.csv is not a folder");
}

TEST_F(RenderFailureTest, OutputFolderTakesNoFiles) {
  // Not even root can make a file there, and it only shows when one tries.
  const RunResult result = folder.Render({"-o", "/proc/out.png"});
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_THAT(result.errors,
              StartsWith("chartbridge: /proc/out.png: Cannot write \"/proc/out.png\": "));
}

TEST_F(RenderFailureTest, CsvLineWithTooFewFields) {
  ExpectDataFailure("region,product,revenue\nNorth,Tea,1\nSouth,Tea\n",
                    "data.csv: CSV line 3 has 2 fields where the header names 3 columns; "
                    "the field of column \"revenue\" is missing.");
}

TEST_F(RenderFailureTest, CsvQuoteThatIsNeverClosed) {
  ExpectDataFailure("region,product,revenue\nNorth,\"Tea,1\n",
                    "data.csv: CSV line 2, column \"product\": "
                    "the quote that opens here is never closed.");
}

TEST_F(RenderFailureTest, CsvThatIsNotUtf8) {
  ExpectDataFailure("region,product,revenue\nN\xF6rd,Tea,1\n",
                    "data.csv: CSV line 2, column \"region\": the byte 0xF6 is not UTF-8; "
                    "the data must be saved as UTF-8.");
}

TEST_F(RenderFailureTest, EmptyData) {
  ExpectDataFailure("", "data.csv: The data are empty; the first line must name the columns.");
}

TEST_F(RenderFailureTest, UnknownColumn) {
  ExpectChartFailure(
      "draw bar: x region, y sum of revenu\n",
      "chart.gpl: line 1, column 23: The data has no column \"revenu\"; its columns are "
      "region, product, revenue. Did you mean \"revenue\"?");
}

TEST_F(RenderFailureTest, UnknownElement) {
  ExpectChartFailure("draw bars: x region, y sum of revenue\n",
                     "chart.gpl: line 1, column 6: found \"bars\", expected one of bar, line, "
                     "area, point, histogram, box, pie, heatmap, grouped, stacked, filled, "
                     "overlaid; did you mean \"bar\"?");
}

TEST_F(RenderFailureTest, UnknownElementInXml) {
  std::string xml = kChartXml;
  xml.replace(xml.find("<bar>"), 5, "<rod>");
  xml.replace(xml.find("</bar>"), 6, "</rod>");
  ExpectChartFailure(xml,
                     "chart.gpl: line 5, column 5: found <rod> inside <elements>; expected one of "
                     "bar, line, area, point, histogram, box, pie, heatmap");
}

TEST_F(RenderFailureTest, TruncatedXml) {
  ExpectChartFailure(kChartXml.substr(0, kChartXml.find("<y ")),
                     "chart.gpl: line 7, column 7: the document ends inside <bar>, which begins "
                     "at line 5, column 5");
}

TEST_F(RenderFailureTest, XmlBomb) {
  std::string bomb = "<?xml version=\"1.0\"?>\n<!DOCTYPE chart [<!ENTITY a \"ha\">";
  for (char name = 'b'; name <= 'z'; ++name) {
    const std::string before(1, static_cast<char>(name - 1));
    bomb += std::string("<!ENTITY ") + name + " \"";
    for (int i = 0; i < 10; ++i) bomb += "&" + before + ";";
    bomb += "\">";
  }
  bomb += "]>\n<chart xmlns=\"urn:chartbridge:chart:2\"><titles title=\"&z;\"/></chart>\n";
  ExpectChartFailure(bomb,
                     "chart.gpl: line 2, column 1: a document type declaration (<!DOCTYPE) is "
                     "not allowed");
}

TEST_F(RenderFailureTest, EmptyChart) {
  ExpectChartFailure("", "chart.gpl: The chart is empty; chart XML or graph language is expected.");
}

TEST_F(RenderFailureTest, ChartOnStandardInputIsNamedSo) {
  RunSettings settings;
  settings.input = "draw bars";
  const RunResult result = folder.Run({"render", "-", "-d", "sales.csv", "-o", "x.png"}, settings);
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_THAT(result.errors, StartsWith("chartbridge: standard input: line 1, column 6: "));
}

TEST_F(RenderFailureTest, UnknownStyle) {
  ExpectOptionFailure(
      {"--style", "nope"},
      "--style: There is no style \"nope\"; the styles are print, dark, mono, slides.");
}

TEST_F(RenderFailureTest, BrokenStyleFile) {
  folder.Write("style.xml", "<style");
  ExpectOptionFailure({"--style-file", "style.xml"},
                      "style.xml: Style document: line 1, column 7: not well-formed XML: XML "
                      "document structures must start and end within the same entity.");
}

TEST_F(RenderFailureTest, LocaleThatIsNone) {
  ExpectOptionFailure(
      {"--locale", "d!"},
      "--locale: The language \"d!\" is no BCP 47 tag; expected one such as de or pt-BR.");
}

TEST_F(RenderFailureTest, BrokenTexts) {
  folder.Write("texts.properties", "a=\\uzzzz\n");
  const RunResult result = folder.Render({"-o", "x.png", "--texts", "texts.properties"});
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_THAT(result.errors,
              StartsWith("chartbridge: texts.properties: The chart texts are no properties file"));
}

TEST_F(RenderFailureTest, PictureThatWouldBeTooLarge) {
  ExpectOptionFailure({"--size", "10000"},
                      "sales.gpl: At 10000 percent the picture would have 80000 x 60000 pixels; at "
                      "most 100 million are drawn. Choose a smaller size.");
}

TEST_F(RenderFailureTest, NoJava) {
  RunSettings settings;
  settings.environment["JAVA_HOME"] = "/none";
  const RunResult result = folder.Render({"-o", "x.png"}, settings);
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_EQ(result.errors,
            "chartbridge: cannot start Java: no JVM found; tried JAVA_HOME (/none has no "
            "lib/server/libjvm.so)\n");
}

TEST_F(RenderFailureTest, ClassPathWithoutTheClasses) {
  ExpectOptionFailure({"--classpath", folder.Path()},
                      "the Java classes cannot be used: java.lang.NoClassDefFoundError: "
                      "com/tesk/charteditor/ChartImager");
}

TEST_F(RenderFailureTest, StandardOutputThatIsFull) {
  const RunResult result = RunProgram({"sh", "-c",
                                       "cd \"$1\" && \"$2\" render sales.gpl -d sales.csv -o - "
                                       "> /dev/full",
                                       "sh", folder.Path(), CHARTBRIDGE_COMMAND});
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_EQ(result.errors, "chartbridge: standard output: No space left on device\n");
}

TEST_F(RenderFailureTest, VerboseAddsTheStack) {
  folder.Write("chart.gpl", "draw bars");
  const RunResult result =
      folder.Run({"render", "chart.gpl", "-d", "sales.csv", "-o", "x.png", "--verbose"});
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_THAT(result.errors, StartsWith("chartbridge: chart.gpl: line 1, column 6: "));
  EXPECT_THAT(result.errors, HasSubstr("\n\tat com.tesk.charteditor.ChartImager."));
}

TEST_F(RenderFailureTest, DumpFolderOfTheUserKeepsTheRecord) {
  const WorkFolder dumps;
  folder.Write("chart.gpl", "draw bars");
  RunSettings settings;
  settings.environment["DumpChartTimePath"] = dumps.Path();
  const std::vector<std::string> arguments = {"render",    "chart.gpl", "-d",
                                              "sales.csv", "-o",        "x.png"};
  folder.Run(arguments, settings);
  ASSERT_EQ(dumps.Names().size(), 1U);
  EXPECT_THAT(dumps.Names().front(), StartsWith("JNI_Exceptions_"));
  const std::string first = dumps.Read(dumps.Names().front());
  EXPECT_THAT(first, HasSubstr("found \"bars\""));

  // A second failure is told by its own record, not by the older one.
  folder.Write("chart.gpl", "draw lines");
  const RunResult second = folder.Run(arguments, settings);
  EXPECT_THAT(second.errors, HasSubstr("found \"lines\""));
  EXPECT_THAT(dumps.Read(dumps.Names().front()), StartsWith(first));
}

TEST_F(RenderFailureTest, DumpFolderThatDoesNotExistLeavesNoReason) {
  folder.Write("chart.gpl", "draw bars");
  RunSettings settings;
  settings.environment["DumpChartTimePath"] = folder.File("none");
  const RunResult result =
      folder.Run({"render", "chart.gpl", "-d", "sales.csv", "-o", "x.png"}, settings);
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_EQ(result.errors,
            "chartbridge: chart.gpl: it failed, and the folder that DumpChartTimePath names took "
            "no record of why\n");
}

}  // namespace
}  // namespace chartbridge
