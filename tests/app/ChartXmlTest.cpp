// SPDX-License-Identifier: Apache-2.0
#include "app/ChartXml.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <pugixml.hpp>
#include <string>

#include "app/Failure.h"

namespace chartbridge {
namespace {

using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

const std::string kChart =
    "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
    "<!-- of the year -->\n"
    "<chart xmlns=\"urn:chartbridge:chart:2\">\n"
    "  <elements><bar><x column=\"a\"/></bar></elements>\n"
    "</chart>\n";

std::string With(const std::string& csv, const std::string& chart = kChart) {
  return WithData(chart, "sales.xml", csv, "sales.csv");
}

/// The data that a parser finds in the chart, without the line end in front of them.
std::string DataOf(const std::string& chart, const std::string& element = "data") {
  pugi::xml_document document;
  // Line ends as the parser of XML must read them.
  EXPECT_TRUE(
      document.load_buffer(chart.data(), chart.size(), pugi::parse_default | pugi::parse_eol));
  const std::string text = document.document_element().child_value(element.c_str());
  EXPECT_THAT(text, StartsWith("\n"));
  return text.substr(1);
}

void ExpectRefused(const std::string& csv, const std::string& reason) {
  try {
    With(csv);
    ADD_FAILURE() << "taken";
  } catch (const Failure& failure) {
    EXPECT_EQ(std::string(failure.what()), reason);
  }
}

std::string Utf16(const std::string& ascii) {
  std::string text = "\xFF\xFE";
  for (const char character : ascii) text.append({character, '\0'});
  return text;
}

TEST(ChartXmlTest, TellsXmlFromGraphLanguage) {
  EXPECT_TRUE(IsChartXml("<chart/>"));
  EXPECT_TRUE(IsChartXml("\xEF\xBB\xBF \r\n\t<chart/>"));
  EXPECT_TRUE(IsChartXml(Utf16("<chart/>")));
  EXPECT_TRUE(IsChartXml(std::string("<\0?\0", 4)));
  EXPECT_TRUE(IsChartXml(std::string("\0<\0?", 4)));
  EXPECT_FALSE(IsChartXml("draw bar: x a"));
  EXPECT_FALSE(
      IsChartXml("\xEF\xBB\xBF"
                 "draw bar: x a"));
  EXPECT_FALSE(IsChartXml("// < \ndraw bar: x a"));
  EXPECT_FALSE(IsChartXml(""));
  EXPECT_FALSE(IsChartXml("  "));
}

TEST(ChartXmlTest, DataArriveAsTheyAre) {
  for (const std::string csv :
       {"a,b\n1,2\n", "a,b\r\n1,\"two\r\nlines\"\r\n", "a\rb\r", "a\n<b> & ]]> \"c\" 'd'\n",
        "a\n\t x \n", "größe\n\xF0\x9F\x99\x82\n", "a\n1"}) {
    EXPECT_EQ(DataOf(With(csv)), csv);
  }
}

TEST(ChartXmlTest, ByteOrderMarkIsDropped) {
  EXPECT_EQ(DataOf(With("\xEF\xBB\xBF"
                        "a\n1\n")),
            "a\n1\n");
}

TEST(ChartXmlTest, EveryByteOfTheChartStays) {
  const std::string end = "</chart>\n<!-- the end -->\n";
  const std::string start =
      "\xEF\xBB\xBF<?xml version='1.0' encoding=\"utf-8\"?>\r\n<!-- of\nthe year -->\n"
      "<chart\n   xmlns='urn:chartbridge:chart:2'><?pi?>\n"
      "  <elements><bar><x column=\"&#65;\"/></bar></elements>\n";
  EXPECT_EQ(With("a\n1\n", start + end), start + "<data>\na\n1\n</data>" + end);
}

TEST(ChartXmlTest, EndTagInACommentIsNone) {
  const std::string chart = With("a\n1\n", kChart + "<!-- </chart> -->");
  EXPECT_EQ(DataOf(chart), "a\n1\n");
  EXPECT_THAT(chart, HasSubstr("<!-- </chart> -->"));
}

TEST(ChartXmlTest, DataReplaceThoseOfTheChart) {
  const std::string chart = With("b\n2\n", With("a\n1\n"));
  EXPECT_EQ(DataOf(chart), "b\n2\n");
  EXPECT_THAT(chart, Not(HasSubstr("a\n1")));
}

TEST(ChartXmlTest, EmptyDataLeaveTheChartAlone) {
  const std::string chart = With("a\n1\n");
  EXPECT_EQ(With("", chart), chart);
  EXPECT_EQ(With("\xEF\xBB\xBF", chart), chart);
}

TEST(ChartXmlTest, PrefixOfTheRootIsThatOfTheData) {
  const std::string chart = With("a\n1\n", "<c:chart xmlns:c=\"urn:chartbridge:chart:2\"/>");
  EXPECT_EQ(DataOf(chart, "c:data"), "a\n1\n");
}

TEST(ChartXmlTest, ChartInAnotherEncodingBecomesUtf8) {
  const std::string latin =
      "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?><chart><titles title=\"Gr\xF6\xDF"
      "e\"/></chart>";
  const std::string chart = With("a\n1\n", latin);
  EXPECT_THAT(chart, HasSubstr("encoding=\"UTF-8\""));
  EXPECT_THAT(chart, HasSubstr("title=\"Größe\""));

  const std::string wide = Utf16("<?xml version=\"1.0\" encoding=\"UTF-16\"?><chart/>");
  EXPECT_EQ(With("a\n1\n", wide),
            "<?xml version=\"1.0\" encoding=\"UTF-8\"?><chart><data>\na\n1\n</data></chart>");
}

TEST(ChartXmlTest, UnknownEncodingIsRefused) {
  try {
    With("a\n1\n", "<?xml version=\"1.0\" encoding=\"windows-1252\"?><chart/>");
    ADD_FAILURE() << "taken";
  } catch (const Failure& failure) {
    EXPECT_EQ(
        std::string(failure.what()),
        "sales.xml: is in windows-1252; data go only into charts in UTF-8, UTF-16 or ISO-8859-1");
  }
}

TEST(ChartXmlTest, BrokenChartComesBackAsItIs) {
  for (const std::string chart : {"<chart", "<chart></elements>", ""}) {
    EXPECT_EQ(With("a\n1\n", chart), chart);
  }
}

TEST(ChartXmlTest, DataThatXmlCannotHoldAreRefused) {
  ExpectRefused("a\nb\n\xE9t\xE9\n",
                "sales.csv: line 3: the byte 0xE9 is not UTF-8; the data must be saved as UTF-8");
  ExpectRefused("a\n\xC3",
                "sales.csv: line 2: the byte 0xC3 is not UTF-8; the data must be saved as UTF-8");
  ExpectRefused(std::string("a\n\0", 3),
                "sales.csv: line 2: holds U+0000, which chart XML cannot carry");
  ExpectRefused("a\x1F", "sales.csv: line 1: holds U+001F, which chart XML cannot carry");
  ExpectRefused("a\xEF\xBF\xBE", "sales.csv: line 1: holds U+FFFE, which chart XML cannot carry");
}

TEST(ChartXmlTest, LargeDataAreRefused) {
  const std::string csv = "a\n" + std::string(std::size_t{16} << 20, '1');
  ExpectRefused(csv,
                "sales.csv: is too large; a chart with its data may have 16 MiB as XML, and has " +
                    std::to_string(With("a\n").size() + csv.size() - 2) + " bytes");
}

}  // namespace
}  // namespace chartbridge
