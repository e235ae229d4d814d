// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.image;

import com.tesk.charteditor.ChartImager;
import com.tesk.java_client.ex_access.ExKvoAdapter;
import com.tesk.treemodeleditor.TreeImager;
import com.tesk.vizconverter.VizConverter;
import java.io.IOException;
import java.nio.ByteBuffer;
import java.nio.file.Files;
import java.nio.file.Path;

/** Writes every kind of output once, into the folder that it is given, and tells what failed. */
public final class EveryOutput {
  private static final int TYPES = 7;

  private EveryOutput() {}

  public static void main(String[] arguments) throws IOException {
    Path folder = Path.of(arguments[0]);
    Path examples = Path.of(System.getProperty("chartbridge.source"), "examples");
    byte[] chart = Files.readAllBytes(examples.resolve("charts/iris.gpl"));
    byte[] data = Files.readAllBytes(examples.resolve("data/iris.csv"));
    byte[] tree = Files.readAllBytes(examples.resolve("trees/iris.pmml"));
    ChartImager imager = new ChartImager();
    for (int type = 1; type <= TYPES; type++) {
      imager.RenderToFile(chart, ByteBuffer.wrap(data), folder.resolve("chart" + type).toString(),
          type, 100, null, null, null, null);
      new TreeImager().renderToFile(
          tree, null, folder.resolve("tree" + type).toString(), type, false, 100);
    }
    byte[] svg = Files.readAllBytes(examples.resolve("documents/ozone-bands.svg"));
    for (int type : new int[] {1, 2, 3, 4, 6}) {
      imager.ConvertImage(svg, folder.resolve("svg" + type).toString(), type);
    }
    for (int type = 1; type <= 4; type++) {
      imager.ConvertImage(Files.readAllBytes(folder.resolve("chart" + type)),
          folder.resolve("image" + type).toString(), type);
    }
    Path document = document(folder, examples);
    for (String to : new String[] {"pdf", "html", "odt", "csv", "text"}) {
      String problem = new ExKvoAdapter(true).exportOutput("{\"input\": \"" + document
          + "\", \"base\": \"" + folder + "\", \"to\": \"" + to + "\", \"output\": \""
          + folder.resolve("document." + to) + "\"}");
      if (problem != null) {
        System.out.println(to + ": " + problem);
      }
    }
    new VizConverter().graphBoardApplyStyleSheet(
        chart, Files.readAllBytes(examples.resolve("style-sheets/dark.xsl")));
  }

  /** With images of every format besides drawn figures. */
  private static Path document(Path folder, Path examples) throws IOException {
    Files.copy(examples.resolve("documents/ozone-bands.svg"), folder.resolve("bands.svg"));
    String figures = "<chart><description>draw bar: x a</description><data>a\nx\n</data></chart>"
        + "<image src=\"bands.svg\"/><image src=\"chart1\"/><image src=\"chart2\"/><table><row><cell>1</cell></row></table>";
    return Files.writeString(folder.resolve("document.xml"),
        "<document xmlns=\"urn:chartbridge:document:1\" title=\"T\">" + figures + "</document>");
  }
}
