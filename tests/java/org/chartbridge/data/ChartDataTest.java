// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.data;

import static java.nio.charset.StandardCharsets.UTF_8;
import static org.junit.jupiter.api.Assertions.assertEquals;
import static org.junit.jupiter.api.Assertions.assertThrows;

import java.nio.ByteBuffer;
import org.chartbridge.chart.Chart;
import org.chartbridge.chart.ChartException;
import org.chartbridge.format.ChartReader;
import org.junit.jupiter.api.Test;

class ChartDataTest {
  private static final String BARS = "<bar><x column='ä'/></bar>";
  private static final String BINS = "<histogram><bin from='0' to='1' value='2'/></histogram>";

  private static Chart chart(String inside, String more) {
    return ChartReader.read(("<chart xmlns='urn:chartbridge:chart:2'><elements>" + inside
        + "</elements>" + more + "</chart>").getBytes(UTF_8));
  }

  private static ByteBuffer csv(String text) {
    byte[] bytes = text.getBytes(UTF_8);
    return ByteBuffer.allocateDirect(bytes.length).put(bytes).flip();
  }

  @Test
  void dataThatAreHandedOverWin() {
    Chart chart = chart(BARS, "<data>ä\nown\n</data>");
    assertEquals("given", ChartData.read(csv("ä\ngiven"), chart).column("ä").text(0));
    assertEquals("own", ChartData.read(csv(""), chart).column("ä").text(0));
    assertEquals("own", ChartData.read(null, chart).column("ä").text(0));
  }

  @Test
  void onlyAChartThatShowsNoneDoesWithoutData() {
    assertEquals(0, ChartData.read(null, chart(BINS, "")).rowCount());
    String none = "The data are empty; the first line must name the columns.";
    assertEquals(none, assertThrows(ChartException.class,
        () -> ChartData.read(csv(""), chart(BARS, ""))).getMessage());
    assertEquals(none, assertThrows(ChartException.class,
        () -> ChartData.read(null, chart(BINS, "<facet column='f'/>"))).getMessage());
  }

  @Test
  void aMistakeInItsOwnDataIsToldByTheirLines() {
    String message = assertThrows(ChartException.class,
        () -> ChartData.read(null, chart(BARS, "<data>\n\nä\n1,2\n</data>"))).getMessage();
    assertEquals("CSV line 2 has 2 fields where the header names 1 column; nothing may follow"
        + " column \"ä\" (a text with a comma needs quotes around it).", message);
  }
}
