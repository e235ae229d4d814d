// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.format;

import static java.nio.charset.StandardCharsets.UTF_8;
import static org.junit.jupiter.api.Assertions.assertArrayEquals;
import static org.junit.jupiter.api.Assertions.assertEquals;
import static org.junit.jupiter.api.Assertions.assertThrows;
import static org.junit.jupiter.api.Assertions.assertTrue;

import java.util.EnumMap;
import java.util.EnumSet;
import java.util.List;
import java.util.Map;
import java.util.Set;
import org.chartbridge.chart.Aggregate;
import org.chartbridge.chart.Arrangement;
import org.chartbridge.chart.Axis;
import org.chartbridge.chart.Bin;
import org.chartbridge.chart.Channel;
import org.chartbridge.chart.Chart;
import org.chartbridge.chart.ChartException;
import org.chartbridge.chart.ChartRules;
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

class ChartWriterTest {
  private static final int CHARTS = 1_000;

  @Test
  void readsBackEveryChartAsItWas() {
    RandomCharts charts = RandomCharts.ofXml(42);
    for (int i = 0; i < CHARTS; i++) {
      Chart chart = charts.next();
      byte[] xml = ChartWriter.write(chart);
      Chart read = assertReads(xml);
      assertEquals(chart, read, () -> new String(xml, UTF_8));
      assertArrayEquals(xml, ChartWriter.write(read));
    }
  }

  @Test
  void theRandomChartsCoverTheModel() {
    RandomCharts charts = RandomCharts.ofXml(42);
    Map<ElementKind, Integer> kinds = new EnumMap<>(ElementKind.class);
    Set<Aggregate> aggregates = EnumSet.noneOf(Aggregate.class);
    Set<Arrangement> arrangements = EnumSet.noneOf(Arrangement.class);
    Set<ScaleKind> scales = EnumSet.noneOf(ScaleKind.class);
    int ownBins = 0;
    int withData = 0;
    int withTemplate = 0;
    for (int i = 0; i < CHARTS; i++) {
      Chart chart = charts.next();
      scales.add(chart.x().scale());
      withData += chart.data() != null ? 1 : 0;
      withTemplate += chart.template() != null ? 1 : 0;
      for (Element element : chart.elements()) {
        kinds.merge(element.kind(), 1, Integer::sum);
        ownBins += element.hasOwnBins() ? 1 : 0;
        if (element.y() != null) {
          aggregates.add(element.y().aggregate());
        }
        if (element.arrangement() != null) {
          arrangements.add(element.arrangement());
        }
      }
    }
    for (ElementKind kind : ElementKind.values()) {
      assertTrue(kinds.getOrDefault(kind, 0) > 20, () -> kind + " in " + kinds);
    }
    assertEquals(EnumSet.allOf(Aggregate.class), aggregates);
    assertEquals(EnumSet.allOf(Arrangement.class), arrangements);
    assertEquals(EnumSet.allOf(ScaleKind.class), scales);
    assertTrue(ownBins > 20, ownBins + " histograms that bring their bins");
    assertTrue(withData > 100, withData + " charts with data");
    assertTrue(withTemplate > 100, withTemplate + " charts with a template");
  }

  @Test
  void refusesExactlyWhatTheRulesRefuse() {
    RandomCharts charts = RandomCharts.ofXml(5);
    int refused = 0;
    for (int i = 0; i < CHARTS; i++) {
      Chart chart = charts.any();
      if (ChartRules.check(chart).isEmpty()) {
        assertEquals(chart, assertReads(ChartWriter.write(chart)));
      } else {
        refused++;
        assertThrows(ChartException.class, () -> ChartWriter.write(chart));
      }
    }
    assertTrue(refused > CHARTS / 10, refused + " refused");
  }

  private static Chart assertReads(byte[] xml) {
    try {
      return ChartReader.read(xml);
    } catch (ChartException e) {
      throw new AssertionError(e.getMessage() + "\n" + new String(xml, UTF_8), e);
    }
  }

  @Test
  void writesInCanonicalForm() {
    Element bar =
        new Element(ElementKind.BAR, Channel.of("t"), new Channel("sales", Aggregate.SUM),
            Channel.of("product"), null, null, Arrangement.STACKED, null, null, 0.8);
    Element histogram = new Element(ElementKind.HISTOGRAM, Channel.of("w"), Channel.count(), null,
        null, null, null, 20, "#0072b2", 1);
    Chart chart = new Chart(new ChartSize(900, 600), new Titles("A < B", null, "two\nlines"),
        List.of(
            new ColumnDeclaration("region", ColumnKind.CATEGORY, "Région", null, List.of("N", "S")),
            new ColumnDeclaration("t", ColumnKind.TIME, null, "yyyy", List.of())),
        new Axis(ScaleKind.TIME, "", 0.0, 86_400_000.5, false, false, "yyyy"),
        new Axis(ScaleKind.LOG, null, 0.1, null, true, true, null), List.of(bar, histogram),
        new Legend(LegendPosition.TOP, null), new Facet("t", 2, false, true), "print",
        List.of("#0072b2"));
    String expected =
        """
        <?xml version="1.0" encoding="UTF-8"?>
        <chart xmlns="urn:chartbridge:chart:2" width="900" height="600" style="print">
          <titles title="A &lt; B" caption="two&#10;lines"/>
          <columns>
            <column name="region" kind="category" label="Région">
              <category value="N"/>
              <category value="S"/>
            </column>
            <column name="t" kind="time" pattern="yyyy"/>
          </columns>
          <axes>
            <x scale="time" title="" min="1970-01-01" max="8.64000005E7" grid="false" \
        format="yyyy"/>
            <y scale="log" min="0.1" reversed="true"/>
          </axes>
          <elements>
            <bar arrangement="stacked" opacity="0.8">
              <x column="t"/>
              <y column="sales" aggregate="sum"/>
              <color column="product"/>
            </bar>
            <histogram bins="20" fill="#0072b2">
              <x column="w"/>
              <y aggregate="count"/>
            </histogram>
          </elements>
          <legend position="top"/>
          <facet column="t" columns="2" shared-x="false"/>
          <palette>
            <color value="#0072b2"/>
          </palette>
        </chart>
        """;
    assertEquals(expected, new String(ChartWriter.write(chart), UTF_8));
  }

  @Test
  void writesDataTemplateAndBins() {
    Element histogram = Element.histogram(
        List.of(new Bin(-0.0, 2.5, 3), new Bin(2.5, 1e20, 0.125)), "#999999", 0.5);
    Chart chart = new Chart(ChartSize.DEFAULT, Titles.NONE, List.of(), Axis.DEFAULT, Axis.DEFAULT,
        List.of(histogram), Legend.DEFAULT, null, null, List.of(),
        "  \n\nregion,sales\n\"A \"\"&\"\" <B>\",1\r\n\tNorth,2\n  ", "house style");
    String expected =
        """
        <?xml version="1.0" encoding="UTF-8"?>
        <chart xmlns="urn:chartbridge:chart:2" width="800" height="600" template="house style">
          <elements>
            <histogram fill="#999999" opacity="0.5">
              <bin from="0" to="2.5" value="3"/>
              <bin from="2.5" to="1.0E20" value="0.125"/>
            </histogram>
          </elements>
          <data>
        region,sales
        "A ""&amp;"" &lt;B&gt;",1&#13;
        \tNorth,2
        </data>
        </chart>
        """;
    assertEquals(expected, new String(ChartWriter.write(chart), UTF_8));
    assertEquals(chart, assertReads(expected.getBytes(UTF_8)));
  }

  @Test
  void namesThePartOfAChartThatCannotBeWritten() {
    Element bar = new Element(
        ElementKind.BAR, Channel.of("a\u0001"), null, null, null, null, null, null, null, 1);
    Chart chart = new Chart(ChartSize.DEFAULT, Titles.NONE, List.of(), Axis.DEFAULT, Axis.DEFAULT,
        List.of(bar), Legend.DEFAULT, null, null, List.of());
    ChartException error = assertThrows(ChartException.class, () -> ChartWriter.write(chart));
    assertEquals("elements[0].x: the text holds the character U+0001, which a chart cannot hold",
        error.getMessage());
  }
}
