// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.vega;

import static org.chartbridge.vega.Documents.encoding;
import static org.chartbridge.vega.Documents.mark;
import static org.chartbridge.vega.Documents.steps;
import static org.chartbridge.vega.Documents.template;
import static org.chartbridge.vega.Documents.texts;
import static org.junit.jupiter.api.Assertions.assertEquals;
import static org.junit.jupiter.api.Assertions.assertFalse;
import static org.junit.jupiter.api.Assertions.assertTrue;

import com.fasterxml.jackson.databind.JsonNode;
import java.util.List;
import org.chartbridge.chart.Chart;
import org.junit.jupiter.api.Test;
import org.junit.jupiter.params.ParameterizedTest;
import org.junit.jupiter.params.provider.ValueSource;

/** Charts without data. */
class TemplateTest {
  @Test
  void dataAreNamedAndNotThere() {
    JsonNode chart = template("draw bar: x region, y sum of sales, color product");
    assertEquals("{\"name\":\"data\"}", chart.path("data").toString());
    assertEquals("sum", steps(chart.at("/layer/0"), "aggregate").get(0)
        .at("/aggregate/0/op").asText());
  }

  @ParameterizedTest
  @ValueSource(strings = {
      "draw bar: x a, y b", "draw stacked bar: y a, x sum of b, color c", "draw line: x a, y b",
      "draw area: x a, y b, color c", "draw point: x a, y b, size d, color c, label e",
      "draw histogram: x a, color c", "draw box: x a, y b", "draw pie: x a, y b",
      "draw heatmap: x a, y b, color mean of c", "draw line: x a, y b\naxis y: log",
      "draw line: x a, y b\naxis x: from 1951 to 1961", "draw bar: x a\npanels by f",
      "column t: time\ndraw bar: x t, y max of b, color c"})
  void everyElementGoesWithoutData(String text) {
    JsonNode chart = template(text);
    assertFalse(chart.toString().contains("Infinity"));
    assertEquals("data", chart.at("/data/name").asText());
  }

  @Test
  void kindsOfColumnsFollowTheirUse() {
    JsonNode bar = template("draw bar: x region, y sales, color product");
    assertEquals("nominal", encoding(bar, 0).at("/x/type").asText());
    assertEquals("quantitative", encoding(bar, 0).at("/y/type").asText());
    assertEquals("nominal", encoding(bar, 0).at("/color/type").asText());
    JsonNode point = template("draw point: x a, y b, color c");
    assertEquals("quantitative", encoding(point, 0).at("/x/type").asText());
    JsonNode time = template("draw line: x a, y b\naxis x: time");
    assertEquals("temporal", encoding(time, 0).at("/x/type").asText());
    assertEquals("toDate(datum['a'])", time.at("/transform/0/calculate").asText());
  }

  @Test
  void declaredKindsAndOwnDataComeFirst() {
    JsonNode declared = template("column a: category \"2\" < \"1\"\ndraw point: x a, y b");
    assertEquals(List.of("2", "1"), texts(encoding(declared, 0).at("/x/sort")));
    Chart chart = Documents.chart("draw point: x region, y sales", Documents.CSV);
    JsonNode own = Documents.written(VegaLiteChart.template(chart, "svg"));
    assertEquals("nominal", encoding(own, 0).at("/x/type").asText());
    assertFalse(own.toString().contains("North"), "its data stay out");
  }

  @Test
  void whatOnlyDataTellIsLeftToTheViewer() {
    JsonNode histogram = template("draw histogram: x v");
    assertEquals(20, steps(histogram.at("/layer/0"), "bin").get(0).at("/bin/maxbins").asInt());
    JsonNode scale = encoding(template("draw line: x a, y b"), 0).at("/y/scale");
    assertTrue(scale.path("nice").asBoolean());
    assertFalse(scale.has("domain"));
    JsonNode bars = template("draw bar: x a, y sum of b, color c");
    assertFalse(encoding(bars, 0).at("/x/scale").has("domain"));
    assertTrue(encoding(bars, 0).at("/x").has("sort"), "in the order of the data");
    assertEquals(24, encoding(bars, 0).at("/color/scale/range").size());
  }

  @Test
  void limitsStay() {
    JsonNode chart = template("draw line: x a, y b\naxis x: from 1951 to 1961\naxis y: from 0");
    assertEquals(1951, encoding(chart, 0).at("/x/scale/domainMin").asInt());
    assertEquals(1961, encoding(chart, 0).at("/x/scale/domainMax").asInt());
    assertEquals(0, encoding(chart, 0).at("/y/scale/domainMin").asInt(1));
    assertTrue(mark(chart, 0).path("clip").asBoolean());
  }

  @Test
  void coloursAreRankedByTheirFirstRow() {
    JsonNode chart = template("draw stacked bar: x a, y sum of b, color c");
    JsonNode steps = chart.path("transform");
    assertEquals("row_number", steps.at("/0/window/0/op").asText());
    assertEquals("min", steps.at("/1/joinaggregate/0/op").asText());
    assertEquals(List.of("c"), texts(steps.at("/1/groupby")));
  }
}
