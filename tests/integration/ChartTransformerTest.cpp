// SPDX-License-Identifier: Apache-2.0
#include "platform/ChartTransformer.h"

#include <gtest/gtest.h>

#include <fstream>
#include <stdexcept>
#include <string>

#include "platform/ChartBase.h"

namespace {

constexpr char kDeclaration[] = R"(<?xml version="1.0" encoding="UTF-8"?>)";
constexpr char kGrin[] = "\xF0\x9F\x98\x80";
constexpr char kJavaGrin[] = "\xED\xA0\xBD\xED\xB8\x80";

std::string Chart(const std::string& parts, const std::string& attributes = "") {
  return "<chart xmlns=\"urn:chartbridge:chart:2\"" + attributes +
         (parts.empty() ? "/>" : ">" + parts + "</chart>");
}

std::string Template(const std::string& parts) {
  return "<template xmlns=\"urn:chartbridge:template:1\">" + parts + "</template>";
}

std::string Transform(const std::string& chart, const std::string& templ) {
  ChartTransformer transformer(chart);
  transformer.applyTemplate(templ);
  return transformer.getEntireXML(ChartBase::_utf8);
}

std::string Same(const std::string& chart) {
  return ChartTransformer(chart).getEntireXML(ChartBase::_utf8);
}

std::string FailureOf(const std::string& chart, const std::string& templ) {
  try {
    Transform(chart, templ);
  } catch (const std::runtime_error& error) {
    return error.what();
  }
  return "none";
}

std::string ChartFailure(const std::string& chart) { return FailureOf(chart, Template("")); }

std::string TemplateFailure(const std::string& templ) { return FailureOf(Chart(""), templ); }

/// The chart's parts and root attributes after the template's parts have been merged in.
void ExpectMerged(const std::string& chart, const std::string& templ, const std::string& merged) {
  EXPECT_EQ(Transform(Chart(chart), Template(templ)), kDeclaration + Chart(merged)) << templ;
}

/// A row of the table of rules: the template fills a gap, leaves alone what the chart says, and
/// replaces it when it overrides. `templ` has "?" where the override goes.
void ExpectRow(const std::string& gap, const std::string& filled, const std::string& own,
               const std::string& replaced, const std::string& templ) {
  const std::size_t at = templ.find(" ?");
  ASSERT_NE(at, std::string::npos);
  const auto with = [&](const std::string& text) {
    return templ.substr(0, at) + text + templ.substr(at + 2);
  };
  for (const char* plain : {"", " override=\"false\"", " override=\"0\""}) {
    ExpectMerged(gap, with(plain), filled);
    ExpectMerged(own, with(plain), own);
  }
  for (const char* overriding : {" override=\"true\"", " override='1'"}) {
    ExpectMerged(gap, with(overriding), filled);
    ExpectMerged(own, with(overriding), replaced);
  }
}

TEST(ChartTransformer, KeepsTheWholeChart) {
  const std::string body =
      "<!-- c -->\n<?go on?><chart xmlns=\"urn:chartbridge:chart:2\" a=\"1\">\r\n  text &amp; &#10;"
      " <![CDATA[<x>]]> <b c=\"&lt;&#x41;\nd\"/>\n<!-- \xE2\x82\xAC --></chart>\n";
  EXPECT_EQ(Same(body), kDeclaration + body);
  EXPECT_EQ(Same("<?xml version='1.0' encoding='UTF-16' standalone='yes'?>" + Chart("")),
            R"(<?xml version="1.0" encoding="UTF-8" standalone="yes"?>)" + Chart(""));
  EXPECT_EQ(Same("\xEF\xBB\xBF" + Chart("")), kDeclaration + Chart(""));
}

TEST(ChartTransformer, QuotesAnewWhatStandsInSingleQuotes) {
  EXPECT_EQ(Same(Chart("<titles title='say \"no\"'/>")),
            kDeclaration + Chart("<titles title=\"say &quot;no&quot;\"/>"));
}

// Bytes that are no UTF-8 are the chart's own business.
TEST(ChartTransformer, KeepsUnknownBytes) {
  const std::string chart = Chart("<titles title=\"\xFF\xED\xA0\xBD\"/><!--\xFE-->");
  EXPECT_EQ(Same(chart), kDeclaration + chart);
}

TEST(ChartTransformer, MergesSize) {
  const auto merged = [&](const std::string& attributes, const std::string& overriding) {
    const std::string part = "<size " + overriding + " width=\"900\" height=\"500\"/>";
    return Transform(Chart("", attributes), Template(part));
  };
  const std::string both = " width=\"900\" height=\"500\"";
  EXPECT_EQ(merged("", ""), kDeclaration + Chart("", both));
  EXPECT_EQ(merged(" width=\"300\"", ""),
            kDeclaration + Chart("", " width=\"300\" height=\"500\""));
  EXPECT_EQ(merged(" width=\"300\"", "override='true'"), kDeclaration + Chart("", both));
}

TEST(ChartTransformer, MergesStyle) {
  const auto merged = [](const std::string& attributes, const std::string& templ) {
    return Transform(Chart("", attributes), Template(templ));
  };
  const std::string dark = kDeclaration + Chart("", " style=\"dark\"");
  EXPECT_EQ(merged("", "<style name=\"dark\"/>"), dark);
  EXPECT_EQ(merged(" style=\"mono\"", "<style name=\"dark\"/>"),
            kDeclaration + Chart("", " style=\"mono\""));
  EXPECT_EQ(merged(" style=\"mono\"", "<style name=\"dark\" override=\"true\"/>"), dark);
}

TEST(ChartTransformer, MergesTitles) {
  ExpectRow("", "<titles title=\"a\" subtitle=\"b\" caption=\"c\"/>",
            "<titles title=\"1\" subtitle=\"2\" caption=\"\"/>",
            "<titles title=\"a\" subtitle=\"b\" caption=\"c\"/>",
            "<titles ? title=\"a\" subtitle=\"b\" caption=\"c\"/>");
  ExpectMerged("<titles title=\"own\"/>", "<titles title=\"a\" caption=\"c\"/>",
               "<titles title=\"own\" caption=\"c\"/>");
  ExpectMerged("<titles title=\"own\"/>", "<titles override=\"true\" caption=\"c\"/>",
               "<titles title=\"own\" caption=\"c\"/>");
}

TEST(ChartTransformer, MergesAxes) {
  for (const std::string axis : {"x", "y"}) {
    const std::string all =
        "scale=\"log\" title=\"t\" min=\"1\" max=\"9\" reversed=\"true\" "
        "grid=\"false\" format=\"0.0\"/>";
    const std::string own = "<axes><" + axis +
                            " scale=\"linear\" title=\"\" min=\"-1\" max=\"5\" reversed=\"0\" "
                            "grid=\"1\" format=\"#\"/></axes>";
    ExpectRow("", "<axes><" + axis + " " + all + "</axes>", own,
              "<axes><" + axis + " " + all + "</axes>", "<axes><" + axis + " ? " + all + "</axes>");
    ExpectMerged("<axes><" + axis + " max=\"9\"/></axes>", "<axes><" + axis + " min=\"0\"/></axes>",
                 "<axes><" + axis + " max=\"9\" min=\"0\"/></axes>");
  }
  ExpectMerged("<axes><x title=\"own\"/></axes>", "<axes><y grid=\"false\"/></axes>",
               "<axes><x title=\"own\"/><y grid=\"false\"/></axes>");
}

TEST(ChartTransformer, GivesCategoryAxesNeitherLimitsNorFormat) {
  const std::string rest = "min=\"0\" max=\"9\" format=\"#\" grid=\"false\"/></axes>";
  ExpectMerged("<axes><x scale=\" category \"/></axes>", "<axes><x " + rest,
               "<axes><x scale=\" category \" grid=\"false\"/></axes>");
  ExpectMerged("<axes><x scale=\"category\"/></axes>", "<axes><x override=\"true\" " + rest,
               "<axes><x scale=\"category\" grid=\"false\"/></axes>");
  ExpectMerged("", "<axes><x scale=\"category\" " + rest,
               "<axes><x scale=\"category\" grid=\"false\"/></axes>");
  // The scale decides, wherever it is written.
  ExpectMerged("", "<axes><x min=\"0\" scale=\"category\"/></axes>",
               "<axes><x scale=\"category\"/></axes>");
}

TEST(ChartTransformer, DropsTheLimitsOfAnAxisThatATemplateTurnsIntoCategories) {
  ExpectMerged("<axes><x min=\"0\" title=\"t\" max=\"9\" format=\"#\"/></axes>",
               "<axes><x override=\"true\" scale=\"category\"/></axes>",
               "<axes><x title=\"t\" scale=\"category\"/></axes>");
}

// Without the override a template may give a chart that has limits a scale that has none; the
// limits are the chart's word, and its reader says that they do not go together.
TEST(ChartTransformer, KeepsLimitsThatTheChartSays) {
  ExpectMerged("<axes><x min=\"0\"/></axes>", "<axes><x scale=\"category\"/></axes>",
               "<axes><x min=\"0\" scale=\"category\"/></axes>");
}

TEST(ChartTransformer, MergesDefaultsOfEveryKindOfElement) {
  const struct {
    std::string kind;
    std::string given;
    std::string own;
  } rows[] = {
      {"bar", "arrangement=\"stacked\" fill=\"#0072b2\" opacity=\"0.5\"",
       "arrangement=\"grouped\" fill=\"#000000\" opacity=\"1\""},
      {"line", "fill=\"#0072b2\" opacity=\"0.5\"", "fill=\"#000000\" opacity=\"1\""},
      {"area", "arrangement=\"filled\" fill=\"#0072b2\" opacity=\"0.5\"",
       "arrangement=\"overlaid\" fill=\"#000000\" opacity=\"1\""},
      {"point", "fill=\"#0072b2\" opacity=\".5e0\"", "fill=\"#000000\" opacity=\"1\""},
      {"histogram", "arrangement=\"overlaid\" bins=\"20\" fill=\"#0072b2\" opacity=\"0.5\"",
       "arrangement=\"grouped\" bins=\"3\" fill=\"#000000\" opacity=\"1\""},
      {"box", "fill=\"#0072b2\" opacity=\"0\"", "fill=\"#000000\" opacity=\"1\""},
      {"pie", "opacity=\"0.5\"", "opacity=\"1\""},
      {"heatmap", "opacity=\"0.5\"", "opacity=\"1\""},
  };
  for (const auto& row : rows) {
    const auto element = [&](const std::string& attributes) {
      return "<elements><" + row.kind + (attributes.empty() ? "" : " ") + attributes +
             "/></elements>";
    };
    ExpectRow(element(""), element(row.given), element(row.own), element(row.given),
              "<elements><" + row.kind + " ? " + row.given + "/></elements>");
  }
}

TEST(ChartTransformer, GivesDefaultsToEveryElementOfTheKind) {
  ExpectMerged("<elements><bar/><line/><bar opacity=\"1\"><x column=\"a\"/></bar></elements>",
               "<elements><bar opacity=\"0.5\"/></elements>",
               "<elements><bar opacity=\"0.5\"/><line/><bar opacity=\"1\"><x "
               "column=\"a\"/></bar></elements>");
}

TEST(ChartTransformer, AddsNoElement) {
  ExpectMerged("<elements><bar/></elements>", "<elements><line opacity=\"0.5\"/></elements>",
               "<elements><bar/></elements>");
  ExpectMerged("", "<elements><line opacity=\"0.5\"/></elements>", "");
}

TEST(ChartTransformer, FillsNoElementWhoseColoursComeFromTheData) {
  const std::string colored = "<color column=\"c\"/></bar></elements>";
  for (const char* overriding : {"", "override=\"true\" "}) {
    ExpectMerged("<elements><bar>" + colored,
                 std::string("<elements><bar ") + overriding +
                     "fill=\"#0072b2\" opacity=\"0.5\"/></elements>",
                 "<elements><bar opacity=\"0.5\">" + colored);
  }
}

TEST(ChartTransformer, GivesAHistogramWithBinsOfItsOwnNoOtherBins) {
  const std::string bins = "<bin from=\"0\" to=\"5\" value=\"2\"/></histogram></elements>";
  for (const char* overriding : {"", "override=\"true\" "}) {
    ExpectMerged("<elements><histogram>" + bins,
                 std::string("<elements><histogram ") + overriding +
                     "bins=\"20\" arrangement=\"overlaid\" fill=\"#0072b2\"/></elements>",
                 "<elements><histogram fill=\"#0072b2\">" + bins);
  }
}

TEST(ChartTransformer, MergesLegend) {
  ExpectRow("", "<legend position=\"bottom\" title=\"t\"/>",
            "<legend position=\"none\" title=\"\"/>", "<legend position=\"bottom\" title=\"t\"/>",
            "<legend ? position=\"bottom\" title=\"t\"/>");
}

TEST(ChartTransformer, MergesFacetOfChartsThatHaveOne) {
  ExpectRow("<facet column=\"c\"/>",
            "<facet column=\"c\" columns=\"3\" shared-x=\"false\" shared-y=\"false\"/>",
            "<facet column=\"c\" columns=\"1\" shared-x=\"true\" shared-y=\"true\"/>",
            "<facet column=\"c\" columns=\"3\" shared-x=\"false\" shared-y=\"false\"/>",
            "<facet ? columns=\"3\" shared-x=\"false\" shared-y=\"false\"/>");
  ExpectMerged("", "<facet override=\"true\" columns=\"3\"/>", "");
}

TEST(ChartTransformer, MergesPaletteAsAWhole) {
  const std::string own = "<palette><color value=\"#000000\"/></palette>";
  const std::string theirs = "<color value=\"#0072B2\"/><color value=\"#e69f00\"/></palette>";
  ExpectRow("", "<palette>" + theirs, own, "<palette>" + theirs, "<palette ?>" + theirs);
  // An empty palette is the chart's word too: it takes the colours of the style.
  ExpectMerged("<palette/>", "<palette>" + theirs, "<palette/>");
  ExpectMerged(own, "<palette override=\"true\"/>", "<palette/>");
}

TEST(ChartTransformer, EmptyTemplateChangesNothing) {
  const std::string parts = "<elements><bar/></elements>";
  ExpectMerged(parts, "", parts);
  ExpectMerged(parts,
               "<titles/><axes><x/><y override=\"true\"/></axes><elements><bar/></elements>"
               "<legend override=\"true\"/><size/><facet/>",
               parts);
}

TEST(ChartTransformer, TakesTheNameOfTheTemplateAway) {
  EXPECT_EQ(Transform(Chart("", " template=\"corporate\" width=\"300\""), Template("")),
            kDeclaration + Chart("", " width=\"300\""));
}

TEST(ChartTransformer, FillsOnceWhenAppliedTwice) {
  ChartTransformer transformer(Chart(""));
  transformer.applyTemplate(Template("<legend position=\"top\"/>"));
  transformer.applyTemplate(Template("<legend position=\"left\" title=\"t\"/>"));
  EXPECT_EQ(transformer.getEntireXML(ChartBase::_utf8),
            kDeclaration + Chart("<legend position=\"top\" title=\"t\"/>"));
}

TEST(ChartTransformer, KeepsCommentsAndOrder) {
  ExpectMerged("<!-- 1 -->\n  <legend/><!-- 2 -->\n  <titles/>\n",
               "<!-- not for the chart --><titles title=\"t\"/><legend title=\"l\"/>",
               "<!-- 1 -->\n  <legend title=\"l\"/><!-- 2 -->\n  <titles title=\"t\"/>\n");
}

TEST(ChartTransformer, WritesTemplateTextsSoThatTheyReadTheSame) {
  ExpectMerged("", "<titles title='a &lt; \"b\" &amp;&#10;&#x9;c' caption='d\n e'/>",
               "<titles title=\"a &lt; &quot;b&quot; &amp;&#10;&#9;c\" caption=\"d  e\"/>");
}

TEST(ChartTransformer, FollowsPrefixes) {
  EXPECT_EQ(Transform("<c:chart xmlns:c=\"urn:chartbridge:chart:2\"><c:axes><c:x/></c:axes>"
                      "<legend xmlns=\"urn:other\"/></c:chart>",
                      "<t:template xmlns:t='urn:chartbridge:template:1'><t:axes><t:x min='0'/>"
                      "<t:y min='0'/></t:axes><t:legend position='top'/></t:template>"),
            std::string(kDeclaration) +
                "<c:chart xmlns:c=\"urn:chartbridge:chart:2\"><c:axes><c:x min=\"0\"/>"
                "<c:y min=\"0\"/></c:axes><legend xmlns=\"urn:other\"/>"
                "<c:legend position=\"top\"/></c:chart>");
}

// Java hands texts over in modified UTF-8 and takes the result back as such: characters beyond the
// basic plane must be the same bytes in both.
TEST(ChartTransformer, WritesSupplementaryCharactersForBothSides) {
  const std::string expected =
      kDeclaration + Chart("<titles title=\"\xC3\xBC&#128512;\" caption=\"&#128512;\"/>&#128512;");
  for (const std::string grin : {kGrin, kJavaGrin}) {
    EXPECT_EQ(Transform(Chart("<titles title=\"\xC3\xBC" + grin + "\"/>" + grin),
                        Template("<titles caption=\"" + grin + "\"/>")),
              expected);
  }
}

// A comment takes no references; its bytes come back as they were.
TEST(ChartTransformer, LeavesCommentsAndSectionsTheirBytes) {
  for (const std::string grin : {kGrin, kJavaGrin}) {
    const std::string chart =
        Chart("<!--" + grin + "--><![CDATA[" + grin + "]]><?p " + grin + "?>");
    EXPECT_EQ(Same(chart), kDeclaration + chart);
  }
}

TEST(ChartTransformer, WritesTheNamedEncoding) {
  ChartTransformer transformer(Chart("\xC3\xBC\xE2\x82\xAC<!--" + std::string(kJavaGrin) + "-->"));
  const unsigned short latin1[] = {'I', 'S', 'O', '-', '8', '8', '5', '9', '-', '1', 0};
  EXPECT_EQ(transformer.getEntireXML(latin1), "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>" +
                                                  Chart("\xFC&#8364;<!--&#128512;-->"));
  EXPECT_EQ(transformer.getEntireXML(ChartBase::_utf8),
            kDeclaration + Chart("\xC3\xBC\xE2\x82\xAC<!--" + std::string(kJavaGrin) + "-->"));
  const unsigned short unknown[] = {'n', 'o', 'n', 'e', 0};
  EXPECT_THROW(transformer.getEntireXML(unknown), std::runtime_error);
}

TEST(ChartTransformer, RefusesWhatIsNoChart) {
  const std::string expected = "; expected <chart xmlns=\"urn:chartbridge:chart:2\">";
  EXPECT_EQ(ChartFailure("<plot/>"),
            "line 1, column 1: found <plot>, which is not a chart" + expected);
  EXPECT_EQ(ChartFailure("\n <chart/>"), "line 2, column 2: <chart> has no namespace" + expected);
  EXPECT_EQ(ChartFailure("<chart xmlns=\"urn:x\"/>"),
            "line 1, column 1: <chart> has the namespace \"urn:x\"" + expected);
  EXPECT_EQ(ChartFailure("<chart xmlns=\"urn:chartbridge:chart:1\"/>"),
            "line 1, column 1: the chart is of version 1; upgrade it to version 2 first");
  EXPECT_EQ(ChartFailure("<chart xmlns=\"urn:chartbridge:chart:3\"/>"),
            "line 1, column 1: the chart is of version 3; templates go with charts of version 2");
  EXPECT_EQ(ChartFailure("title \"t\"\ndraw bar: x a"),
            "the chart is not chart XML; one in the graph language must be converted to it first");
  EXPECT_EQ(ChartFailure(" \n"), "the chart is empty");
  EXPECT_EQ(ChartFailure("<!-- only -->"), "the chart has no element");
}

TEST(ChartTransformer, RefusesWhatIsNotWellFormed) {
  const struct {
    std::string chart;
    std::string failure;
  } rows[] = {
      {"<chart>\n</char>", "line 2, column 3: the chart is not well-formed XML: "},
      {"<chart>", "line 1, column "},
      {Chart("<legend title=\"1\" title=\"2\"/>"),
       "line 1, column 48: title of <legend> is given twice"},
      {Chart("\n<legend title=\"a < b\"/>"), "line 2, column 9: title of <legend> has a \"<\", or"},
      {Chart("\n<legend title='&amp; &c;'/>"), "line 2, column 9: title of <legend> has a"},
      {Chart("<legend title='&#0;'/>"), "line 1, column 48: title of <legend> has a"},
      {Chart("<legend title='&#xD800;'/>"), "line 1, column 48: title of <legend> has a"},
      {Chart("\na & b"), "line 2, column 3: the ampersand begins no known reference"},
      {"<!DOCTYPE c [<!ENTITY a \"aaa\">]>" + Chart("&a;"),
       "line 1, column 1: a document type declaration (<!DOCTYPE) is not allowed"},
      {Chart("") + "\n" + Chart(""), "line 2, column 1: the chart has more than one root element"},
      {Chart("") + "x", "line 1, column 41: the chart has text outside of its root element"},
      {Chart("\x01"), "line 1, column 40: the chart has the character U+0001, which XML cannot"},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(ChartFailure(row.chart).substr(0, row.failure.size()), row.failure) << row.chart;
  }
}

// XML cannot hold a zero character, however it is written.
TEST(ChartTransformer, RefusesZeroCharacters) {
  const std::string failure = " has the character U+0000, which XML cannot hold";
  for (const std::string& zero : {std::string(1, '\0'), std::string("\xC0\x80")}) {
    EXPECT_EQ(ChartFailure(Chart("\n<titles title=\"" + zero + "\"/>")),
              "line 2, column 16: the chart" + failure);
    EXPECT_EQ(TemplateFailure(Template("\n<titles title=\"" + zero + "\"/>")),
              "line 2, column 16: the template" + failure);
  }
}

TEST(ChartTransformer, RefusesWhatIsNoTemplate) {
  const std::string expected = "; expected <template xmlns=\"urn:chartbridge:template:1\">";
  EXPECT_EQ(TemplateFailure("<t/>"),
            "line 1, column 1: found <t>, which is not a chart template" + expected);
  EXPECT_EQ(TemplateFailure("<template/>"),
            "line 1, column 1: <template> has no namespace" + expected);
  EXPECT_EQ(TemplateFailure("<template xmlns='urn:x'/>"),
            "line 1, column 1: <template> has the namespace \"urn:x\"" + expected);
  EXPECT_EQ(TemplateFailure("<template xmlns='urn:chartbridge:template:2'/>"),
            "line 1, column 1: the template is of version 2; version 1 is known here");
  EXPECT_EQ(TemplateFailure("template"),
            "line 1, column 1: the template is not XML; expected \"<\"");
  EXPECT_EQ(TemplateFailure(""), "the template is empty");
}

TEST(ChartTransformer, SaysWhatIsWrongInATemplate) {
  const struct {
    std::string parts;
    std::string failure;
  } rows[] = {
      {"<legnd/>",
       "1: found <legnd> inside <template>; expected one of size, style, titles, axes, elements, "
       "legend, facet, palette"},
      {"<axes><z/></axes>", "7: found <z> inside <axes>; expected one of x, y"},
      {"<legend><x/></legend>", "9: found <x> inside <legend>, which holds no elements"},
      {"<legend xmlns='urn:x'/>",
       "1: <legend> has the namespace \"urn:x\"; expected \"urn:chartbridge:template:1\""},
      {"<legend/><legend/>", "10: <template> has more than one <legend>"},
      {"<axes>text</axes>", "1: <axes> cannot hold text"},
      {"<axes override='true'/>", "7: <axes> has no attribute \"override\""},
      {"<legend override='yes'/>", "9: override of <legend> is \"yes\"; expected true or false"},
      {"<legend place='top'/>",
       "9: <legend> has no attribute \"place\"; expected one of position, title, override"},
      {"<legend title='a' position='Top'/>",
       "19: position of <legend> is \"Top\"; expected one of right, bottom, top, left, none"},
      {"<size width='15'/>",
       "7: width of <size> is \"15\"; expected a whole number from 16 to 10000"},
      {"<size width='9999999999'/>",
       "7: width of <size> is \"9999999999\"; expected a whole number from 16 to 10000"},
      {"<style/>", "1: <style> needs the attribute name"},
      {"<style name=' '/>", "8: name of <style> is \" \"; expected a name that is not empty"},
      {"<axes><x scale='lin'/></axes>",
       "10: scale of <x> is \"lin\"; expected one of auto, linear, log, time, category"},
      {"<axes><x min='low'/></axes>",
       "10: min of <x> is \"low\"; expected a number or a date such as 2024-01-31"},
      {"<elements><area arrangement='grouped'/></elements>",
       "17: arrangement of <area> is \"grouped\"; expected one of stacked, filled, overlaid"},
      {"<elements><bar bins='3'/></elements>",
       "16: <bar> has no attribute \"bins\"; expected one of arrangement, fill, opacity, override"},
      {"<elements><bar fill='#0072b'/></elements>",
       "16: fill of <bar> is \"#0072b\"; expected # and six hexadecimal digits, such as #0072b2"},
      {"<elements><bar opacity='1.1'/></elements>",
       "16: opacity of <bar> is \"1.1\"; expected a number from 0 to 1"},
      {"<elements><histogram bins='501'/></elements>",
       "22: bins of <histogram> is \"501\"; expected a whole number from 1 to 500"},
      {"<facet column='c'/>",
       "8: <facet> has no attribute \"column\"; expected one of columns, shared-x, shared-y, "
       "override"},
      {"<palette><color/></palette>", "10: <color> needs the attribute value"},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(TemplateFailure(Template("\n" + row.parts)), "line 2, column " + row.failure);
  }
}

// The same list is read by the Java classes' tests: what Java lets through must not fail here,
// where nobody hears the reason.
TEST(ChartTransformer, AgreesWithTheListOfTemplates) {
  std::ifstream list(CHARTBRIDGE_TEST_DATA "/chart-templates.txt");
  int count = 0;
  for (std::string line; std::getline(list, line);) {
    if (line.empty() || line[0] == '#') continue;
    const std::size_t tab = line.find('\t');
    ASSERT_NE(tab, std::string::npos) << line;
    std::string document = line.substr(tab + 1);
    for (std::size_t at = document.find("\\n"); at != std::string::npos;
         at = document.find("\\n", at)) {
      document.replace(at, 2, "\n");
    }
    std::string expected = line.substr(0, tab);
    if (expected != "ok") {
      const std::size_t colon = expected.find(':');
      expected = "line " + expected.substr(0, colon) + ", column " + expected.substr(colon + 1);
    }
    const std::string failure = TemplateFailure(document);
    EXPECT_EQ(failure == "none" ? "ok" : failure.substr(0, failure.find(": ")), expected)
        << document << "\n"
        << failure;
    ++count;
  }
  EXPECT_GT(count, 60);
}

TEST(ChartTransformer, CountsColumnsInCharacters) {
  for (const std::string grin : {kGrin, kJavaGrin}) {
    EXPECT_EQ(TemplateFailure(Template("\r\n<!-- \xC3\xBC" + grin + " --><x/>")).substr(0, 18),
              "line 2, column 12:");
  }
  EXPECT_EQ(TemplateFailure(Template("\r\r<x/>")).substr(0, 17), "line 3, column 1:");
}

TEST(ChartTransformer, ReadsLimitsAsChartsDo) {
  for (const char* good :
       {"0", "-1.5", "+.5", "1e3", "5.", "1e-400", "2024-02-29", " 7 ", "2024-01-31T12:00",
        "2024-01-31T12:00:30.5Z", "2024-01-31T00:00+14:00"}) {
    EXPECT_EQ(TemplateFailure(Template(std::string("<axes><x min='") + good + "'/></axes>")),
              "none")
        << good;
  }
  for (const char* bad : {"", "1e400", "0x10", "1,5", "nan", "inf", "2023-02-29", "2024-13-01",
                          "2024-1-31", "0000-01-01", "2024-01-31T24:00", "2024-01-31T12"}) {
    EXPECT_NE(TemplateFailure(Template(std::string("<axes><x min='") + bad + "'/></axes>")), "none")
        << bad;
  }
}

TEST(ChartTransformer, TakesSchemaHints) {
  const std::string hint =
      "xmlns:i='http://www.w3.org/2001/XMLSchema-instance' i:schemaLocation='a b'";
  EXPECT_EQ(TemplateFailure("<template xmlns='urn:chartbridge:template:1' " + hint + "/>"), "none");
  EXPECT_NE(TemplateFailure("<template xmlns='urn:chartbridge:template:1' xmlns:i='urn:x' "
                            "i:schemaLocation='a b'/>"),
            "none");
}

TEST(ChartTransformer, LeavesTheChartAloneWhenTheTemplateIsWrong) {
  ChartTransformer transformer(Chart("", " template=\"t\""));
  EXPECT_THROW(transformer.applyTemplate(Template("<legend title='t'/><style/>")),
               std::runtime_error);
  EXPECT_EQ(transformer.getEntireXML(ChartBase::_utf8),
            kDeclaration + Chart("", " template=\"t\""));
}

// A chart in which elements lie within each other, `levels` deep together with the chart itself.
std::string Nested(int levels) {
  std::string chart = "<chart xmlns=\"urn:chartbridge:chart:2\">";
  for (int i = 1; i < levels; ++i) chart += "<a>";
  for (int i = 1; i < levels; ++i) chart += "</a>";
  return chart + "</chart>";
}

// Nesting must not exhaust the stack.
TEST(ChartTransformer, TakesChartsUpToALimitOfDepth) {
  EXPECT_NE(Same(Nested(512)).find("<a/></a>"), std::string::npos);
  for (const int levels : {513, 200'000}) {
    try {
      ChartTransformer transformer(Nested(levels));
      FAIL() << levels << " levels were taken";
    } catch (const std::runtime_error& error) {
      EXPECT_NE(std::string(error.what()).find("nested more than 512 levels deep"),
                std::string::npos)
          << error.what();
    }
  }
}

}  // namespace
