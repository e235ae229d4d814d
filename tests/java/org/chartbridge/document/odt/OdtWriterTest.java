// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.document.odt;

import static org.junit.jupiter.api.Assertions.assertArrayEquals;
import static org.junit.jupiter.api.Assertions.assertEquals;
import static org.junit.jupiter.api.Assertions.assertTrue;

import java.io.IOException;
import java.nio.charset.StandardCharsets;
import java.nio.file.Files;
import java.nio.file.Path;
import java.util.ArrayList;
import java.util.LinkedHashMap;
import java.util.List;
import java.util.Map;
import java.util.Set;
import java.util.TreeSet;
import java.util.regex.Matcher;
import java.util.regex.Pattern;
import java.util.zip.ZipEntry;
import java.util.zip.ZipInputStream;
import org.chartbridge.document.Documents;
import org.chartbridge.xml.SafeXml;
import org.chartbridge.xml.XmlElement;
import org.junit.jupiter.api.Test;
import org.junit.jupiter.api.io.TempDir;

class OdtWriterTest {
  private static final String STYLE_NAME =
      "{urn:oasis:names:tc:opendocument:xmlns:style:1.0}name";

  @TempDir Path folder;

  private byte[] odt(String xml) throws IOException {
    Path file = folder.resolve("out.odt");
    Documents.export(xml, file, "");
    return Files.readAllBytes(file);
  }

  private Map<String, byte[]> files(String xml) throws IOException {
    Map<String, byte[]> files = new LinkedHashMap<>();
    try (ZipInputStream in = new ZipInputStream(
             new java.io.ByteArrayInputStream(odt(xml)))) {
      for (ZipEntry entry = in.getNextEntry(); entry != null; entry = in.getNextEntry()) {
        files.put(entry.getName(), in.readAllBytes());
      }
    }
    return files;
  }

  private String content(String xml) throws IOException {
    String content = new String(files(xml).get("content.xml"), StandardCharsets.UTF_8);
    return content.substring(content.indexOf("<office:text>"));
  }

  private static List<XmlElement> all(XmlElement root, String name) {
    List<XmlElement> found = new ArrayList<>();
    if (root.name().equals(name)) {
      found.add(root);
    }
    root.children().forEach(child -> found.addAll(all(child, name)));
    return found;
  }

  @Test
  void canBeToldFromItsFirstBytes() throws IOException {
    byte[] bytes = odt(Documents.xml("<page-break/>"));
    String start = new String(bytes, 0, 77, StandardCharsets.ISO_8859_1);
    assertTrue(start.startsWith("PK\u0003\u0004"), start);
    assertEquals("mimetypeapplication/vnd.oasis.opendocument.text", start.substring(30));
  }

  @Test
  void listsAllItsFiles() throws IOException {
    Map<String, byte[]> files = files(Documents.everything());
    assertEquals("mimetype", files.keySet().iterator().next());
    Set<String> listed = new TreeSet<>();
    for (XmlElement entry : all(SafeXml.parse(files.get("META-INF/manifest.xml")), "file-entry")) {
      entry.attributes().forEach((name, value) -> {
        if (name.endsWith("}full-path")) {
          listed.add(value);
        }
      });
    }
    Set<String> expected = new TreeSet<>(files.keySet());
    expected.removeAll(Set.of("mimetype", "META-INF/manifest.xml"));
    expected.add("/");
    assertEquals(expected, listed);
  }

  @Test
  void writesTheBlocks() throws IOException {
    String content = content(Documents.everything());
    for (String part : List.of(
        "<text:p text:style-name=\"Title\">All &amp; more</text:p>",
        "<text:p text:style-name=\"Subtitle\">Everything there is</text:p>",
        "<text:p text:style-name=\"Byline\">Ann \u00B7 2024-02-29</text:p>",
        "<text:h text:style-name=\"Heading_20_1\" text:outline-level=\"1\">"
            + "<text:bookmark-start text:name=\"one\"/>First "
            + "<text:span text:style-name=\"Emphasis\">part</text:span>",
        "<text:span text:style-name=\"Code\">code &lt;x&gt;</text:span>;<text:line-break/>a ",
        "xlink:href=\"https://example.org/?a=1&amp;b=2\"",
        "<text:p text:style-name=\"Text_20_center\">In the middle</text:p>",
        "<text:list text:style-name=\"Bullets\">",
        "<text:list-item text:start-value=\"3\"><text:p text:style-name=\"List_20_item\">third",
        "<text:p text:style-name=\"Table_20_caption\">Figures</text:p>",
        "table:number-rows-spanned=\"2\"><text:p text:style-name=\"Table_20_text\">"
            + "<text:span text:style-name=\"Strong\">Name</text:span>",
        "<svg:desc>Sales</svg:desc>",
        "<text:p text:style-name=\"Figure_20_caption\">Iris</text:p>",
        "<svg:desc>A dot</svg:desc>",
        "<text:p text:style-name=\"Page_20_break\"/>",
        "<text:bookmark-ref text:reference-format=\"page\" text:ref-name=\"two\">")) {
      assertTrue(content.contains(part), part + "\n is not in\n" + content);
    }
  }

  /** Every place of the grid is a cell or is covered by one. */
  @Test
  void coversThePlacesOfSpans() throws IOException {
    String content = content(Documents.everything());
    List<String> rows = new ArrayList<>();
    Matcher row = Pattern.compile("<table:table-row>(.*?)</table:table-row>").matcher(content);
    while (row.find()) {
      rows.add(row.group(1).replaceAll("<table:table-cell.*?</table:table-cell>", "c")
          .replace("<table:covered-table-cell/>", "-"));
    }
    assertEquals(List.of("cc-", "-cc", "ccc", "cc-"), rows);
    assertTrue(content.indexOf("</table:table-header-rows>") > content.indexOf(">Right<"));
  }

  @Test
  void usesOnlyStylesThatThereAre() throws IOException {
    Map<String, byte[]> files = files(Documents.everything());
    Set<String> known = new TreeSet<>();
    for (String part : List.of("styles.xml", "content.xml")) {
      XmlElement root = SafeXml.parse(files.get(part));
      for (String name : List.of("style", "list-style")) {
        all(root, name).forEach(style -> known.add(style.attribute(STYLE_NAME)));
      }
    }
    Matcher used = Pattern.compile("(?:text|table|draw):style-name=\"([^\"]+)\"")
        .matcher(content(Documents.everything()));
    int count = 0;
    while (used.find()) {
      count++;
      assertTrue(known.contains(used.group(1)), used.group(1));
    }
    assertTrue(count > 40);
  }

  @Test
  void hasASvgAndAPngOfWhatIsDrawn() throws IOException {
    Map<String, byte[]> files = files(Documents.everything());
    assertEquals("svg", SafeXml.parse(files.get("Pictures/figure-1.svg")).name());
    assertEquals(0x89, files.get("Pictures/figure-1.png")[0] & 0xFF);
    assertArrayEquals(
        java.util.Base64.getDecoder().decode(Documents.PNG), files.get("Pictures/figure-3.png"));
    String content = content(Documents.everything());
    assertTrue(content.indexOf("figure-2.svg") < content.indexOf("figure-2.png"));
    assertTrue(content.contains("svg:width=\"105.83mm\" svg:height=\"79.38mm\""), content);
  }

  @Test
  void saysWhatItIs() throws IOException {
    Map<String, byte[]> files = files(Documents.everything());
    String meta = new String(files.get("meta.xml"), StandardCharsets.UTF_8);
    assertTrue(meta.contains("<dc:title>All &amp; more</dc:title>"), meta);
    assertTrue(meta.contains("<dc:creator>Ann</dc:creator>"), meta);
    assertTrue(meta.contains("<dc:date>2024-02-29T00:00:00</dc:date>"), meta);
    String styles = new String(files.get("styles.xml"), StandardCharsets.UTF_8);
    assertTrue(styles.contains("fo:page-width=\"210.0mm\""), styles);
    assertTrue(styles.contains("fo:language=\"en\""), styles);
    assertTrue(styles.contains(">All &amp; more<text:tab/>"), styles);
    assertTrue(!styles.contains("@") && !styles.contains("SPDX"), styles);
  }

  @Test
  void isTheSameForTheSameDocument() throws IOException {
    assertArrayEquals(odt(Documents.everything()), odt(Documents.everything()));
  }

  private String styles(String xml) throws IOException {
    return new String(files(xml).get("styles.xml"), StandardCharsets.UTF_8);
  }

  @Test
  void runsTheWayOfItsLanguage() throws IOException {
    String xml = Documents.xml(" language=\"he\"", "<paragraph>\u05D0 2024-01-31</paragraph>"
        + "<paragraph>English</paragraph><table><row><cell>\u05D0</cell></row></table>");
    assertTrue(styles(xml).contains("style:writing-mode=\"rl-tb\""), styles(xml));
    String whole = new String(files(xml).get("content.xml"), StandardCharsets.UTF_8);
    assertTrue(whole.contains("\u05D0 \u200E2024-01-31\u200F</text:p>"), whole);
    assertTrue(whole.contains("style:parent-style-name=\"Text_20_body\"><style:paragraph-properties"
        + " style:writing-mode=\"lr-tb\"/>"), whole);
    assertTrue(whole.contains("table:align=\"right\" style:writing-mode=\"rl-tb\""), whole);
    assertTrue(styles(Documents.xml("<paragraph>a</paragraph>"))
        .contains("style:writing-mode=\"lr-tb\""));
  }

  @Test
  void turnsPagesForWideTables() throws IOException {
    String cells = "<cell>-123,456,789</cell>".repeat(11);
    String xml = Documents.xml("<heading>Above</heading><table caption=\"Wide\"><row>" + cells
        + "</row></table><paragraph>Behind</paragraph>");
    String content = content(xml);
    int turned = content.indexOf("\"Turned_20_page\"");
    int upright = content.indexOf("\"Upright_20_page\"");
    assertTrue(turned >= 0 && turned < content.indexOf("Above"), content);
    assertTrue(upright > content.indexOf("table:table") && upright < content.indexOf("Behind"));
    assertTrue(styles(xml).contains("style:print-orientation=\"landscape\""));
  }

  @Test
  void holdsDatesTogether() throws IOException {
    String content = content(Documents.xml("<table><row><cell>15-Mar-2024</cell>"
        + "<cell>12 345</cell><cell>2024-01-31</cell></row></table>"));
    assertTrue(content.contains(">15-\u2060Mar-2024<"), content);
    assertTrue(content.contains(">12\u00A0345<"), content);
    assertTrue(content.contains(">2024-01-31<"), content);
  }
}
