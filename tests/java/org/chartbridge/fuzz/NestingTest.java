// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.fuzz;

import static java.nio.charset.StandardCharsets.UTF_8;
import static org.junit.jupiter.api.Assertions.assertEquals;
import static org.junit.jupiter.api.Assertions.assertFalse;
import static org.junit.jupiter.api.Assertions.assertNull;
import static org.junit.jupiter.api.Assertions.assertTrue;

import com.tesk.charteditor.ChartImager;
import com.tesk.java_client.core.documents.output.export.JsonImager;
import com.tesk.java_client.ex_access.ExKvoAdapter;
import com.tesk.treemodeleditor.TreeImager;
import com.tesk.vizconverter.VizConverter;
import java.nio.ByteBuffer;
import java.nio.file.Files;
import java.nio.file.Path;
import java.util.concurrent.Callable;
import java.util.concurrent.FutureTask;
import org.chartbridge.chart.ChartException;
import org.junit.jupiter.api.Test;
import org.junit.jupiter.api.io.TempDir;
import org.junit.jupiter.params.ParameterizedTest;
import org.junit.jupiter.params.provider.ValueSource;

/** Documents that nest deeply: 512 levels are read, 100,000 refused, on a stack of 1 MB. */
class NestingTest {
  private static final int MANY = 100_000;
  private static final long SMALL_STACK = 1 << 20;
  private static final String TOO_DEEP = "nested more than 512 levels deep";
  private static final String SVG = "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"9\""
      + " height=\"9\">";
  private static final String SHEET =
      "<xsl:stylesheet version=\"1.0\" xmlns:xsl=\"http://www.w3.org/1999/XSL/Transform\">";
  private static final String COPY = SHEET + "<xsl:template match=\"@*|node()\"><xsl:copy>"
      + "<xsl:apply-templates select=\"@*|node()\"/></xsl:copy></xsl:template></xsl:stylesheet>";
  private static final String PMML = "<PMML xmlns=\"http://www.dmg.org/PMML-4_4\" version=\"4.4\">"
      + "<Header/><DataDictionary><DataField name=\"a\" optype=\"continuous\""
      + " dataType=\"double\"/></DataDictionary><TreeModel functionName=\"regression\">"
      + "<MiningSchema><MiningField name=\"a\"/></MiningSchema>";
  private static final String PMML_END = "</TreeModel></PMML>";
  private static final String DOCUMENT = "<document xmlns=\"urn:chartbridge:document:1\">";
  private static final byte[] CHART = bytes("<chart xmlns=\"urn:chartbridge:chart:2\"><elements>"
      + "<point><x column=\"a\"/><y column=\"b\"/></point></elements><data>a,b\n1,2\n</data>"
      + "</chart>");

  @TempDir Path folder;

  private static byte[] bytes(String text) {
    return text.getBytes(UTF_8);
  }

  private static String nested(String open, String inside, String close, int levels) {
    return open.repeat(levels) + inside + close.repeat(levels);
  }

  /** The message of the failure, or null, on a thread with little stack. */
  private static String message(Callable<?> work) throws Exception {
    FutureTask<String> task = new FutureTask<>(() -> {
      try {
        Object answer = work.call();
        return answer instanceof String text && !text.isEmpty() ? text : null;
      } catch (ChartException e) {
        return e.getMessage();
      }
    });
    Thread thread = new Thread(null, task, "small", SMALL_STACK);
    thread.start();
    return task.get();
  }

  private static void refused(String place, Callable<?> work) throws Exception {
    String message = message(work);
    assertTrue(message != null && message.contains(TOO_DEEP), String.valueOf(message));
    assertTrue(message.matches("(?s).*line 1, column [0-9]+: .*"), message);
    assertTrue(message.contains(place), message);
  }

  private static byte[] render(byte[] chart) {
    return new ChartImager().RenderToMem(chart, (ByteBuffer) null, 5, 100, null, null, null, null);
  }

  @Test
  void chartsStylesAndTemplates() throws Exception {
    String deep = nested("<a>", "", "</a>", MANY);
    refused("", () -> render(bytes(deep)));
    refused("", () -> render(bytes("<chart xmlns=\"urn:chartbridge:chart:2\">" + deep)));
    refused("", () -> render(bytes("<chart xmlns=\"urn:chartbridge:chart:1\">" + deep)));
    refused("", () -> new ChartImager().RenderToMem(
        CHART, (ByteBuffer) null, 5, 100, null, null, null, bytes(deep)));
    refused("", () -> new ChartImager().EmbedHistogramInGraph(
        CHART, bytes(deep), ByteBuffer.allocateDirect(24), 1));
    refused("", () -> {
      VizConverter converter = new VizConverter();
      converter.ConvertXml(bytes(deep));
      return converter.getErrorMessage();
    });
  }

  @Test
  void templatesInFolders() throws Exception {
    Files.writeString(folder.resolve("t.xml"), nested("<a>", "", "</a>", MANY));
    System.setProperty("chartbridge.templates", folder.toString());
    try {
      refused("The template \"t\"", () -> render(
          bytes("<chart xmlns=\"urn:chartbridge:chart:2\" template=\"t\"><elements><bar>"
              + "<x column=\"a\"/></bar></elements></chart>")));
    } finally {
      System.clearProperty("chartbridge.templates");
    }
  }

  @ParameterizedTest
  @ValueSource(strings = {"(", "[", "{", "\"", "mean of ", "draw bar: ", "draw bar:\n  ", " ",
      "\n ", "column a: category ", "panels by ", "# "})
  void graphLanguage(String part) throws Exception {
    String text = "draw bar: x a, y " + part.repeat(MANY);
    String message = message(() -> render(bytes(text)));
    assertTrue(message == null || message.matches("(line |The data |the chart has ).*"),
        message);
  }

  @Test
  void svg() throws Exception {
    ChartImager imager = new ChartImager();
    String out = folder.resolve("o").toString();
    for (int type : new int[] {2, 6}) {
      refused("The SVG image", () -> imager.ConvertImage(
          bytes(SVG + nested("<g>", "", "</g>", MANY) + "</svg>"), out, type));
      String most = nested("<g>", "<rect width=\"5\" height=\"5\"/>", "</g>", 510);
      assertNull(message(() -> imager.ConvertImage(bytes(SVG + most + "</svg>"), out, type)));
    }
  }

  @Test
  void styleSheets() throws Exception {
    ChartImager imager = new ChartImager();
    byte[] deep = bytes(nested("<a>", "", "</a>", MANY));
    refused("The document", () -> imager.ApplyStyleSheet(deep, bytes(COPY)));
    refused("The style sheet", () -> imager.ApplyStyleSheet(CHART, deep));
    assertNull(message(() -> imager.ApplyStyleSheet(
        bytes(nested("<a>", "", "</a>", 512)), bytes(COPY))));
    assertNull(message(() -> imager.ApplyStyleSheet(CHART, bytes(SHEET
        + "<xsl:template match=\"/\">" + nested("<a>", "", "</a>", 510)
        + "</xsl:template></xsl:stylesheet>"))));
  }

  @ParameterizedTest
  @ValueSource(strings = {"( )", "a[ ]", "not( )", "- ", "a/ ", "1+ ", "concat(1, )", "//a|  "})
  void expressionsOfStyleSheets(String part) throws Exception {
    String open = part.substring(0, part.indexOf(' '));
    String close = part.substring(part.indexOf(' ') + 1).strip();
    byte[] sheet = bytes(SHEET + "<xsl:template match=\"/\"><xsl:value-of select=\""
        + nested(open, "1", close, MANY) + "\"/></xsl:template></xsl:stylesheet>");
    String message = message(() -> new ChartImager().ApplyStyleSheet(CHART, sheet));
    assertTrue(message.startsWith("The style sheet: "), message);
    assertFalse(message.contains("without end"), message);
  }

  private String tree(String inside) throws Exception {
    return message(() -> new TreeImager().renderToMemory(
        bytes(PMML + inside + PMML_END), null, 5, 100));
  }

  @Test
  void treeModels() throws Exception {
    String node = "<Node recordCount=\"1\"><True/>";
    assertNull(tree(nested(node, "", "</Node>", 509)));
    assertNull(tree("<Node>" + nested("<CompoundPredicate booleanOperator=\"and\"><True/>", "",
        "</CompoundPredicate>", 508) + "</Node>"));
    String[] parts = {node, "<Node>", "<CompoundPredicate booleanOperator=\"and\"><True/>",
        "<Extension>", "<DecisionTree functionName=\"regression\"><Node>", "<Array>"};
    for (String part : parts) {
      refused("PMML document", () -> new TreeImager().renderToMemory(
          bytes(PMML + "<Node>" + part.repeat(MANY)), null, 5, 100));
    }
    String segment = "<MiningModel functionName=\"regression\"><MiningSchema/><Segmentation"
        + " multipleModelMethod=\"sum\"><Segment><True/>";
    refused("PMML document", () -> new TreeImager().renderToMemory(bytes(
        PMML.substring(0, PMML.indexOf("<TreeModel")) + segment.repeat(MANY)), null, 5, 100));
    refused("Display data", () -> new TreeImager().renderToMemory(bytes(PMML + node + "</Node>"
        + PMML_END), bytes(nested("<a>", "", "</a>", MANY)), 5, 100));
  }

  @Test
  void schemasOfTreeModels() throws Exception {
    Files.writeString(folder.resolve("pmml-4-4.xsd"),
        "<xs:schema xmlns:xs=\"http://www.w3.org/2001/XMLSchema\"><xs:element name=\"a\">"
        + "<xs:complexType>" + nested("<xs:sequence>", "", "</xs:sequence>", MANY)
        + "</xs:complexType></xs:element></xs:schema>");
    TreeImager imager = new TreeImager();
    imager.setSchemaPath(folder.toString());
    refused("The schema ", () -> imager.renderToMemory(
        bytes(PMML + "<Node><True/></Node>" + PMML_END), null, 5, 100));
  }

  @Test
  void jsonDocuments() throws Exception {
    String deep = nested("[", "", "]", MANY);
    String objects = nested("{\"a\":", "1", "}", MANY);
    String out = folder.resolve("o").toString();
    for (String json : new String[] {deep, objects, "{\"map\": " + deep + "}"}) {
      refused("Options", () -> new JsonImager().exportInteractiveJsonToFile(
          "", CHART, out + "1", json, out + "2", 5));
      refused("", () -> new VizConverter().graphBoardConverterToXml(bytes(json)));
      if (!json.startsWith("[") && !json.startsWith("{\"map")) {
        continue;
      }
      refused("GeoJSON document 1", () -> {
        JsonImager imager = new JsonImager();
        imager.addGeoJson(bytes(json));
        return imager.exportInteractiveJsonToFile("", CHART, out + "1", null, out + "2", 5);
      });
    }
    String geometry = nested("{\"type\":\"GeometryCollection\",\"geometries\":[", "", "]}", 40);
    assertNull(message(() -> {
      JsonImager imager = new JsonImager();
      imager.addGeoJson(bytes("{\"type\":\"Feature\",\"properties\":{\"a\":"
          + nested("[", "", "]", 500) + "},\"geometry\":" + geometry + "}"));
      return imager.exportInteractiveJsonToFile("", CHART, out + "1", null, out + "2", 5);
    }));
  }

  /** A request has no use for lists at all, so they are refused before they get deep. */
  @Test
  void requests() throws Exception {
    ExKvoAdapter adapter = new ExKvoAdapter(true);
    assertEquals("request, line 1, column 1: a JSON object is expected",
        message(() -> adapter.exportOutput(nested("[", "", "]", MANY))));
    assertEquals("request, line 1, column 7: \"to\" is a string",
        message(() -> adapter.exportOutput("{\"to\":" + nested("{\"a\":", "1", "}", MANY))));
  }

  @Test
  void numbersOfManyDigits() throws Exception {
    String digits = "9".repeat(1_000_000);
    String out = folder.resolve("o").toString();
    String message = message(() -> new JsonImager().exportInteractiveJsonToFile(
        "", CHART, out + "1", "{\"zoom\": " + digits + "}", out + "2", 5));
    assertTrue(message.matches("Options: line 1, column [0-9]+: .*1000.*"), message);
  }

  private String export(String document, String to) throws Exception {
    return message(() -> {
      ExKvoAdapter adapter = new ExKvoAdapter(true);
      adapter.createOutputDocument(ByteBuffer.wrap(bytes(document)), "d");
      return adapter.exportOutput("{\"to\": \"" + to + "\", \"output\": \""
          + folder.resolve("o") + "\"}");
    });
  }

  @Test
  void documentsNestNoDeeperThanPagesShow() throws Exception {
    assertEquals("line 1, column 377: texts are nested more than 32 levels deep",
        export(DOCUMENT + "<paragraph>" + nested("<emphasis>", "a", "</emphasis>", 33)
            + "</paragraph></document>", "html"));
    assertEquals("line 1, column 254: lists are nested more than 16 levels deep",
        export(DOCUMENT + nested("<list><item>a", "", "</item></list>", 17) + "</document>",
            "html"));
  }

  @Test
  void documents() throws Exception {
    for (String part : new String[] {"<paragraph><emphasis>", "<list><item>a",
        "<chart><description>", "<a>"}) {
      refused("", () -> {
        String document = DOCUMENT + part.repeat(MANY);
        new ExKvoAdapter(true).createOutputDocument(ByteBuffer.wrap(bytes(document)), "d");
        return null;
      });
    }
    String emphasis = DOCUMENT + "<paragraph>" + nested("<emphasis>", "a", "</emphasis>", 32)
        + "</paragraph></document>";
    String lists = DOCUMENT + nested("<list><item>a", "", "</item></list>", 16) + "</document>";
    for (String to : new String[] {"html", "text", "odt", "pdf"}) {
      assertNull(export(emphasis, to), to);
      assertNull(export(lists, to), to);
    }
  }
}
