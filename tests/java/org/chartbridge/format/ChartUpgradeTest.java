// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.format;

import static java.nio.charset.StandardCharsets.UTF_16;
import static java.nio.charset.StandardCharsets.UTF_8;
import static org.junit.jupiter.api.Assertions.assertArrayEquals;
import static org.junit.jupiter.api.Assertions.assertEquals;
import static org.junit.jupiter.api.Assertions.assertNull;
import static org.junit.jupiter.api.Assertions.assertThrows;

import java.util.List;
import org.chartbridge.chart.ChartException;
import org.chartbridge.xml.SafeXml;
import org.junit.jupiter.api.Test;
import org.junit.jupiter.params.ParameterizedTest;
import org.junit.jupiter.params.provider.Arguments;
import org.junit.jupiter.params.provider.CsvSource;
import org.junit.jupiter.params.provider.MethodSource;

class ChartUpgradeTest {
  private static final String OPEN = "<chart xmlns='urn:chartbridge:chart:1'>";
  private static final String LAYER = "<layer type='bar'><x><field name='a'/></x></layer>";

  private static String upgrade(String xml) {
    return new String(ChartUpgrade.upgrade(xml.getBytes(UTF_8)), UTF_8);
  }

  /** The upgraded chart without the declaration and the root's tags. */
  private static String upgradeInside(String inside) {
    String xml = upgrade(OPEN + inside + "</chart>");
    int from = xml.indexOf('\n', xml.indexOf("<chart")) + 1;
    return xml.substring(from, xml.lastIndexOf("</chart>"))
        .replaceAll("(?m)^ +", "")
        .replace("\n", "");
  }

  private static String error(String xml) {
    return assertThrows(ChartException.class, () -> upgrade(xml)).getMessage();
  }

  @Test
  void renamesAndMovesEverything() {
    String old =
        """
        <?xml version="1.0"?>
        <!-- licence -->
        <chart xmlns="urn:chartbridge:chart:1" size="900x500" x-scale="time" x-title="Day"
            x-from="2024-01-01" x-to="2024-12-31" x-direction="backward" x-grid="yes"
            x-format="MMM" y-scale="log" y-from="1" y-to="1e3"
            y-title="" y-direction="forward" y-grid="no" y-format="0.0">
          <!-- texts -->
          <title>Sales
            by day</title>
          <subtitle/>
          <footnote> Source &amp; more </footnote>
          <!-- columns -->
          <field name="day" type="date" caption="Day" date-format="dd.MM.yyyy"/>
          <!-- second -->
          <field name="region" type="nominal"><!-- compass -->
            <value>North</value><value> Far  East </value>
          </field>
          <field name="sales" type="numeric"/>
          <layer type="area" mode="percent" transparency="0.3">
            <!-- why -->
            <x><field name="day"/></x>
            <y><!-- total --><sum field="sales"/></y>
            <color><field name="region"/></color>
          </layer>
          <layer type="point" color="#0072b2">
            <x><field name="day"/></x><y><median field="sales"/></y>
            <size><count/></size><label><count field="sales"/></label>
          </layer>
          <!-- small ones -->
          <panels by="region" per-row="2" free="x"/>
          <style name="dark">
            <!-- look -->
            <colors>#0072b2
              #E69F00</colors>
            <legend position="left" title="Region"/>
          </style>
          <!-- end -->
        </chart>
        """;
    String expected =
        """
        <?xml version="1.0" encoding="UTF-8"?>
        <chart xmlns="urn:chartbridge:chart:2" width="900" height="500" style="dark">
          <!-- licence -->
          <!-- texts -->
          <titles title="Sales by day" subtitle="" caption="Source &amp; more"/>
          <!-- columns -->
          <columns>
            <column name="day" kind="time" label="Day" pattern="dd.MM.yyyy"/>
            <!-- second -->
            <column name="region" kind="category">
              <!-- compass -->
              <category value="North"/>
              <category value="Far East"/>
            </column>
            <column name="sales" kind="number"/>
          </columns>
          <axes>
            <x scale="time" title="Day" min="2024-01-01" max="2024-12-31" reversed="true" \
        grid="true" format="MMM"/>
            <y scale="log" title="" min="1" max="1e3" reversed="false" grid="false" format="0.0"/>
          </axes>
          <elements>
            <area arrangement="filled" opacity="0.7">
              <!-- why -->
              <x column="day"/>
              <y column="sales" aggregate="sum">
                <!-- total -->
              </y>
              <color column="region"/>
            </area>
            <point fill="#0072b2">
              <x column="day"/>
              <y column="sales" aggregate="median"/>
              <size aggregate="count"/>
              <label column="sales" aggregate="count"/>
            </point>
          </elements>
          <legend position="left" title="Region"/>
          <!-- small ones -->
          <facet column="region" columns="2" shared-x="false"/>
          <palette>
            <color value="#0072b2"/>
            <color value="#E69F00"/>
          </palette>
          <!-- look -->
          <!-- end -->
        </chart>
        """;
    assertEquals(expected, upgrade(old));
  }

  @Test
  void anUpgradedChartIsReadAsTheOldOneAndStaysAsItIs() {
    String old = OPEN + "<title>T</title>" + LAYER + "</chart>";
    byte[] upgraded = ChartUpgrade.upgrade(old.getBytes(UTF_8));
    assertEquals(ChartReader.read(old.getBytes(UTF_8)), ChartReader.read(upgraded));
    assertArrayEquals(upgraded, ChartUpgrade.upgrade(upgraded));
    assertNull(ChartVersion.V2.schema.firstError(SafeXml.parse(upgraded)));
  }

  @Test
  void aCurrentChartComesBackByteForByte() {
    String odd =
        "\uFEFF<?xml version='1.0'?>\r\n<!-- c -->\r\n<c:chart   "
            + "xmlns:c='urn:chartbridge:chart:2' ><c:elements>"
        + "<c:bar  ><c:x column = 'a'/></c:bar></c:elements></c:chart>\r\n\r\n<!-- end -->";
    assertArrayEquals(odd.getBytes(UTF_8), ChartUpgrade.upgrade(odd.getBytes(UTF_8)));
    byte[] wide = odd.substring(1).getBytes(UTF_16);
    assertArrayEquals(wide.clone(), ChartUpgrade.upgrade(wide));
  }

  @ParameterizedTest
  @CsvSource({"bar,bar", "line,line", "area,area", "point,point", "histogram,histogram",
      "boxplot,box", "pie,pie", "heatmap,heatmap"})
  void
  upgradesEveryLayer(String type, String name) {
    String y = type.equals("histogram") ? "" : "<y><field name='b'/></y>";
    String color = type.equals("heatmap") ? "<color><mean field='c'/></color>" : "";
    String layer = "<layer type='" + type + "'><x><field name='a'/></x>" + y + color + "</layer>";
    String expected = "<elements><" + name + "><x column=\"a\"/>"
        + (y.isEmpty() ? "" : "<y column=\"b\"/>")
        + (color.isEmpty() ? "" : "<color column=\"c\" aggregate=\"mean\"/>") + "</" + name
        + "></elements>";
    assertEquals(expected, upgradeInside(layer));
  }

  @ParameterizedTest
  @CsvSource({"clustered,grouped", "stacked,stacked", "percent,filled", "overlay,overlaid"})
  void upgradesEveryMode(String mode, String arrangement) {
    String layer =
        "<layer type='histogram' mode='" + mode + "' bins='7'><x><field name='a'/></x></layer>";
    assertEquals("<elements><histogram arrangement=\"" + arrangement
            + "\" bins=\"7\"><x column=\"a\"/></histogram></elements>",
        upgradeInside(layer));
  }

  @ParameterizedTest
  @CsvSource({"count", "sum", "mean", "median", "min", "max"})
  void upgradesEverySummary(String summary) {
    String layer =
        "<layer type='bar'><x><field name='a'/></x><y><" + summary + " field='b'/></y></layer>";
    assertEquals("<elements><bar><x column=\"a\"/><y column=\"b\" aggregate=\"" + summary
            + "\"/></bar></elements>",
        upgradeInside(layer));
  }

  @ParameterizedTest
  @CsvSource({"0,1", "1,0", "0.1,0.9", "0.3,0.7", "1e-1,0.9", "0.25,0.75"})
  void opacityIsWhatTransparencyLeaves(String transparency, String opacity) {
    String layer = LAYER.replace("'bar'", "'bar' transparency='" + transparency + "'");
    assertEquals("<elements><bar opacity=\"" + opacity + "\"><x column=\"a\"/></bar></elements>",
        upgradeInside(layer));
  }

  @ParameterizedTest
  @CsvSource(value = {"none|", "x|' shared-x=\"false\"'", "y|' shared-y=\"false\"'",
                 "both|' shared-x=\"false\" shared-y=\"false\"'"},
      delimiter = '|')
  void
  upgradesFreePanels(String free, String shared) {
    String expected = "<facet column=\"r\"" + (shared == null ? "" : shared) + "/>";
    assertEquals("<elements><bar><x column=\"a\"/></bar></elements>" + expected,
        upgradeInside(LAYER + "<panels by='r' free='" + free + "'/>"));
  }

  static List<Arguments> mistakes() {
    String parts = "expected one of title, subtitle, footnote, field, layer, panels, style";
    return List.of(inside("", "1, column 1: <chart> needs a <layer>"),
        inside("<titel/>" + LAYER,
            "2, column 1: found <titel> inside <chart>; " + parts + "; did you mean \"title\"?"),
        inside(LAYER + "\n<title>T</title>",
            "3, column 1: <title> stands after <layer>; expected before it"),
        inside("<title/><title/>" + LAYER, "2, column 9: <chart> has more than one <title>"),
        inside(
            "<title><b/></title>" + LAYER, "2, column 8: <title> holds text only, but found <b>"),
        inside("<title lang='de'/>" + LAYER, "2, column 8: <title> has no attribute \"lang\""),
        inside("<field name='a' type='numbr'/>" + LAYER,
            "2, column 17: type of <field> is \"numbr\"; expected one of numeric, nominal, date"),
        inside("<field type='date'/>" + LAYER, "2, column 1: <field> needs the attribute name"),
        inside("<field name='a'/>" + LAYER, "2, column 1: <field> needs the attribute type"),
        inside("<layer/>", "2, column 1: <layer> needs the attribute type"),
        inside("<layer type='box'/>",
            "2, column 8: type of <layer> is \"box\"; expected one of bar, line, area, point, "
                + "histogram, boxplot, pie, heatmap"),
        inside("<layer type='bar' mode='grouped'/>",
            "2, column 19: mode of <layer> is \"grouped\"; expected one of clustered, stacked, "
                + "percent, overlay"),
        inside("<layer type='bar' transparency='2'/>",
            "2, column 19: transparency of <layer> is \"2\"; expected 0 to 1"),
        inside("<layer type='bar' opacity='1'/>",
            "2, column 19: <layer> has no attribute \"opacity\"; "
                + "expected one of type, mode, bins, color, transparency"),
        inside("<layer type='bar'><x/></layer>",
            "2, column 19: <x> holds 0 elements; expected one of field, count, sum, "
                + "mean, median, min, max"),
        inside("<layer type='bar'><x><total field='a'/></x></layer>",
            "2, column 22: found <total> inside <x>; "
                + "expected one of field, count, sum, mean, median, min, max"),
        inside("<layer type='bar'><x><field field='a'/></x></layer>",
            "2, column 22: <field> needs the attribute name"),
        inside("<layer type='bar'><x><sum/></x></layer>",
            "2, column 22: <sum> needs the attribute field"),
        inside("<layer type='heatmap'><x><field name='a'/></x><y><field name='a'/></y></layer>",
            "2, column 1: a heat map needs color: the value that each cell shows"),
        inside(LAYER + "<panels/>", "2, column 51: <panels> needs the attribute by"),
        inside(LAYER + "<panels by='a' free='z'/>",
            "2, column 66: free of <panels> is \"z\"; expected one of none, x, y, both"),
        inside(LAYER + "<style><colors>blue</colors></style>",
            "2, column 58: \"blue\" is not a colour; expected # and six hexadecimal digits, such "
                + "as #0072b2"),
        Arguments.of("<chart xmlns='urn:chartbridge:chart:1' size='big'>" + LAYER + "</chart>",
            "line 1, column 40: size of <chart> is \"big\"; expected width and height such as "
                + "800x600"),
        Arguments.of("<chart xmlns='urn:chartbridge:chart:1' x-from='low'>" + LAYER + "</chart>",
            "line 1, column 40: x-from of <chart> is \"low\"; expected a number or a date such "
                + "as 2024-01-31"),
        Arguments.of("<chart xmlns='urn:chartbridge:chart:1' y-grid='on'>" + LAYER + "</chart>",
            "line 1, column 40: y-grid of <chart> is \"on\"; expected one of yes, no; did you "
                + "mean \"no\"?"),
        Arguments.of("<chart xmlns='urn:chartbridge:chart:2'/>",
            "line 1, column 1: <chart> needs <elements>"),
        Arguments.of("<a/>",
            "line 1, column 1: found <a>, which is not a chart; expected <chart "
                + "xmlns=\"urn:chartbridge:chart:2\">"));
  }

  private static Arguments inside(String inside, String message) {
    return Arguments.of(OPEN + "\n" + inside + "</chart>", "line " + message);
  }

  @ParameterizedTest
  @MethodSource("mistakes")
  void saysWhatIsWrongAndWhere(String xml, String message) {
    assertEquals(message, error(xml));
  }
}
