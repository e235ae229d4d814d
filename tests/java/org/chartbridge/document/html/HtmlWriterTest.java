// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.document.html;

import static org.junit.jupiter.api.Assertions.assertEquals;
import static org.junit.jupiter.api.Assertions.assertFalse;
import static org.junit.jupiter.api.Assertions.assertNull;
import static org.junit.jupiter.api.Assertions.assertTrue;

import java.io.IOException;
import java.nio.charset.StandardCharsets;
import java.nio.file.Files;
import java.nio.file.Path;
import java.util.ArrayList;
import java.util.Base64;
import java.util.List;
import org.chartbridge.document.Documents;
import org.chartbridge.xml.SafeXml;
import org.chartbridge.xml.XmlElement;
import org.junit.jupiter.api.Test;
import org.junit.jupiter.api.io.TempDir;

class HtmlWriterTest {
  @TempDir Path folder;

  private String html(String xml, String options) throws IOException {
    Path file = folder.resolve("out.html");
    Documents.export(xml, file, options);
    return Files.readString(file);
  }

  /** The page as XML, which it is too. */
  private XmlElement page(String xml) throws IOException {
    String html = html(xml, "");
    String start = "<!DOCTYPE html>\n";
    assertTrue(html.startsWith(start), html.substring(0, 40));
    return SafeXml.parse(html.substring(start.length()).getBytes(StandardCharsets.UTF_8));
  }

  private static List<XmlElement> all(XmlElement root, String name) {
    List<XmlElement> found = new ArrayList<>();
    if (root.name().equals(name)) {
      found.add(root);
    }
    root.children().forEach(child -> found.addAll(all(child, name)));
    return found;
  }

  private String body(String xml) throws IOException {
    String html = html(xml, "");
    return html.substring(html.indexOf("<main>\n") + 7, html.indexOf("</main>"));
  }

  @Test
  void writesTheBlocks() throws IOException {
    String html = body(Documents.everything());
    for (String part : List.of(
        "<header>\n<h1>All &amp; more</h1>\n<p class=\"subtitle\">Everything there is</p>\n"
            + "<p class=\"byline\">Ann \u00B7 <time datetime=\"2024-02-29\">2024-02-29</time></p>",
        "<nav class=\"contents\" aria-label=\"Overview\">\n"
            + "<p class=\"contents-title\">Overview</p>\n<ul>\n"
            + "<li><a href=\"#one\">First <em>part</em></a><ul>\n"
            + "<li><a href=\"#two\">Second part</a></li></ul>\n</li></ul>\n</nav>",
        "<h2 id=\"one\">First <em>part</em></h2>",
        "<h3 id=\"two\">Second part</h3>",
        "<p>Plain, <em>slanted</em>, <strong>bold</strong> and <code>code &lt;x&gt;</code>;<br/>a "
            + "<a href=\"https://example.org/?a=1&amp;b=2\">way out</a> and "
            + "<a href=\"#two\">one further down</a>.</p>",
        "<p class=\"center\">In the middle</p>",
        "<ul>\n<li>bullet</li>\n<li>above\n<ol start=\"3\">\n<li>third</li>\n<li>fourth</li>\n"
            + "</ol>\n</li>\n</ul>",
        "<table>\n<caption>Figures</caption>\n<thead>",
        "<thead>\n<tr><th scope=\"col\" rowspan=\"2\">Name</th><th scope=\"colgroup\" colspan=\"2\""
            + " class=\"right\">Both</th></tr>",
        "<tbody>\n<tr><th scope=\"row\">a</th><td class=\"right\">1.5</td>"
            + "<td rowspan=\"2\">x, &quot;y&quot;</td></tr>",
        "<td class=\"right\">22<br/>33</td>",
        "alt=\"Sales\" width=\"400\" height=\"300\"/>\n<figcaption>Sales</figcaption>",
        "<img src=\"data:image/png;base64," + Documents.PNG + "\" alt=\"A dot\" width=\"40\""
            + " height=\"40\"/>\n</figure>",
        "<hr class=\"page-break\"/>",
        "<h4 id=\"section-3\">Third level</h4>")) {
      assertTrue(html.contains(part), part + "\n is not in\n" + html);
    }
  }

  @Test
  void needsNothingElse() throws IOException {
    XmlElement page = page(Documents.everything());
    assertEquals("en", page.attribute("lang"));
    for (XmlElement image : all(page, "img")) {
      assertTrue(image.attribute("src").startsWith("data:image/"), image.attribute("src"));
      assertFalse(image.attribute("alt").isEmpty());
    }
    assertEquals(3, all(page, "img").size());
    for (String name : List.of("script", "link", "iframe", "object", "base")) {
      assertEquals(List.of(), all(page, name), name);
    }
    String style = all(page, "style").get(0).text();
    assertFalse(style.contains("url(") || style.contains("@import"), style);
    assertTrue(style.contains("@page { size: A4;"), style);
    assertFalse(style.contains("SPDX"), style);
    XmlElement policy = all(page, "meta").get(1);
    assertEquals("Content-Security-Policy", policy.attribute("http-equiv"));
  }

  @Test
  void drawsFiguresAsVectors() throws IOException {
    XmlElement image = all(page(Documents.xml(Documents.CHART)), "img").get(0);
    String start = "data:image/svg+xml;base64,";
    assertTrue(image.attribute("src").startsWith(start));
    byte[] svg = Base64.getDecoder().decode(image.attribute("src").substring(start.length()));
    assertTrue(new String(svg, StandardCharsets.UTF_8).contains("Sales by region"));
    assertEquals("svg", SafeXml.parse(svg).name());
  }

  @Test
  void escapesWhatTextsSay() throws IOException {
    String xml = Documents.xml(" title=\"&lt;script>&quot;\"", "<heading>&lt;b> &amp;amp;</heading>"
        + "<paragraph><link to=\"https://e.org/&quot;onclick=x\">&lt;/a></link></paragraph>"
        + "<image alt=\"&quot;>&lt;script>\">" + Documents.PNG + "</image>");
    XmlElement page = page(xml);
    assertEquals(List.of(), all(page, "script"));
    assertEquals("<script>\"", all(page, "title").get(0).text());
    assertEquals("<b> &amp;", all(page, "h2").get(0).text());
    assertEquals("\"><script>", all(page, "img").get(0).attribute("alt"));
    assertEquals("https://e.org/\"onclick=x", all(page, "a").get(0).attribute("href"));
    assertNull(all(page, "a").get(0).attribute("onclick"));
  }

  @Test
  void beginsWithTheFirstHeadingWhenThereIsNoTitle() throws IOException {
    String html = body(Documents.xml("<heading>a</heading><heading level=\"6\">b</heading>"));
    assertTrue(html.contains("<h1 id=\"section-1\">a</h1>"), html);
    assertTrue(html.contains("<h6 id=\"section-2\">b</h6>"), html);
    assertFalse(html.contains("<header>"), html);
  }

  @Test
  void givesColumnsTheirShare() throws IOException {
    String html = body(Documents.xml("<table><column width=\"40\"/><column/><row><cell>a</cell>"
        + "<cell>b</cell></row></table>"));
    assertTrue(html.contains("<table class=\"full\">\n<colgroup><col style=\"width:40.00%\"/><col/>"
        + "</colgroup>"), html);
  }

  @Test
  void nestsContentsOfAnyOrder() throws IOException {
    String html = body(Documents.xml("<contents title=\"\" depth=\"6\"/>"
        + "<heading level=\"3\">a</heading><heading level=\"1\">b</heading>"
        + "<heading level=\"4\">c</heading><heading level=\"2\">d</heading>"
        + "<heading level=\"1\">e</heading>"));
    String nav = html.substring(html.indexOf("<nav"), html.indexOf("</nav>"));
    String shape = nav.replaceAll("<a [^>]*>|</a>|<nav[^>]*>|\\s", "");
    assertEquals("<ul><li>a</li><li>b<ul><li>c</li><li>d</li></ul></li><li>e</li></ul>", shape);
  }

  @Test
  void takesLanguageAndPaperOfTheRequest() throws IOException {
    String chart = Documents.CHART.replace("North,12", "North,12000.5");
    String html = html(Documents.xml(chart), ",\"language\":\"de\",\"paper\":\"letter\"");
    assertTrue(html.contains("<html lang=\"de\">"));
    assertTrue(html.contains("@page { size: letter;"));
    assertFalse(html.equals(html(Documents.xml(chart), ",\"language\":\"en\",\"paper\":\"letter\"")
        .replace("lang=\"en\"", "lang=\"de\"")));
  }

  @Test
  void takesTheStyleOfTheRequest() throws IOException {
    String xml = Documents.xml(Documents.CHART + Documents.tree());
    String plain = html(xml, "");
    String dark = html(xml, ",\"style\":\"dark\"");
    assertEquals(plain, html(xml, ",\"style\":\"print\""));
    assertFalse(plain.equals(dark));
    String ownStyle = Documents.xml(
        Documents.CHART.replace("<chart", "<chart style=\"dark\"") + Documents.tree());
    assertFalse(plain.equals(html(ownStyle, "")));
    assertEquals(dark, html(ownStyle, ",\"style\":\"dark\""));
  }

  @Test
  void runsTheWayOfItsLanguage() throws IOException {
    String page = html(Documents.xml(" language=\"ar\"", "<heading>\u0639\u0631\u0628\u064A</heading>"
        + "<paragraph>English</paragraph><paragraph>\u0639 2024-01-31</paragraph><table><row>"
        + "<cell>English</cell><cell>\u0639</cell></row></table>"), "");
    assertTrue(page.contains("<html lang=\"ar\" dir=\"rtl\">"), page);
    assertTrue(page.contains("<p dir=\"ltr\">English</p>"), page);
    assertTrue(
        page.contains("<p>\u0639 <bdi class=\"whole\" dir=\"ltr\">2024-01-31</bdi></p>"), page);
    assertTrue(
        page.contains("<td class=\"right\" dir=\"ltr\">English</td><td>\u0639</td>"), page);
    String english = html(Documents.xml(" language=\"en\"", "<list><item>\u05D0</item></list>"), "");
    assertTrue(english.contains("<html lang=\"en\">"), english);
    assertTrue(english.contains("<ul dir=\"rtl\">"), english);
    String untold = html(Documents.xml("<paragraph>\u05D0</paragraph>"), "");
    assertTrue(untold.contains("dir=\"rtl\">\n<head>"), untold);
  }

  /** Browsers would break them there. */
  @Test
  void holdsNumbersAndDatesTogether() throws IOException {
    String page = html(Documents.xml("<table><row><cell>1,234.5</cell><cell>15-Mar-2024</cell>"
        + "<cell>12 345 678</cell><cell>2024-01-31</cell></row></table>"), "");
    assertTrue(page.contains("<td>1,234.5</td><td><span class=\"whole\">15-Mar-2024</span></td>"
        + "<td><span class=\"whole\">12 345 678</span></td><td>2024-01-31</td>"), page);
    assertTrue(page.contains(".whole { white-space: nowrap; }"), page);
  }
}
