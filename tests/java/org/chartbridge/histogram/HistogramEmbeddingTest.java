// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.histogram;

import static java.nio.charset.StandardCharsets.UTF_8;
import static org.junit.jupiter.api.Assertions.assertArrayEquals;
import static org.junit.jupiter.api.Assertions.assertEquals;
import static org.junit.jupiter.api.Assertions.assertThrows;
import static org.junit.jupiter.api.Assertions.assertTrue;

import java.nio.ByteBuffer;
import java.nio.ByteOrder;
import java.util.List;
import org.chartbridge.chart.Bin;
import org.chartbridge.chart.Chart;
import org.chartbridge.chart.ChartException;
import org.chartbridge.chart.Element;
import org.chartbridge.chart.ElementKind;
import org.chartbridge.format.ChartReader;
import org.junit.jupiter.api.Test;
import org.junit.jupiter.params.ParameterizedTest;
import org.junit.jupiter.params.provider.CsvSource;
import org.junit.jupiter.params.provider.ValueSource;

class HistogramEmbeddingTest {
  private static final String LINE = "draw line: x age, y share\n";
  private static final byte[] NO_LOOK = {};

  private static ByteBuffer numbers(double... numbers) {
    ByteBuffer buffer = ByteBuffer.allocateDirect(numbers.length * Double.BYTES);
    buffer.order(ByteOrder.nativeOrder());
    for (double number : numbers) {
      buffer.putDouble(number);
    }
    // Whatever order the buffer has been left in, the numbers are in that of the machine.
    return buffer.flip().order(ByteOrder.BIG_ENDIAN);
  }

  private static byte[] look(String attributes) {
    return ("<histogram xmlns='urn:chartbridge:chart:2' " + attributes + "/>").getBytes(UTF_8);
  }

  private static Chart embed(String chart, byte[] look, int count, double... numbers) {
    return ChartReader.read(
        HistogramEmbedding.embed(chart.getBytes(UTF_8), look, numbers(numbers), count));
  }

  private static String error(String chart, byte[] look, int count, double... numbers) {
    return assertThrows(ChartException.class, () -> embed(chart, look, count, numbers))
        .getMessage();
  }

  @Test
  void putsTheBinsBehindEverythingElse() {
    Chart chart = embed(LINE + "title \"Ages\"", NO_LOOK, 3, 0, 10.5, 20, 40, 5, 0, 2.25);
    assertEquals(2, chart.elements().size());
    Element histogram = chart.elements().get(0);
    assertEquals(List.of(new Bin(0, 10.5, 5), new Bin(10.5, 20, 0), new Bin(20, 40, 2.25)),
        histogram.ownBins());
    assertEquals("#999999", histogram.fill());
    assertEquals(0.5, histogram.opacity());
    assertEquals(ElementKind.LINE, chart.elements().get(1).kind());
    assertEquals("Ages", chart.titles().title());
  }

  @Test
  void takesChartXmlOfOlderVersionsToo() {
    Chart chart = embed("<chart xmlns='urn:chartbridge:chart:1'><layer type='line'>"
        + "<x><field name='a'/></x><y><field name='b'/></y></layer></chart>", NO_LOOK, 1, 0, 1, 2);
    assertEquals(2, chart.elements().size());
  }

  @Test
  void keepsDataAndTemplate() {
    Chart chart = embed("<chart xmlns='urn:chartbridge:chart:2' template='t'><elements><line>"
        + "<x column='a'/><y column='b'/></line></elements><data>a,b\n1,2\n</data></chart>",
        NO_LOOK, 1, 0, 1, 2);
    assertEquals("a,b\n1,2\n", chart.data());
    assertEquals("t", chart.template());
  }

  @Test
  void looksAsAsked() {
    Element both = embed(LINE, look("fill='#123456' opacity='0.25'"), 1, 0, 1, 2).elements().get(0);
    assertEquals("#123456", both.fill());
    assertEquals(0.25, both.opacity());
    Element one = embed(LINE, look("opacity='1'"), 1, 0, 1, 2).elements().get(0);
    assertEquals("#999999", one.fill());
    assertEquals(1, one.opacity());
  }

  @Test
  void readsTheBufferFromItsPositionToItsLimitAndLeavesIt() {
    double[] all = {-1, 0, 1, 7, 99};
    ByteBuffer direct = numbers(all);
    ByteBuffer heap = ByteBuffer.allocate(direct.capacity() + 3);
    heap.position(3);
    heap.put(direct.duplicate());
    for (ByteBuffer buffer : new ByteBuffer[] {direct, heap.asReadOnlyBuffer()}) {
      int start = buffer == direct ? 0 : 3;
      buffer.limit(start + 4 * Double.BYTES).position(start + Double.BYTES);
      Chart chart =
          ChartReader.read(HistogramEmbedding.embed(LINE.getBytes(UTF_8), NO_LOOK, buffer, 1));
      assertEquals(List.of(new Bin(0, 1, 7)), chart.elements().get(0).ownBins());
      assertEquals(start + Double.BYTES, buffer.position());
      assertEquals(start + 4 * Double.BYTES, buffer.limit());
      assertEquals(ByteOrder.BIG_ENDIAN, buffer.order());
    }
  }

  @ParameterizedTest
  @CsvSource({"0, 0", "-1, 4294967295", "10001, 10001"})
  void takesOneToTenThousandBins(int count, String told) {
    assertEquals("The histogram has " + told + " bins; expected 1 to 10000.",
        error(LINE, NO_LOOK, count, 0, 1, 2));
  }

  @Test
  void takesAsManyNumbersAsTheBinsNeed() {
    assertEquals("The buffer of the histogram has 24 bytes; 2 bins take 40: 3 edges and 2 heights"
        + " of 8 bytes each.", error(LINE, NO_LOOK, 2, 0, 1, 2));
    assertEquals("The buffer of the histogram has 32 bytes; 1 bin takes 24: 2 edges and 1 height"
        + " of 8 bytes each.", error(LINE, NO_LOOK, 1, 0, 1, 2, 3));
    assertEquals("There is no buffer with the numbers of the histogram.",
        assertThrows(ChartException.class,
            () -> HistogramEmbedding.embed(LINE.getBytes(UTF_8), NO_LOOK, null, 1)).getMessage());
  }

  @ParameterizedTest
  @CsvSource({"NaN", "Infinity", "-Infinity"})
  void takesFiniteNumbers(double bad) {
    String rest = "; the edges and heights of a histogram are finite numbers. Is the byte order"
        + " that of this machine?";
    assertEquals("Edge 2 of 3 is " + bad + rest, error(LINE, NO_LOOK, 2, 0, bad, 2, 3, 4));
    assertEquals("The height of bin 2 of 2 is " + bad + rest,
        error(LINE, NO_LOOK, 2, 0, 1, 2, 3, bad));
  }

  @Test
  void takesAscendingEdgesAndNoNegativeHeights() {
    assertEquals("Edge 3 of the histogram is 1.0, which is not above edge 2, 1.0; edges ascend.",
        error(LINE, NO_LOOK, 2, 0, 1, 1, 3, 4));
    assertEquals("The height of bin 1 of 1 is -0.5; heights are 0 or more.",
        error(LINE, NO_LOOK, 1, 0, 1, -0.5));
  }

  @ParameterizedTest
  @CsvSource(delimiter = '|', value = {
      "<bar xmlns='urn:chartbridge:chart:2'/> | line 1, column 1: found <bar>; expected"
          + " <histogram xmlns=\"urn:chartbridge:chart:2\">",
      "<histogram/> | line 1, column 1: found <histogram>; expected"
          + " <histogram xmlns=\"urn:chartbridge:chart:2\">",
      "<histogram xmlns='urn:chartbridge:chart:2' bins='3'/> | line 1, column 44: <histogram> has"
          + " no attribute \"bins\"; expected one of fill, opacity",
      "<histogram xmlns='urn:chartbridge:chart:2' fill='red'/> | line 1, column 44: \"red\" is not"
          + " a colour; expected # and six hexadecimal digits, such as #0072b2",
      "<histogram xmlns='urn:chartbridge:chart:2' opacity='2'/> | line 1, column 44: the opacity is"
          + " 2; expected 0 to 1",
      "<histogram xmlns='urn:chartbridge:chart:2'><x column='a'/></histogram> | line 1, column 44:"
          + " found <x> inside <histogram>, which holds no elements",
      "grey | line 1, column 1: found \"g\", expected \"<\": this is not XML",
  })
  void tellsWhatIsWrongWithTheLook(String look, String message) {
    assertEquals("The look of the histogram: " + message,
        error(LINE, look.getBytes(UTF_8), 1, 0, 1, 2));
  }

  @ParameterizedTest
  @ValueSource(strings = {
      "draw pie: x region",
      "draw bar: x region, y count\ncolumn region: category",
      "draw line: x day, y sales\ncolumn day: time",
      "draw bar: x sum of sales, y region\ncolumn region: category",
      "draw line: x a, y max of day\ncolumn day: time",
      "draw line: x a, y b\naxis x: category",
      "draw line: x a, y b\naxis x: log"})
  void refusesChartsWithoutAPlaceForIt(String chart) {
    String message = error(chart, NO_LOOK, 1, 0, 1, 2);
    assertTrue(message.startsWith("The chart has no place for a histogram: "), message);
  }

  @Test
  void takesWhatOnlyCountsCategories() {
    Chart chart =
        embed("draw line: x a, y count of region\ncolumn region: category", NO_LOOK, 1, 0, 1, 2);
    assertEquals(2, chart.elements().size());
  }

  @Test
  void embedsTheSameTwiceAlike() {
    byte[] once = HistogramEmbedding.embed(LINE.getBytes(UTF_8), NO_LOOK, numbers(0, 1, 2), 1);
    assertArrayEquals(once,
        HistogramEmbedding.embed(LINE.getBytes(UTF_8), null, numbers(0, 1, 2), 1));
  }
}
