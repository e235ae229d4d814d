// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.format;

import static java.nio.charset.StandardCharsets.UTF_8;
import static org.junit.jupiter.api.Assertions.assertEquals;
import static org.junit.jupiter.api.Assertions.assertNull;
import static org.junit.jupiter.api.Assertions.assertThrows;
import static org.junit.jupiter.api.Assertions.assertTrue;

import java.util.ArrayList;
import java.util.List;
import org.chartbridge.chart.Arrangement;
import org.chartbridge.chart.Bin;
import org.chartbridge.chart.Channel;
import org.chartbridge.chart.Chart;
import org.chartbridge.chart.ChartException;
import org.chartbridge.chart.ChartRules;
import org.chartbridge.chart.Element;
import org.chartbridge.chart.ElementKind;
import org.chartbridge.chart.Problem;
import org.junit.jupiter.api.Test;
import org.junit.jupiter.params.ParameterizedTest;
import org.junit.jupiter.params.provider.CsvSource;

/** Histograms that bring their bins. */
class OwnBinsTest {
  private static final String BIN = "<bin from='0' to='1' value='2'/>";

  private static String chart(String axes, String histogram) {
    return "<chart xmlns='urn:chartbridge:chart:2'>" + axes + "\n<elements>" + histogram
        + "</elements></chart>";
  }

  private static Element histogram(String inside) {
    Chart chart = ChartReader.read(chart("", inside).getBytes(UTF_8));
    return chart.elements().get(0);
  }

  private static String error(String axes, String histogram) {
    byte[] xml = chart(axes, histogram).getBytes(UTF_8);
    return assertThrows(ChartException.class, () -> ChartReader.read(xml)).getMessage();
  }

  private static List<Problem> problems(Element element) {
    Chart chart = ChartReader.read(chart("", "<histogram>" + BIN + "</histogram>").getBytes(UTF_8));
    return ChartRules.check(chart.withElements(List.of(element)));
  }

  @Test
  void areReadFromLeftToRight() {
    Element read = histogram("<histogram fill='#999999' opacity='0.5'>\n<!-- counted -->"
        + "<bin from='-1.5' to='0' value='0'/> <bin value='1e3' to='5' from='0.5'/></histogram>");
    assertEquals(List.of(new Bin(-1.5, 0, 0), new Bin(0.5, 5, 1000)), read.ownBins());
    assertTrue(read.hasOwnBins());
    assertEquals("#999999", read.fill());
    assertEquals(0.5, read.opacity());
    assertNull(read.arrangement());
    assertNull(read.x());
  }

  @Test
  void areNoneForAHistogramOfData() {
    Element read = histogram("<histogram><color column='c'/><x column='a'/></histogram>");
    assertEquals(List.of(), read.ownBins());
    assertEquals(Arrangement.STACKED, read.arrangement());
  }

  /** The schema lists the orders one by one, so that each is tried. */
  @ParameterizedTest
  @CsvSource({"x", "y", "xy", "yx", "xc", "cx", "yc", "cy", "xyc", "xcy", "yxc", "ycx",
      "cxy", "cyx"})
  void leaveTheChannelsOfOthersInAnyOrder(String order) {
    String inside = order.replace("x", "<x column='a'/>")
        .replace("y", "<y aggregate='@ount'/>").replaceAll("c(?!o)", "<color column='b'/>")
        .replace("@", "c");
    if (order.startsWith("y") && !order.contains("x")) {
      inside = inside.replace(" aggregate='count'", " column='a'");
    }
    assertEquals(order.length(), inside.split("<").length - 1, inside);
    histogram("<histogram>" + inside + "</histogram>");
  }

  @ParameterizedTest
  @CsvSource(delimiter = '|', quoteCharacter = '~', value = {
      "<bin from='2' to='2' value='1'/>"
          + "| line 2, column 22: the bin ends at 2, which is not above its start 2",
      "<bin from='0' to='1' value='-0.5'/>"
          + "| line 2, column 22: the value of the bin is -0.5; expected 0 or more",
      "<bin from='0' to='1'/>| line 2, column 22: <bin> needs the attribute value",
      "<bin from='0' to='x' value='1'/>"
          + '|' + "line 2, column 36: to of <bin> is \"x\"; expected a number",
      "<bin from='0' to='1e999' value='1'/>"
          + '|' + "line 2, column 36: to of <bin> is \"1e999\"; expected a number",
      "<bin from='0' to='1' value='1' count='1'/>| line 2, column 53: <bin> has no attribute"
          + " \"count\"; expected one of from, to, value",
      "<bin from='0' to='1' value='1'>x</bin>"
          + '|' + "line 2, column 22: <bin> cannot hold the text \"x\"",
      "<bin from='0' to='1' value='1'/><x column='a'/>| line 2, column 54: a <histogram> that"
          + " brings its bins has no channels, but found <x>",
      "<bin from='0' to='2' value='1'/><bin from='1.5' to='3' value='1'/>| line 2, column 54: the"
          + " bin starts at 1.5, below the end of the one before it, 2",
  })
  void tellWhatIsWrong(String inside, String message) {
    assertEquals(message, error("", "<histogram>" + inside + "</histogram>"));
  }

  @Test
  void tellWhatAHistogramThatBringsThemCannotHave() {
    assertEquals(
        "line 2, column 22: a <histogram> that brings its bins has no bins",
        error("", "<histogram bins='3'>" + BIN + "</histogram>"));
    assertEquals(
        "line 2, column 22: a <histogram> that brings its bins has no arrangement",
        error("", "<histogram arrangement='stacked'>" + BIN + "</histogram>"));
    assertEquals(
        "line 2, column 16: found <bin> inside <bar>; expected one of x, y, color, label",
        error("", "<bar>" + BIN + "</bar>"));
  }

  @ParameterizedTest
  @CsvSource({"x, category", "x, time", "y, category", "y, time"})
  void needAxesOfNumbers(String axis, String scale) {
    assertEquals("line 2, column 11: a histogram that brings its bins needs an axis of numbers, but"
            + " the " + axis + " axis is " + scale,
        error("<axes><" + axis + " scale='" + scale + "'/></axes>",
            "<histogram>" + BIN + "</histogram>"));
  }

  @Test
  void beginAboveZeroOnALogAxis() {
    String log = "<axes><x scale='log'/><y scale='log'/></axes>";
    assertEquals("line 2, column 22: a log axis holds only values above 0, but the bin starts at 0",
        error(log, "<histogram>" + BIN + "</histogram>"));
    ChartReader.read(
        chart(log, "<histogram><bin from='0.1' to='1' value='0'/></histogram>").getBytes(UTF_8));
  }

  @Test
  void areCheckedInChartsThatNobodyWrote() {
    List<Bin> bins = List.of(new Bin(0, 1, 1));
    assertEquals(List.of(new Problem("elements[0]", "only a histogram brings its bins")),
        problems(new Element(ElementKind.BAR, null, null, null, null, null, null, null, null, 1,
            bins)));
    Element full = new Element(ElementKind.HISTOGRAM, Channel.of("a"), null, null, null,
        Channel.of("b"), Arrangement.GROUPED, 5, null, 1, bins);
    List<String> paths = problems(full).stream().map(Problem::path).toList();
    assertEquals(List.of("elements[0].x", "elements[0].label", "elements[0].bins",
        "elements[0].arrangement"), paths);
    assertEquals(List.of(new Problem("elements[0].ownBins[0]",
            "the ends and the value of a bin are finite numbers")),
        problems(Element.histogram(List.of(new Bin(0, Double.NaN, 1)), null, 1)));
  }

  @Test
  void areAtMostTenThousand() {
    List<Bin> bins = new ArrayList<>();
    for (int i = 0; i < 10_000; i++) {
      bins.add(new Bin(i, i + 1, i));
    }
    assertEquals(List.of(), problems(Element.histogram(bins, null, 1)));
    bins.add(new Bin(10_000, 10_001, 1));
    assertEquals(
        List.of(new Problem("elements[0]",
            "the histogram has 10001 bins; at most 10000 are accepted")),
        problems(Element.histogram(bins, null, 1)));
  }
}
