// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.draw;

import static java.nio.charset.StandardCharsets.UTF_8;
import static org.junit.jupiter.api.Assertions.assertEquals;
import static org.junit.jupiter.api.Assertions.assertThrows;

import java.nio.ByteBuffer;
import java.nio.charset.Charset;
import java.nio.charset.StandardCharsets;
import org.chartbridge.chart.Chart;
import org.chartbridge.chart.ChartException;
import org.chartbridge.chart.ElementKind;
import org.chartbridge.data.ChartData;
import org.chartbridge.data.Table;
import org.chartbridge.format.ChartSource;
import org.junit.jupiter.api.Test;

/** Mistakes that only the data bring to light are told with their place in the chart's text. */
class MistakePlacesTest {
  private static final String DATA = "c,n,t,zero\na,1,2024-01-01,0\nb,-2,2024-01-02,0\na,3,,0\n";

  private static void fails(String message, String chart) {
    fails(message, chart, DATA, UTF_8);
  }

  private static void fails(String message, String chart, String data, Charset charset) {
    ChartException e = assertThrows(ChartException.class, () -> {
      Chart read = ChartSource.read(chart.getBytes(charset));
      Table table = ChartData.read(ByteBuffer.wrap(data.getBytes(UTF_8)), read);
      ChartDrawing.prepare(read, table, DrawOptions.DEFAULT);
    });
    assertEquals(message, e.getMessage());
  }

  private static String xml(String parts) {
    return "<chart xmlns=\"urn:chartbridge:chart:2\">\n" + parts + "\n</chart>";
  }

  @Test
  void unknownColumnsInTheGraphLanguage() {
    String unknown = ": The data has no column \"regoin\"; its columns are c, n, t, zero.";
    fails("line 2, column 13" + unknown, "title \"T\"\ndraw bar: x regoin, y sum of n\n");
    fails("line 1, column 18" + unknown, "draw bar: x c, y mean of regoin\n");
    fails("line 3, column 9" + unknown, "draw bar: x c,\n  y n,\n  color \"regoin\"\n");
    fails("line 3, column 9" + unknown, "draw bar: x c,\r\n  y n,\r\n  label regoin\r\n");
    fails("line 2, column 28" + unknown, "draw line: x t, y n\ndraw point: x t, y n, size regoin");
    fails("line 2, column 11" + unknown, "draw bar: x c, y n\npanels by regoin\n");
  }

  @Test
  void theFirstPlaceCounts() {
    fails("line 1, column 18: The data has no column \"m\"; its columns are c, n, t, zero.",
        "draw bar: x c, y m\ndraw line: x c, y m\n");
  }

  @Test
  void unknownColumnsInXml() {
    String unknown = ": The data has no column \"regoin\"; its columns are c, n, t, zero.";
    String bar = xml("<elements>\n  <bar><x column=\"c\"/>\n    <y column=\"regoin\"/></bar>\n"
        + "</elements>");
    fails("line 4, column 5" + unknown, bar);
    fails("line 4, column 5" + unknown, "\uFEFF" + bar, DATA, StandardCharsets.UTF_16LE);
    fails("line 3, column 8" + unknown,
        xml("<elements><bar><x column=\"c\"/></bar></elements>\n<facet column=\"regoin\"/>"));
  }

  @Test
  void kindsThatDoNotFit() {
    fails("line 1, column 18: Element 1 (bar), y: column \"c\" holds categories, and mean needs "
            + "numbers; use count, or declare the column as number.",
        "draw bar: x n, y mean of c");
    fails("line 2, column 28: Element 2 (point), size: the value -2 is negative; sizes must not be "
            + "below 0.",
        "draw line: x t, y n\ndraw point: x t, y n, size n");
    fails("line 3, column 3: Element 1 (heatmap), color: column \"c\" holds categories, and a "
            + "heatmap needs numbers there; choose another column, or declare it as number.",
        xml("<elements><heatmap><x column=\"c\"/><y column=\"n\"/>\n  <color column=\"c\"/>"
            + "</heatmap></elements>"));
    fails("line 2, column 14: Element 2 (line), x: it shows numbers, but Element 1 (bar) shows "
            + "categories on the same axis; let both show the same kind of column, or declare "
            + "scale category.",
        "draw bar: x c, y n\ndraw line: x n, y n");
  }

  @Test
  void combinationsThatMakeNoSense() {
    fails("line 1, column 13: Element 1 (pie), y: all values are 0, so there is nothing to divide.",
        "draw pie: y zero, x c");
    fails("line 2, column 14: Axis y: min 10 leaves no data in sight; the values run from -2 to 3.",
        "draw point: x n, y n\naxis y: from 10");
    fails("line 2, column 12: Axis x: min and max do not fit categories; drop them.",
        "draw bar: x c, y n\naxis x: to 10");
    fails("line 2, column 10: Axis x: min and max do not fit categories; drop them.",
        xml("<axes><x max=\"10\"/></axes>\n<elements><bar><x column=\"c\"/></bar></elements>"));
    fails("line 2, column 11: Facet: column \"none\" has no values; choose another column, or drop "
            + "the facet.",
        "draw point: x n, y n\npanels by none", "n,none\n1,\n2,\n", UTF_8);
  }

  @Test
  void styles() {
    String unknown = ": There is no style \"fancy\"; the styles are print, dark, mono, slides.";
    fails("line 2, column 7" + unknown,
        "draw point: x n, y n\nstyle fancy");
    fails("line 1, column 8" + unknown,
        "<chart style=\"fancy\" xmlns=\"urn:chartbridge:chart:2\"><elements><bar><x column=\"c\"/>"
            + "</bar></elements></chart>");
  }

  @Test
  void noRows() {
    fails("line 1, column 1: Element 1 (point) has nothing to draw: the data has no rows.",
        "draw point: x n, y n", "n\n", UTF_8);
  }

  @Test
  void aChartOfNoTextHasNoPlaces() {
    ChartException e = assertThrows(ChartException.class, () -> ChartData.read(
        ByteBuffer.wrap("n\n1\n".getBytes(UTF_8)), Chart.of(
            new ChartMaker().add(ElementKind.BAR, "c", null, null).chart().elements().get(0))));
    assertEquals("The data has no column \"c\"; its columns are n.", e.getMessage());
  }
}
