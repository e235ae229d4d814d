// SPDX-License-Identifier: Apache-2.0
#include "platform/ChartTransformer.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

#include "platform/ChartBase.h"

namespace {

constexpr char kDeclaration[] = R"(<?xml version="1.0" encoding="UTF-8"?>)";

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

TEST(ChartTransformer, KeepsTheWholeChart) {
  const std::string body = "<!-- c --><chart a=\"1\">\n  text &amp; <![CDATA[<x>]]> <b/>\n</chart>";
  EXPECT_EQ(Same(body), kDeclaration + body);
  EXPECT_EQ(Same("<?xml version='1.0' encoding='UTF-16' standalone='yes'?><c/>"),
            R"(<?xml version="1.0" encoding="UTF-8" standalone="yes"?><c/>)");
}

TEST(ChartTransformer, AddsWhatTheChartLacks) {
  EXPECT_EQ(
      Transform("<chart a=\"1\"><x>own</x></chart>",
                "<template a=\"2\" b=\"3\"><x>theirs</x><y n=\"1\"><z/></y><y/>text</template>"),
      std::string(kDeclaration) +
          "<chart a=\"1\" b=\"3\"><x>own</x><y n=\"1\"><z/></y><y/></chart>");
}

TEST(ChartTransformer, AddsToAnEmptyChart) {
  EXPECT_EQ(Transform("<chart/>", "<t><y/><y/></t>"),
            std::string(kDeclaration) + "<chart><y/><y/></chart>");
}

TEST(ChartTransformer, FillsOnceWhenAppliedTwice) {
  ChartTransformer transformer("<chart/>");
  transformer.applyTemplate("<t b=\"3\"><y/></t>");
  transformer.applyTemplate("<t b=\"4\"><y/><z/></t>");
  EXPECT_EQ(transformer.getEntireXML(ChartBase::_utf8),
            std::string(kDeclaration) + "<chart b=\"3\"><y/><z/></chart>");
}

// Java hands texts over in modified UTF-8 and takes the result back as such: characters beyond the
// basic plane must be the same bytes in both.
TEST(ChartTransformer, SurvivesModifiedUtf8) {
  EXPECT_EQ(Same("<c t=\"\xED\xA0\xBD\xED\xB8\x80\">\xC3\xBC\xED\xA0\xBD\xED\xB8\x80</c>"),
            std::string(kDeclaration) + "<c t=\"&#128512;\">\xC3\xBC&#128512;</c>");
}

TEST(ChartTransformer, WritesTheNamedEncoding) {
  ChartTransformer transformer("<c>\xC3\xBC\xE2\x82\xAC</c>");
  const unsigned short latin1[] = {'I', 'S', 'O', '-', '8', '8', '5', '9', '-', '1', 0};
  EXPECT_EQ(transformer.getEntireXML(latin1),
            "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?><c>\xFC&#8364;</c>");
  EXPECT_EQ(transformer.getEntireXML(ChartBase::_utf8),
            std::string(kDeclaration) + "<c>\xC3\xBC\xE2\x82\xAC</c>");
  const unsigned short unknown[] = {'n', 'o', 'n', 'e', 0};
  EXPECT_THROW(transformer.getEntireXML(unknown), std::runtime_error);
}

TEST(ChartTransformer, SaysWhatIsWrong) {
  EXPECT_EQ(FailureOf("<chart>", "<t/>").find("the chart is not well-formed XML: "), 0U);
  EXPECT_EQ(FailureOf("", "<t/>").find("the chart is not well-formed XML: "), 0U);
  EXPECT_EQ(FailureOf("<chart/>", "<t").find("the template is not well-formed XML: "), 0U);
  EXPECT_EQ(FailureOf("<!-- only -->", "<t/>").find("the chart "), 0U);
}

TEST(ChartTransformer, LeavesTheChartAloneWhenTheTemplateIsWrong) {
  ChartTransformer transformer("<chart/>");
  EXPECT_THROW(transformer.applyTemplate("<t a='1'><y></t>"), std::runtime_error);
  EXPECT_EQ(transformer.getEntireXML(ChartBase::_utf8), std::string(kDeclaration) + "<chart/>");
}

// Entities of the document's own are no way to make a small chart large.
TEST(ChartTransformer, ExpandsNoEntities) {
  const std::string bomb = "<!DOCTYPE c [<!ENTITY a \"aaaaaaaaaa\">]><c>&a;&a;</c>";
  EXPECT_EQ(Same(bomb).find("aaaaaaaaaaaaaaaaaaaa"), std::string::npos);
}

}  // namespace
