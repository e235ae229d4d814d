// SPDX-License-Identifier: Apache-2.0
package com.tesk.charteditor;

import static java.nio.charset.StandardCharsets.UTF_8;
import static org.junit.jupiter.api.Assertions.assertArrayEquals;
import static org.junit.jupiter.api.Assertions.assertEquals;
import static org.junit.jupiter.api.Assertions.assertNotEquals;
import static org.junit.jupiter.api.Assertions.assertThrows;
import static org.junit.jupiter.api.Assertions.assertTrue;

import java.io.IOException;
import java.nio.ByteBuffer;
import java.nio.ByteOrder;
import java.nio.file.Files;
import java.nio.file.Path;
import org.chartbridge.chart.ChartException;
import org.junit.jupiter.api.Test;
import org.junit.jupiter.api.io.TempDir;

/** What the chart imager does besides drawing; the work itself has tests of its own. */
class ChartUtilitiesTest {
  private static final String POINTS = "<point><x column='a'/><y column='b'/></point>";

  private final ChartImager imager = new ChartImager();

  @TempDir Path folder;

  private static byte[] chart(String inside) {
    return ("<chart xmlns='urn:chartbridge:chart:2' width='300' height='200'>" + inside
        + "</chart>").getBytes(UTF_8);
  }

  private static ByteBuffer direct(double... numbers) {
    ByteBuffer buffer = ByteBuffer.allocateDirect(numbers.length * Double.BYTES);
    buffer.order(ByteOrder.nativeOrder());
    for (double number : numbers) {
      buffer.putDouble(number);
    }
    return buffer.flip();
  }

  private byte[] svg(byte[] chart, String data) {
    ByteBuffer csv = data == null ? null : ByteBuffer.wrap(data.getBytes(UTF_8));
    return imager.RenderToMem(chart, csv, 5, 100, "", null, "", null);
  }

  @Test
  void anEmbeddedHistogramRenders() {
    byte[] plain = chart("<elements>" + POINTS + "</elements>");
    byte[] embedded =
        imager.EmbedHistogramInGraph(plain, new byte[0], direct(0, 1, 2, 4, 5, 7, 3), 3);
    String data = "a,b\n1,2\n3,4\n";
    String with = new String(svg(embedded, data), UTF_8);
    assertTrue(with.toLowerCase(java.util.Locale.ROOT).contains("#999999")
        || with.contains("rgb(153,153,153)"), with);
    assertNotEquals(new String(svg(plain, data), UTF_8), with);
  }

  @Test
  void aChartOfBinsNeedsNoData() {
    byte[] bins =
        chart("<elements><histogram><bin from='0' to='1' value='2'/></histogram></elements>");
    assertArrayEquals(svg(bins, null), svg(bins, ""));
  }

  @Test
  void aChartCanBringItsData() throws IOException {
    byte[] chart = chart("<elements>" + POINTS + "</elements><data>\na,b\n1,2\n3,4\n</data>");
    byte[] own = svg(chart, null);
    assertArrayEquals(own, svg(chart, ""));
    assertArrayEquals(own, svg(chart, "a,b\n1,2\n3,4\n"));
    assertNotEquals(new String(own, UTF_8), new String(svg(chart, "a,b\n1,2\n3,5\n"), UTF_8));
    Path file = folder.resolve("own.svg");
    imager.RenderToFile(chart, new byte[0], file.toString(), 5, 100, "", null, "", null);
    assertArrayEquals(own, Files.readAllBytes(file));
  }

  @Test
  void aPictureOfAChartCanBeConverted() throws IOException {
    byte[] chart = chart("<elements>" + POINTS + "</elements><data>a,b\n1,2\n3,4\n</data>");
    Path target = folder.resolve("out.gif");
    assertTrue(imager.ConvertImage(svg(chart, null), target.toString(), 4));
    assertEquals("GIF8", new String(Files.readAllBytes(target), 0, 4, UTF_8));
  }

  @Test
  void aStyleSheetIsApplied() {
    byte[] sheet = ("<xsl:stylesheet version='1.0'"
        + " xmlns:xsl='http://www.w3.org/1999/XSL/Transform'>"
        + "<xsl:output method='text'/><xsl:template match='/'><xsl:value-of select='name(*)'/>"
        + "</xsl:template></xsl:stylesheet>").getBytes(UTF_8);
    assertEquals("chart", new String(imager.ApplyStyleSheet(chart(""), sheet), UTF_8));
  }

  @Test
  void failuresAreOneLineThatSaysWhy() {
    assertEquals("The chart is empty; chart XML or graph language is expected.",
        assertThrows(ChartException.class,
            () -> imager.EmbedHistogramInGraph(new byte[0], null, direct(0, 1, 2), 1))
            .getMessage());
    assertEquals("The output path is empty.",
        assertThrows(ChartException.class, () -> imager.ConvertImage(new byte[1], "", 2))
            .getMessage());
    assertEquals("There is no image type 8; the types are 1 JPEG, 2 PNG, 3 BMP, 4 GIF, 5 SVG, 6"
        + " PDF, 7 image map.", assertThrows(ChartException.class,
            () -> imager.ConvertImage(new byte[1], "a.png", 8)).getMessage());
    assertEquals("The style sheet is empty.", assertThrows(ChartException.class,
        () -> imager.ApplyStyleSheet(chart(""), null)).getMessage());
  }
}
