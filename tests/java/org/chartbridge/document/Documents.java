// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.document;

import java.nio.charset.Charset;
import java.nio.charset.StandardCharsets;
import java.nio.file.Path;
import org.chartbridge.document.export.DocumentExport;
import org.chartbridge.document.export.RequestReader;
import org.chartbridge.document.format.DocumentSource;
import org.chartbridge.document.format.SourceFolder;
import org.chartbridge.document.model.Document;
import org.chartbridge.tree.Models;

/** Documents to test with. */
public final class Documents {
  public static final Path SOURCE = Path.of(System.getProperty("chartbridge.source", "."));
  public static final Path EXAMPLE = SOURCE.resolve("examples/documents/air-quality.xml");

  /** A picture of one pixel. */
  public static final String PNG =
      "iVBORw0KGgoAAAANSUhEUgAAAAEAAAABCAYAAAAfFcSJAAAADUlEQVR42mNkYPhfDw"
      + "AChwGA60e6kgAAAABJRU5ErkJggg==";

  public static final String CHART = "<chart caption=\"Sales\"><description>"
      + "title \"Sales by region\"\nsize 400 by 300\ndraw bar: x region, y sum of sales"
      + "</description><data>\nregion,sales\nNorth,12\nSouth,30\n</data></chart>";

  private Documents() {}

  /** A document with that content. */
  public static String xml(String body) {
    return xml("", body);
  }

  public static String xml(String attributes, String body) {
    return "<document xmlns=\"urn:chartbridge:document:1\"" + attributes + ">" + body
        + "</document>";
  }

  /** A tree model as it stands in a document. */
  public static String tree() {
    String pmml = new String(Models.example("iris"), StandardCharsets.UTF_8);
    return "<tree caption=\"Iris\"><model>" + pmml.substring(pmml.indexOf("<PMML"))
        + "</model></tree>";
  }

  /** One block of every kind. */
  public static String everything() {
    return xml(" title=\"All &amp; more\" subtitle=\"Everything there is\" author=\"Ann\""
            + " date=\"2024-02-29\" language=\"en\"",
        "<contents title=\"Overview\" depth=\"2\"/>"
            + "<heading id=\"one\">First <emphasis>part</emphasis></heading>"
            + "<paragraph>Plain, <emphasis>slanted</emphasis>, <strong>bold</strong> and"
            + " <code>code &lt;x&gt;</code>;<break/>a"
            + " <link to=\"https://example.org/?a=1&amp;b=2\">way out</link> and"
            + " <link to=\"#two\">one further down</link>.</paragraph>"
            + "<paragraph align=\"center\">In the middle</paragraph>"
            + "<heading level=\"2\" id=\"two\">Second part</heading>"
            + "<list><item>bullet</item><item>above<list kind=\"number\" start=\"3\">"
            + "<item>third</item><item>fourth</item></list></item></list>"
            + "<table caption=\"Figures\"><column/><column align=\"right\"/><column/>"
            + "<header><row><cell rowspan=\"2\">Name</cell><cell colspan=\"2\">Both</cell></row>"
            + "<row><cell>Left</cell><cell>Right</cell></row></header>"
            + "<row><cell header=\"true\">a</cell><cell>1.5</cell>"
            + "<cell rowspan=\"2\">x, \"y\"</cell></row>"
            + "<row><cell header=\"true\">b</cell><cell>22<break/>33</cell></row></table>"
            + CHART + tree()
            + "<image alt=\"A dot\" width=\"40\">" + PNG + "</image>"
            + "<page-break/><heading level=\"3\">Third level</heading>"
            + "<paragraph>The end.</paragraph>");
  }

  public static DocumentSource source(String xml) {
    return DocumentSource.read(xml.getBytes(StandardCharsets.UTF_8), SourceFolder.NONE);
  }

  public static Document read(String xml) {
    return source(xml).document();
  }

  /** Exports to a file, in UTF-8 where that is a question, by a request with more options. */
  public static void export(String xml, Path output, String options) {
    export(xml, output, options, StandardCharsets.UTF_8);
  }

  public static void export(String xml, Path output, String options, Charset charset) {
    String request = "{\"output\":\"" + output + "\"" + options + "}";
    DocumentExport.run(read(xml), RequestReader.read(request), charset);
  }
}
