// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.format;

import static java.nio.charset.StandardCharsets.UTF_8;
import static org.junit.jupiter.api.Assertions.assertEquals;
import static org.junit.jupiter.api.Assertions.assertNull;
import static org.junit.jupiter.api.Assertions.assertThrows;

import java.util.List;
import org.chartbridge.chart.Aggregate;
import org.chartbridge.chart.Arrangement;
import org.chartbridge.chart.Axis;
import org.chartbridge.chart.Channel;
import org.chartbridge.chart.Chart;
import org.chartbridge.chart.ChartException;
import org.chartbridge.chart.ChartSize;
import org.chartbridge.chart.ColumnDeclaration;
import org.chartbridge.chart.ColumnKind;
import org.chartbridge.chart.Element;
import org.chartbridge.chart.ElementKind;
import org.chartbridge.chart.Facet;
import org.chartbridge.chart.Legend;
import org.chartbridge.chart.LegendPosition;
import org.chartbridge.chart.ScaleKind;
import org.chartbridge.chart.Titles;
import org.junit.jupiter.api.Test;
import org.junit.jupiter.params.ParameterizedTest;
import org.junit.jupiter.params.provider.Arguments;
import org.junit.jupiter.params.provider.CsvSource;
import org.junit.jupiter.params.provider.MethodSource;

class ChartReaderTest {
  private static final String OPEN = "<chart xmlns='urn:chartbridge:chart:2'>";
  private static final String BAR = "<elements><bar><x column='a'/></bar></elements>";

  private static Chart read(String xml) {
    return ChartReader.read(xml.getBytes(UTF_8));
  }

  private static Chart chart(String inside) {
    return read(OPEN + inside + "</chart>");
  }

  private static Element element(String xml) {
    return chart("<elements>" + xml + "</elements>").elements().get(0);
  }

  private static String error(String xml) {
    return assertThrows(ChartException.class, () -> read(xml)).getMessage();
  }

  @Test
  void readsEveryPart() {
    Chart chart =
        read(
            """
            <chart xmlns="urn:chartbridge:chart:2" width="900" height=" 500 " style="dark">
              <palette><color value="#0072B2"/><color value="#e69f00"/></palette>
              <titles title="T" subtitle="S" caption="C&#10;D"/>
              <columns>
                <column name="d" kind="time" label="Day" pattern="dd.MM.yyyy"/>
                <column name="r" kind="category"><category value="N"/><category value=""/></column>
                <column name="n" kind="number"/>
              </columns>
              <axes>
                <y scale="log" title="" min="1" max="1e3" reversed="true" grid="false"
                    format="#,##0"/>
                <x scale="time" min="2024-01-31" max="2024-01-31T12:00:00+02:00" format="yyyy"/>
              </axes>
              <elements>
                <line fill="#000000" opacity="0.5">
                  <x column="d"/><y column="n" aggregate="mean"/><label column="r"/>
                </line>
              </elements>
              <legend position="bottom" title="L"/>
              <facet column="r" columns="3" shared-x="false" shared-y="0"/>
            </chart>
            """);
    Chart expected =
        new Chart(
            new ChartSize(900, 500),
            new Titles("T", "S", "C\nD"),
            List.of(
                new ColumnDeclaration("d", ColumnKind.TIME, "Day", "dd.MM.yyyy", List.of()),
                new ColumnDeclaration("r", ColumnKind.CATEGORY, null, null, List.of("N", "")),
                new ColumnDeclaration("n", ColumnKind.NUMBER, null, null, List.of())),
            new Axis(ScaleKind.TIME, null, 1706659200000.0, 1706695200000.0, false, true, "yyyy"),
            new Axis(ScaleKind.LOG, "", 1.0, 1000.0, true, false, "#,##0"),
            List.of(
                new Element(
                    ElementKind.LINE, Channel.of("d"), new Channel("n", Aggregate.MEAN), null,
                    null, Channel.of("r"), null, null, "#000000", 0.5)),
            new Legend(LegendPosition.BOTTOM, "L"),
            new Facet("r", 3, false, false),
            "dark",
            List.of("#0072B2", "#e69f00"));
    assertEquals(expected, chart);
  }

  @Test
  void leavesEverythingElseAtItsDefault() {
    Chart chart = chart(BAR);
    Element bar = new Element(ElementKind.BAR, Channel.of("a"), null, null, null, null,
        Arrangement.GROUPED, null, null, 1);
    Chart expected = new Chart(ChartSize.DEFAULT, Titles.NONE, List.of(), Axis.DEFAULT,
        Axis.DEFAULT, List.of(bar), Legend.DEFAULT, null, null, List.of());
    assertEquals(expected, chart);
  }

  @ParameterizedTest
  @CsvSource({"BAR,GROUPED", "AREA,STACKED", "HISTOGRAM,STACKED", "LINE,", "POINT,", "BOX,", "PIE,",
      "HEATMAP,"})
  void
  readsEveryElement(ElementKind kind, Arrangement arrangement) {
    String name = kind.name().toLowerCase(java.util.Locale.ROOT);
    String color = kind == ElementKind.HEATMAP ? "<color column='c'/>" : "";
    Element element =
        element("<" + name + "><x column='a'/><y column='b'/>" + color + "</" + name + ">");
    assertEquals(kind, element.kind());
    assertEquals(arrangement, element.arrangement());
    assertEquals(Channel.of("a"), element.x());
    assertEquals(Channel.of("b"), element.y());
  }

  @ParameterizedTest
  @CsvSource(
      {"none,NONE", "count,COUNT", "sum,SUM", "mean,MEAN", "median,MEDIAN", "min,MIN", "max,MAX"})
  void
  readsEveryAggregate(String word, Aggregate aggregate) {
    Element element = element("<bar><x column='a'/><y column='b' aggregate='" + word + "'/></bar>");
    assertEquals(new Channel("b", aggregate), element.y());
  }

  @Test
  void readsChannelsWithoutAColumn() {
    assertEquals(Channel.count(), element("<bar><x column='a'/><y aggregate='count'/></bar>").y());
  }

  @ParameterizedTest
  @CsvSource({"grouped,GROUPED", "stacked,STACKED", "filled,FILLED", "overlaid,OVERLAID"})
  void readsEveryArrangement(String word, Arrangement arrangement) {
    assertEquals(arrangement,
        element("<bar arrangement='" + word + "'><x column='a'/></bar>").arrangement());
    assertEquals(arrangement,
        element("<histogram arrangement='" + word + "'><x column='a'/></histogram>").arrangement());
  }

  @ParameterizedTest
  @CsvSource({"auto,AUTO", "linear,LINEAR", "log,LOG", "time,TIME", "category,CATEGORY"})
  void readsEveryScale(String word, ScaleKind scale) {
    assertEquals(scale, chart("<axes><x scale='" + word + "'/></axes>" + BAR).x().scale());
  }

  @ParameterizedTest
  @CsvSource({"right,RIGHT", "bottom,BOTTOM", "top,TOP", "left,LEFT", "none,NONE"})
  void readsEveryLegendPosition(String word, LegendPosition position) {
    assertEquals(position, chart("<legend position='" + word + "'/>" + BAR).legend().position());
  }

  @Test
  void ignoresCommentsProcessingInstructionsAndSchemaHints() {
    String hint =
        " xmlns:i='http://www.w3.org/2001/XMLSchema-instance' "
            + "i:schemaLocation='urn:chartbridge:chart:2 x.xsd'";
    Chart chart = read("<?a b?><!-- c -->" + OPEN.replace(">", hint + ">") + "<!-- d -->" + BAR
        + "<?e?></chart><!-- f -->");
    assertEquals(chart(BAR), chart);
  }

  @Test
  void acceptsAnyPrefix() {
    String xml =
        "<c:chart xmlns:c='urn:chartbridge:chart:2'><c:elements><c:bar><c:x "
            + "column='a'/></c:bar></c:elements></c:chart>";
    assertEquals(chart(BAR), read(xml));
  }

  @Test
  void facetDefaultsToSharedAxes() {
    assertEquals(new Facet("r", null, true, true), chart(BAR + "<facet column='r'/>").facet());
    assertNull(chart(BAR).facet());
  }

  /** Mistakes that the schema refuses too, unless it cannot say them. */
  static List<Arguments> structure() {
    String elements = "expected one of bar, line, area, point, histogram, box, pie, heatmap";
    return List.of(
        // Not a chart
        mistake("<html/>",
            "1, column 1: found <html>, which is not a chart; expected <chart "
                + "xmlns=\"urn:chartbridge:chart:2\">"),
        mistake("<chart/>",
            "1, column 1: <chart> has no namespace; expected <chart "
                + "xmlns=\"urn:chartbridge:chart:2\">"),
        mistake("<chart xmlns='urn:chartbridge:chart:3'/>",
            "1, column 1: the chart is of version 3; versions 1 and 2 are known here"),
        mistake("<chart xmlns='urn:x'/>",
            "1, column 1: <chart> has the namespace \"urn:x\"; expected <chart "
                + "xmlns=\"urn:chartbridge:chart:2\">"),
        // Structure
        inside("<legnd/>",
            "2, column 1: found <legnd> inside <chart>; expected one of titles, columns, axes, "
                + "elements, "
                + "legend, facet, palette, data; did you mean \"legend\"?"),
        inside(BAR + "\n" + BAR, "3, column 1: <chart> has more than one <elements>"),
        inside("<titles title='a'/>", "1, column 1: <chart> needs <elements>"),
        inside("<elements/>", "2, column 1: the chart has no element; " + elements),
        inside("<elements><bars/></elements>",
            "2, column 11: found <bars> inside <elements>; " + elements
                + "; did you mean \"bar\"?"),
        inside(
            BAR + "hello  \n world", "1, column 1: <chart> cannot hold the text \"hello world\""),
        inside("<elements><b xmlns='urn:x'/></elements>",
            "2, column 11: <b> has the namespace \"urn:x\"; expected \"urn:chartbridge:chart:2\""),
        inside("<elements><bar><x column='a'><y/></x></bar></elements>",
            "2, column 30: found <y> inside <x>, which holds no elements"),
        inside("<elements><bar><x column='a'/><x column='b'/></bar></elements>",
            "2, column 31: <bar> has more than one <x>"),
        inside("<elements><pie><x column='a'/><color column='b'/></pie></elements>",
            "2, column 31: found <color> inside <pie>; expected one of x, y, label"),
        // Attributes
        inside("<legend postion='top'/>" + BAR,
            "2, column 9: <legend> has no attribute \"postion\"; expected one of position, "
                + "title; did you mean \"position\"?"),
        inside("<elements><line bins='3'/></elements>",
            "2, column 17: <line> has no attribute \"bins\"; expected one of fill, opacity"),
        inside("<elements a='1'/>", "2, column 11: <elements> has no attribute \"a\""),
        inside("<elements><bar xml:lang='de'/></elements>",
            "2, column 16: <bar> has no attribute "
                + "\"{http://www.w3.org/XML/1998/namespace}lang\"; expected one of arrangement, "
                + "fill, opacity"),
        inside("<legend position='under'/>" + BAR,
            "2, column 9: position of <legend> is \"under\"; expected one of right, bottom, top, "
                + "left, none"),
        inside("<axes><x scale='logarithmic'/></axes>" + BAR,
            "2, column 10: scale of <x> is \"logarithmic\"; expected one of auto, linear, log, "
                + "time, category"),
        inside("<axes><x scale='Log'/></axes>" + BAR,
            "2, column 10: scale of <x> is \"Log\"; expected one of auto, linear, log, time, "
                + "category; did you mean \"log\"?"),
        inside("<axes><x min='low'/></axes>" + BAR,
            "2, column 10: min of <x> is \"low\"; expected a number or a date such as 2024-01-31"),
        inside("<axes><x min='2024-02-30'/></axes>" + BAR,
            "2, column 10: min of <x> is \"2024-02-30\"; expected a number or a date such as "
                + "2024-01-31"),
        inside("<axes><x min='NaN'/></axes>" + BAR,
            "2, column 10: min of <x> is \"NaN\"; expected a number or a date such as 2024-01-31"),
        inside("<axes><x grid='yes'/></axes>" + BAR,
            "2, column 10: grid of <x> is \"yes\"; expected true or false"),
        inside("<elements><bar opacity='50%'/></elements>",
            "2, column 16: opacity of <bar> is \"50%\"; expected a number"),
        inside("<elements><histogram bins='2.5'/></elements>",
            "2, column 22: bins of <histogram> is \"2.5\"; expected a whole number"),
        inside(
            "<elements><bar><x/></bar></elements>", "2, column 16: <x> needs the attribute column"),
        inside(
            "<elements><line><x column='a'/><y column='b&#10; c' "
                + "aggregate='x&#10;y'/></line></elements>",
            "2, column 53: "
                + "aggregate of <y> is \"x y\"; expected one of none, count, sum, mean, median, "
                + "min, max"),
        inside("<elements><bar><x column=' '/></bar></elements>",
            "2, column 19: column of <x> must not be empty"),
        inside("<elements><bar><x column='a'/><y aggregate='sum'/></bar></elements>",
            "2, column 31: <y> needs the attribute column"),
        inside("<columns><column kind='number'/></columns>" + BAR,
            "2, column 10: <column> needs the attribute name"),
        inside("<columns><column name='a'/></columns>" + BAR,
            "2, column 10: <column> needs the attribute kind"),
        inside("<columns><column name='a' kind='text'/></columns>" + BAR,
            "2, column 27: kind of <column> is \"text\"; expected one of number, category, time"),
        inside(
            BAR + "<palette><color/></palette>", "2, column 57: <color> needs the attribute value"),
        inside("<elements><area arrangement='grouped'/></elements>",
            "2, column 17: arrangement of <area> is \"grouped\"; expected one of stacked, "
                + "filled, overlaid"));
  }

  /** Mistakes that a schema cannot say, or only in part. */
  static List<Arguments> meaning() {
    return List.of(
        inside("<elements><heatmap><x column='a'/><y column='b'/></heatmap></elements>",
            "2, column 11: a heat map needs color: the value that each cell shows"),
        inside("<elements><line><y column='b'/></line></elements>",
            "2, column 11: a line needs x: the column along the x axis"),
        inside("<elements><bar opacity='1.5'><x column='a'/></bar></elements>",
            "2, column 16: the opacity is 1.5; expected 0 to 1"),
        inside("<elements><histogram bins='501'><x column='a'/></histogram></elements>",
            "2, column 22: the number of bins is 501; expected 1 to 500"),
        inside("<axes><y min='5' max='5'/></axes>" + BAR,
            "2, column 18: the axis ends at 5, which is not above its start 5"),
        inside(BAR + "<palette><color value='red'/></palette>",
            "2, column 64: \"red\" is not a colour; expected # and six hexadecimal digits, such "
                + "as #0072b2"),
        mistake("<chart xmlns='urn:chartbridge:chart:2' width='10'>" + BAR + "</chart>",
            "1, column 40: the width is 10; expected 16 to 10000"));
  }

  private static Arguments inside(String inside, String message) {
    return mistake(OPEN + "\n" + inside + "</chart>", message);
  }

  private static Arguments mistake(String xml, String message) {
    return Arguments.of(xml, "line " + message);
  }

  @ParameterizedTest
  @MethodSource({"structure", "meaning"})
  void saysWhatIsWrongAndWhere(String xml, String message) {
    assertEquals(message, error(xml));
  }

  @Test
  void blankTextMeansNothing() {
    String spaced =
        "<titles title='a'>\n</titles><elements> <bar ><x column='a' > </x> </bar> </elements>";
    assertEquals(chart("<titles title='a'/>" + BAR), chart(spaced));
  }

  @Test
  void theSchemaHasTheLastWord() {
    // XML Schema knows no year 0, and nothing else here minds it.
    String xml = OPEN + "\n<axes><x min='0000-01-01'/></axes>" + BAR + "</chart>";
    String message = error(xml);
    String start = "line 2, column 7: <x> is not allowed like this: cvc-";
    assertEquals(start, message.substring(0, Math.min(start.length(), message.length())));
  }
}
