// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.fuzz;

import static java.nio.charset.StandardCharsets.UTF_8;

import com.tesk.charteditor.ChartImager;
import com.tesk.java_client.core.documents.output.export.JsonImager;
import com.tesk.java_client.ex_access.ExKvoAdapter;
import com.tesk.treemodeleditor.TreeImager;
import com.tesk.vizconverter.VizConverter;
import java.awt.Color;
import java.awt.Graphics2D;
import java.awt.image.BufferedImage;
import java.io.ByteArrayOutputStream;
import java.io.IOException;
import java.nio.ByteBuffer;
import java.nio.ByteOrder;
import java.nio.file.Files;
import java.nio.file.Path;
import java.util.ArrayList;
import java.util.List;
import java.util.zip.GZIPOutputStream;
import javax.imageio.ImageIO;
import org.chartbridge.chart.ChartException;
import org.chartbridge.format.DocumentedBlocks;
import org.chartbridge.format.GraphConversion;

/** All that hosts can hand to the Java classes, with inputs that are right. */
final class FuzzTargets {
  private static final int JPEG = 1;
  private static final int PNG = 2;
  private static final int BMP = 3;
  private static final int GIF = 4;
  private static final int SVG = 5;
  private static final int PDF = 6;
  private static final int IMAGE_MAP = 7;

  private static final String CHART =
      "size 300 by 200\ndraw point: x a, y b, color g\npanels by g\n";
  private static final String ROWS = "a,b,g\n1,2.5,x\n2,NA,y\n3,7,x\n-4,1e3,\"z \"\"q\"\"\"\n";

  private final Path source = Path.of(System.getProperty("chartbridge.source"));
  private final Path folder;
  private final List<FuzzTarget> targets = new ArrayList<>();
  private final ChartImager charts = new ChartImager();
  private final TreeImager trees = new TreeImager();
  private final VizConverter converter = new VizConverter();
  private final JsonImager json = new JsonImager();

  private FuzzTargets(Path folder) {
    this.folder = folder;
  }

  /** @param folder a folder for what is written; its files are written over again and again */
  static List<FuzzTarget> all(Path folder) throws IOException {
    FuzzTargets made = new FuzzTargets(folder);
    made.charts();
    made.besideCharts();
    made.chartJson();
    made.conversions();
    made.trees();
    made.documents();
    made.images();
    return List.copyOf(made.targets);
  }

  private void add(String name, int weight, List<byte[]> seeds, FuzzTarget.Reader reader) {
    targets.add(new FuzzTarget(name, true, weight, seeds, reader));
  }

  private void addBinary(String name, int weight, List<byte[]> seeds, FuzzTarget.Reader reader) {
    targets.add(new FuzzTarget(name, false, weight, seeds, reader));
  }

  private byte[] file(String path) throws IOException {
    return Files.readAllBytes(source.resolve(path));
  }

  private static byte[] bytes(String text) {
    return text.getBytes(UTF_8);
  }

  private static List<byte[]> texts(String... texts) {
    List<byte[]> list = new ArrayList<>();
    for (String text : texts) {
      list.add(bytes(text));
    }
    return list;
  }

  private static List<byte[]> documented(String file, String language) throws IOException {
    return new ArrayList<>(
        DocumentedBlocks.of(file, language).stream().map(FuzzTargets::bytes).toList());
  }

  /** Type and size follow from the input, so that all come up and the same input does the same. */
  private static int choice(byte[] input, int... choices) {
    return choices[Math.floorMod(java.util.Arrays.hashCode(input), choices.length)];
  }

  private byte[] render(byte[] chart, byte[] rows, byte[] texts, byte[] style) {
    int type = choice(chart, SVG, SVG, SVG, PNG, IMAGE_MAP, PDF);
    ByteBuffer data = rows == null ? null : ByteBuffer.wrap(rows);
    return charts.RenderToMem(chart, data, type, 100, "de", texts, null, style);
  }

  private void charts() throws IOException {
    byte[] rows = file("examples/data/iris.csv");
    List<byte[]> language = texts(CHART, "size 400 by 300\ncolumn a: number\ncolumn g: category\n"
        + "draw stacked bar: x g, y mean of a, color g\n"
        + "axis y: title \"T\", from 0, format \"#,##0.0\"\n");
    for (String name : List.of("iris", "chicks", "titanic", "co2", "states", "geyser")) {
      byte[] chart = file("examples/charts/" + name + ".gpl");
      String data = name + ".csv";
      List<byte[]> seed = List.of(chart);
      byte[] own = file("examples/data/" + data);
      add("language-" + name, 2, seed, input -> done(render(input, own, null, null)));
    }
    add("language", 6, language, input -> done(render(input, bytes(ROWS), null, null)));
    List<byte[]> xml = new ArrayList<>();
    xml.add(GraphConversion.toXml(file("examples/charts/iris.gpl")));
    add("chart-xml", 6, xml, input -> done(render(input, rows, null, null)));
    byte[] phones = file("examples/data/phones.csv");
    add("chart-xml-1", 4, List.of(file("examples/charts/phones-growth.xml")),
        input -> done(render(input, phones, null, null)));
  }

  private static String done(byte[] result) {
    if (result == null || result.length == 0) {
      throw new IllegalStateException("no picture and no message");
    }
    return null;
  }

  private void besideCharts() throws IOException {
    byte[] chart = bytes(CHART);
    add("csv", 8, texts(ROWS, "\ufeffa,b,g\r\n2020-01-01,1,u\r\n2021-02-03T04:05:06Z,2,v\r\n"),
        input -> done(render(chart, input, null, null)));
    List<byte[]> styles = documented("styles.md", "xml");
    add("style", 4, styles, input -> done(render(chart, bytes(ROWS), null, input)));
    add("texts", 4, texts("a=b\n# c\nx\\ y = \\u00e9\\\n  more\n", "T=U\n!x\nk: v\n"),
        input -> done(render(chart, bytes(ROWS), input, null)));
    byte[] bins = bytes("<histogram xmlns=\"urn:chartbridge:chart:2\" fill=\"#4477aa\""
        + " opacity=\"0.5\"/>");
    ByteBuffer numbers = ByteBuffer.allocateDirect(5 * 8).order(ByteOrder.nativeOrder());
    numbers.asDoubleBuffer().put(new double[] {0, 1, 2, 3, 4});
    add("histogram-look", 2, List.of(bins), input -> done(
        charts.EmbedHistogramInGraph(bytes("draw line: x a, y b"), input, numbers, 2)));
    byte[] own = new byte[5 * 8];
    ByteBuffer.wrap(own).order(ByteOrder.nativeOrder()).asDoubleBuffer().put(
        new double[] {0, 1, 2, 3, 4});
    addBinary("histogram-numbers", 2, List.of(own), input -> {
      ByteBuffer direct = ByteBuffer.allocateDirect(input.length).order(ByteOrder.nativeOrder());
      direct.put(input).flip();
      byte[] made =
          charts.EmbedHistogramInGraph(bytes("draw line: x a, y b"), bins, direct, 2);
      return done(render(made, bytes(ROWS), null, null));
    });
    Path templates = Files.createDirectories(folder.resolve("templates"));
    List<byte[]> house = new ArrayList<>(List.of(file("examples/templates/house.xml")));
    house.addAll(documented("chart-template.md", "xml").subList(0, 1));
    add("template", 4, house, input -> {
      Files.write(templates.resolve("t.xml"), input);
      String before = System.getProperty("chartbridge.templates");
      System.setProperty("chartbridge.templates", templates.toString());
      try {
        return done(render(bytes("<chart xmlns=\"urn:chartbridge:chart:2\" template=\"t\">"
            + "<elements><bar><x column=\"g\"/></bar></elements></chart>"), bytes(ROWS), null,
            null));
      } catch (ChartException e) {
        // The template was right; there is no native code here to apply it.
        return e.getCause() instanceof UnsatisfiedLinkError ? null : e.getMessage();
      } finally {
        if (before == null) {
          System.clearProperty("chartbridge.templates");
        } else {
          System.setProperty("chartbridge.templates", before);
        }
      }
    });
  }

  private String out(String name) {
    return folder.resolve(name).toString();
  }

  private void chartJson() throws IOException {
    byte[] chart = chartWithRows("draw point: x a, y b, color g\n", ROWS);
    add("chart-json", 6, List.of(chart), input -> {
      json.exportChartJsonToFile("", input, choice(input, 0, 1) == 1, out("c.json"), SVG);
      return null;
    });
    add("chart-json-options", 4, texts("{\"zoom\": false, \"tooltips\": true, \"data\":"
            + " \"inline\", \"selection\": \"interval\", \"map\": {\"projection\":"
            + " \"equirectangular\", \"fill\": \"#e4e4e4\", \"stroke\": \"#ffffff\"}}", "{}"),
        input -> {
          json.exportInteractiveJsonToFile(
              "", chart, out("d.json"), new String(input, UTF_8), out("c.json"), SVG);
          return null;
        });
    byte[] places = chartWithRows("draw point: x a, y b, label g\n", "a,b,g\n1,2.5,x\n9,50,y\n");
    List<byte[]> maps = new ArrayList<>(List.of(file("examples/maps/cities.geojson"),
        file("examples/maps/states.geojson")));
    maps.addAll(texts("{\"type\":\"Polygon\",\"coordinates\":[[[0,0],[9,0],[9,9],[0,0]]]}",
        "{\"type\":\"GeometryCollection\",\"geometries\":["
            + "{\"type\":\"Point\",\"coordinates\":[1,2]},"
            + "{\"type\":\"MultiLineString\",\"coordinates\":[[[1,2],[179,3],[-179,4]]]},"
            + "{\"type\":\"MultiPolygon\",\"coordinates\":[[[[0,0],[9,0],[9,9],[0,0]]]]}]}",
        "{\"type\":\"Feature\",\"properties\":{\"name\":\"x\",\"n\":1.5},\"geometry\":null}"));
    add("geojson", 10, maps, input -> {
      json.addGeoJson(input);
      json.exportInteractiveJsonToFile("", places, out("d.json"), "{\"map\":{\"label\":\"name\"}}",
          out("c.json"), SVG);
      return null;
    });
  }

  private static byte[] chartWithRows(String text, String rows) {
    String xml = new String(GraphConversion.toXml(bytes(text)), UTF_8);
    String end = "</elements>";
    int at = xml.lastIndexOf(end) + end.length();
    return bytes(xml.substring(0, at) + "\n  <data>" + rows + "</data>" + xml.substring(at));
  }

  private void conversions() throws IOException {
    add("convert-language", 3, List.of(file("examples/charts/iris.gpl")),
        input -> answer(converter.ConvertGPL(input)));
    add("convert-xml", 3, List.of(file("examples/charts/phones-growth.xml")),
        input -> answer(converter.ConvertXml(input)));
    List<byte[]> filled = new ArrayList<>(List.of(
        file("examples/client-templates/distribution.json"),
        bytes(new String(file("examples/client-templates/compare-groups.json"), UTF_8)
            + "{\"category\": \"g\", \"measure\": \"b\"}")));
    filled.addAll(texts("{\"version\":1,\"slots\":[{\"name\":\"c\",\"kind\":\"column\"}],"
        + "\"chart\":{\"width\":300,\"elements\":["
        + "{\"bar\":{\"x\":{\"column\":{\"slot\":\"c\"}}}}]}}"
        + "{\"c\":\"a\"}"));
    add("client-template", 6, filled, input -> done(converter.graphBoardConverterToXml(input)));
    byte[] titanic = GraphConversion.toXml(file("examples/charts/titanic.gpl"));
    List<byte[]> sheets = List.of(
        file("examples/style-sheets/dark.xsl"), file("examples/style-sheets/shares.xsl"));
    add("style-sheet", 8, sheets, input -> {
      charts.ApplyStyleSheet(titanic, input);
      return null;
    });
    byte[] dark = sheets.get(0);
    add("style-sheet-document", 3, List.of(titanic), input -> {
      converter.graphBoardApplyStyleSheet(input, dark);
      return null;
    });
  }

  /** The converter says why beside the answer. */
  private String answer(byte[] result) {
    if (result != null) {
      return null;
    }
    String message = converter.getErrorMessage();
    if (message == null || message.isEmpty()) {
      throw new IllegalStateException("no chart and no message");
    }
    return message;
  }

  private void trees() throws IOException {
    byte[] iris = file("examples/trees/iris.pmml");
    List<byte[]> models = new ArrayList<>(List.of(iris, file("examples/trees/airquality.pmml"),
        file("tests/data/pmml/nested-segments.pmml"), file("tests/data/pmml/no-scores.pmml"),
        file("tests/data/pmml/prefixed-4.0.pmml"), file("tests/data/pmml/sets-quotes.pmml"),
        file("tests/data/pmml/surrogates.pmml")));
    add("pmml", 8, models, input -> done(trees.renderToMemory(
        input, null, choice(input, SVG, SVG, PNG, IMAGE_MAP, PDF), 100)));
    byte[] samples = bytes("Sepal.Length,Sepal.Width,Petal.Length,Petal.Width\n5,3,1.5,0.2\n"
        + "6,NA,4,1.3\n");
    add("pmml-set", 2, List.of(iris, file("examples/trees/kyphosis-boosted.pmml")), input -> {
      trees.renderModelToMemory(input, null, null, null, "t", SVG, 2);
      return null;
    });
    addBinary("pmml-compressed", 2, List.of(compressed(iris)),
        input -> done(trees.renderToMemory(input, null, SVG, 100)));
    add("tree-samples", 3, List.of(samples), input -> {
      trees.renderModelToMemory(iris, null, null, input, "t", SVG, 3);
      return null;
    });
    add("tree-display", 5, documented("trees.md", "xml"), input ->
        done(trees.renderToMemory(iris, input, choice(input, SVG, SVG, PNG), 100)));
  }

  private static byte[] compressed(byte[] bytes) throws IOException {
    ByteArrayOutputStream out = new ByteArrayOutputStream();
    try (GZIPOutputStream gzip = new GZIPOutputStream(out)) {
      gzip.write(bytes);
    }
    return out.toByteArray();
  }

  private void documents() throws IOException {
    Path copy = Files.createDirectories(folder.resolve("documents"));
    for (String name : List.of("air.csv", "ozone-bands.svg", "ozone-temperature.gpl",
             "ozone-tree.pmml")) {
      Files.write(copy.resolve(name), file("examples/documents/" + name));
    }
    String inside = "<document xmlns=\"urn:chartbridge:document:1\" title=\"T\" language=\"de\">"
        + "<contents/><heading level=\"1\" id=\"h\">One</heading>"
        + "<paragraph align=\"justify\">A <strong>b</strong> <emphasis>c</emphasis> "
        + "<link to=\"#h\">d</link></paragraph><list kind=\"number\"><item>a<list><item>b"
        + "</item></list></item></list>"
        + "<table caption=\"C\"><column align=\"right\" width=\"30\"/><column/><header><row>"
        + "<cell colspan=\"2\">x</cell></row></header><row><cell rowspan=\"2\">1</cell>"
        + "<cell>2</cell></row><row><cell>3</cell></row></table><page-break/></document>";
    List<byte[]> documents = new ArrayList<>(List.of(file("examples/documents/air-quality.xml")));
    documents.add(bytes(inside));
    String[] kinds = {"html", "pdf", "odt", "csv", "text", "check"};
    add("document", 8, documents, input -> {
      ExKvoAdapter adapter = new ExKvoAdapter(true);
      adapter.createOutputDocument(
          ByteBuffer.wrap(input), copy.resolve("air-quality.xml").toString());
      String kind = kinds[choice(input, 0, 0, 1, 1, 2, 3, 4, 5)];
      return adapter.exportOutput("{\"to\": \"" + kind + "\""
          + (kind.equals("check") ? "" : ", \"output\": \"" + out("document.out") + "\"") + "}");
    });
    String simple = inside.replaceAll("(?s)<list.*</table><page-break/>", "");
    add("document-request", 4, texts("{\"document\": \"d\", \"to\": \"html\", \"output\": \""
            + out("r.html") + "\", \"language\": \"pt-BR\", \"style\": \"print\", \"paper\":"
            + " \"a4\", \"release\": false}",
            "{\"document\": \"d\", \"to\": \"text\", \"output\": \"" + out("r.txt")
            + "\", \"charset\": \"UTF-8\", \"release\": false}"),
        input -> {
          // A changed path must not lead out of the folder, nor a changed key to it.
          String request = new String(input, UTF_8);
          if (request.contains("output") && !request.contains("\"output\": \"" + folder + "/")
              || request.contains("..")) {
            return "not tried";
          }
          ExKvoAdapter adapter = new ExKvoAdapter(true);
          adapter.createOutputDocument(ByteBuffer.wrap(bytes(simple)), "d");
          return adapter.exportOutput(request);
        });
  }

  private void images() throws IOException {
    BufferedImage image = new BufferedImage(16, 12, BufferedImage.TYPE_INT_RGB);
    Graphics2D graphics = image.createGraphics();
    graphics.setColor(Color.ORANGE);
    graphics.fillOval(2, 2, 10, 8);
    graphics.dispose();
    for (String format : List.of("png", "jpeg", "gif", "bmp")) {
      ByteArrayOutputStream out = new ByteArrayOutputStream();
      ImageIO.setUseCache(false);
      ImageIO.write(image, format, out);
      addBinary("image-" + format, 5, List.of(out.toByteArray()), input -> {
        charts.ConvertImage(input, out("i"), choice(input, PNG, JPEG, GIF, BMP));
        return null;
      });
    }
    String svg = "<svg xmlns=\"http://www.w3.org/2000/svg\" xmlns:xlink="
        + "\"http://www.w3.org/1999/xlink\" width=\"60\" height=\"40\" viewBox=\"0 0 60 40\">"
        + "<defs><linearGradient id=\"g\" x1=\"0\" x2=\"1\"><stop offset=\"0\" stop-color=\"red\"/>"
        + "<stop offset=\"1\" stop-color=\"#00f\" stop-opacity=\"0.5\"/></linearGradient>"
        + "<clipPath id=\"c\"><circle cx=\"20\" cy=\"20\" r=\"15\"/></clipPath>"
        + "<pattern id=\"p\" width=\"4\" height=\"4\" patternUnits=\"userSpaceOnUse\">"
        + "<rect width=\"2\" height=\"2\" fill=\"green\"/></pattern>"
        + "<filter id=\"f\" x=\"0\" y=\"0\" width=\"1\" height=\"1\"><feGaussianBlur"
        + " stdDeviation=\"1\"/><feMorphology radius=\"2\" operator=\"dilate\"/><feOffset dx=\"1\""
        + " dy=\"1\"/></filter><marker id=\"m\" markerWidth=\"3\" markerHeight=\"3\"><path"
        + " d=\"M0 0L3 1L0 3z\"/></marker><mask id=\"k\"><rect width=\"60\" height=\"40\""
        + " fill=\"white\"/></mask></defs><style>.a{stroke:#333;stroke-width:2}</style>"
        + "<g transform=\"rotate(10) translate(1,2) scale(1.1)\" clip-path=\"url(#c)\">"
        + "<rect x=\"1\" y=\"2\" width=\"30\" height=\"20\" rx=\"3\" fill=\"url(#g)\"/></g>"
        + "<ellipse cx=\"30\" cy=\"20\" rx=\"9\" ry=\"5\" fill=\"url(#p)\" filter=\"url(#f)\"/>"
        + "<path class=\"a\" d=\"M1 1C2 3 4 5 6 7S8 9 10 11Q1 2 3 4T5 6A7 8 9 0 1 10 11z\""
        + " marker-end=\"url(#m)\"/><polygon points=\"1,2 3,4 5,6\" mask=\"url(#k)\"/>"
        + "<polyline points=\"1 2 3 4\" stroke-dasharray=\"2 1\"/><line x1=\"1\" y2=\"9\"/>"
        + "<text x=\"5\" y=\"30\" font-size=\"9\" font-family=\"serif\">Ab<tspan dy=\"2\">c</tspan>"
        + "</text><use xlink:href=\"#m\"/><switch><g systemLanguage=\"en\"/></switch>"
        + "<symbol id=\"s\" viewBox=\"0 0 1 1\"/><use"
        + " href=\"#s\" width=\"5%\" height=\"1em\"/></svg>";
    List<byte[]> pictures =
        List.of(bytes(svg), file("examples/documents/ozone-bands.svg"));
    add("image-svg", 14, pictures, input -> {
      charts.ConvertImage(input, out("i"), choice(input, PNG, PNG, GIF, JPEG, PDF));
      return null;
    });
  }
}
