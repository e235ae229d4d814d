// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.vega;

import static org.chartbridge.vega.Documents.encoding;
import static org.chartbridge.vega.Documents.failure;
import static org.chartbridge.vega.Documents.mark;
import static org.chartbridge.vega.Documents.steps;
import static org.chartbridge.vega.Documents.still;
import static org.chartbridge.vega.Documents.texts;
import static org.junit.jupiter.api.Assertions.assertEquals;
import static org.junit.jupiter.api.Assertions.assertFalse;
import static org.junit.jupiter.api.Assertions.assertThrows;
import static org.junit.jupiter.api.Assertions.assertTrue;

import com.fasterxml.jackson.databind.JsonNode;
import java.util.List;
import org.chartbridge.chart.ChartException;
import org.junit.jupiter.api.Test;
import org.junit.jupiter.params.ParameterizedTest;
import org.junit.jupiter.params.provider.CsvSource;

/** What charts of every kind become when they stand still, with their data inside. */
class StillChartTest {
  @Test
  void aDocumentHasEverythingAroundItsMarks() {
    JsonNode chart = still("""
        title "Sales \\"now\\""
        subtitle "in euros"
        caption "Source: books"
        size 640 by 400
        style dark
        draw bar: x region, y sum of sales
        """);
    assertEquals("https://vega.github.io/schema/vega-lite/v6.json",
        chart.path("$schema").asText());
    assertEquals(640, chart.path("width").asInt());
    assertEquals(400, chart.path("height").asInt());
    assertEquals("fit", chart.at("/autosize/type").asText());
    assertEquals(List.of("Sales \"now\""), texts(chart.at("/title/text")));
    assertEquals(List.of("in euros"), texts(chart.at("/title/subtitle")));
    assertEquals("#1b1e23", chart.path("background").asText());
    assertEquals("#f2f2f2", chart.at("/title/color").asText());
    assertEquals("\"Liberation Sans\", Arial, Helvetica, sans-serif",
        chart.at("/config/font").asText());
    assertEquals("canvas", chart.at("/usermeta/embedOptions/renderer").asText());
    assertEquals(2, chart.path("layer").size(), "the bars and the caption");
    assertEquals(List.of("Source: books"),
        texts(chart.at("/layer/1/encoding/shape/legend/title")));
  }

  @Test
  void rowsAreInside() {
    JsonNode data = still("draw line: x month, y sum of sales").path("data");
    assertEquals(5, data.path("values").size());
    assertEquals("{\"month\":\"2024-01-01\",\"sales\":10}", data.at("/values/0").toString());
    assertTrue(data.at("/values/3/sales").isNull());
    assertEquals("date", data.at("/format/parse/month").asText());
  }

  @Test
  void aggregatesAreVegas() {
    JsonNode chart = still("""
        draw bar: x region, y mean of sales, color product
        draw point: x region, y count of cost
        draw line: x region, y median of cost
        """);
    JsonNode aggregate = steps(chart.at("/layer/0"), "aggregate").get(0);
    assertEquals("{\"op\":\"mean\",\"field\":\"sales\",\"as\":\"mean of sales\"}",
        aggregate.at("/aggregate/0").toString());
    assertEquals(List.of("region", "product", "product rank"), texts(aggregate.path("groupby")));
    assertEquals("valid",
        steps(chart.at("/layer/1"), "aggregate").get(0).at("/aggregate/0/op").asText());
    assertEquals("median",
        steps(chart.at("/layer/2"), "aggregate").get(0).at("/aggregate/0/op").asText());
    assertEquals("isValid(datum['mean of sales'])",
        steps(chart.at("/layer/0"), "filter").get(2).path("filter").asText());
  }

  @Test
  void groupedBarsStandSideBySide() {
    JsonNode encoding = encoding(still("draw bar: x region, y sum of sales, color product"), 0);
    assertEquals(List.of("North", "South", "East"), texts(encoding.at("/x/scale/domain")));
    assertEquals(0.2, encoding.at("/x/scale/paddingInner").asDouble());
    assertEquals("product", encoding.at("/xOffset/field").asText());
    assertEquals(List.of("Tea", "Coffee"), texts(encoding.at("/xOffset/scale/domain")));
    assertEquals(List.of("#0072b2", "#e69f00"), texts(encoding.at("/color/scale/range")));
    assertEquals("sales (sum)", encoding.at("/y/axis/title").asText());
    assertEquals(0, encoding.at("/y2/datum").asInt(1));
    assertTrue(encoding.at("/y/stack").isNull() && encoding.path("y").has("stack"));
  }

  @Test
  void stackedAndFilledBarsAreStacked() {
    JsonNode stacked = still("draw stacked bar: x region, y sum of sales, color product");
    JsonNode stack = steps(stacked.at("/layer/0"), "stack").get(0);
    assertEquals("zero", stack.path("offset").asText());
    assertEquals("product rank", stack.at("/sort/0/field").asText());
    assertEquals("lower", encoding(stacked, 0).at("/y/field").asText());
    assertEquals("upper", encoding(stacked, 0).at("/y2/field").asText());
    assertEquals(0.3, encoding(stacked, 0).at("/x/scale/paddingInner").asDouble());
    JsonNode filled = still("draw filled bar: x region, y sum of sales, color product");
    assertEquals("normalize",
        steps(filled.at("/layer/0"), "stack").get(0).path("offset").asText());
    assertEquals("~%", encoding(filled, 0).at("/y/axis/format").asText());
  }

  @Test
  void barsLieWhenTheirCategoriesAreOnTheYAxis() {
    JsonNode chart = still("draw bar: y region, x sum of sales, label sum of sales");
    assertEquals("band", encoding(chart, 0).at("/y/scale/type").asText());
    assertEquals(0, encoding(chart, 0).at("/x2/datum").asInt(1));
    assertTrue(encoding(chart, 0).at("/y/axis/domain").asBoolean());
    assertFalse(encoding(chart, 0).at("/x/axis/domain").asBoolean());
    JsonNode label = chart.at("/layer/0/layer/1");
    assertEquals("text", label.at("/mark/type").asText());
    assertEquals("middle", label.at("/mark/baseline").asText());
  }

  @Test
  void overlaidBarsStandInOrderOfTheirSize() {
    JsonNode encoding =
        encoding(still("draw overlaid bar: x region, y sum of sales, color product"), 0);
    assertEquals("descending", encoding.at("/order/sort").asText());
    assertFalse(encoding.has("xOffset"));
  }

  @Test
  void rowsOfOnePositionShareItsRoom() {
    JsonNode chart = still("draw bar: x region, y sales");
    assertEquals("row_number",
        steps(chart.at("/layer/0"), "window").get(0).at("/window/0/op").asText());
    assertTrue(mark(chart, 0).at("/width/expr").asText().contains("datum['parts']"));
  }

  @Test
  void barsOnAnAxisOfTimesAreAsWideAsTheSmallestGap() {
    JsonNode chart = still("draw bar: x month, y sum of sales");
    assertEquals("rect", mark(chart, 0).path("type").asText());
    assertEquals("lag",
        steps(chart.at("/layer/0"), "window").get(0).at("/window/0/op").asText());
    assertEquals("from", encoding(chart, 0).at("/x/field").asText());
    assertEquals("to", encoding(chart, 0).at("/x2/field").asText());
    assertEquals("utc", encoding(chart, 0).at("/x/scale/type").asText());
  }

  @Test
  void barsOnALogScaleStandOnItsStart() {
    JsonNode y = encoding(still("draw bar: x region, y sum of sales\naxis y: log"), 0);
    assertEquals("log", y.at("/y/scale/type").asText());
    assertEquals("height", y.at("/y2/value").asText());
  }

  @Test
  void linesRunInTheOrderOfTheirAxis() {
    JsonNode time = still("draw line: x month, y sum of sales, color product");
    assertEquals("temporal", encoding(time, 0).at("/x/type").asText());
    assertFalse(encoding(time, 0).has("order"));
    JsonNode categories = still("draw line: x region, y sum of sales");
    assertEquals("region rank", encoding(categories, 0).at("/order/field").asText());
    assertEquals("indexof(['North', 'South', 'East'], datum['region'])",
        categories.at("/transform/0/calculate").asText());
  }

  @Test
  void gapsOfALineStay() {
    JsonNode chart = still("draw line: x month, y sales");
    assertEquals(1, steps(chart.at("/layer/0"), "filter").size(), "only x must be there");
  }

  @Test
  void stackedAreasRunStraightOverMissingValues() {
    JsonNode layer = still("draw area: x month, y sum of sales, color product").at("/layer/0");
    assertEquals("time", steps(layer, "impute").get(0).path("key").asText());
    assertEquals("argmax", steps(layer, "window").get(0).at("/window/0/op").asText());
    assertEquals("argmin", steps(layer, "window").get(1).at("/window/0/op").asText());
    assertEquals(1, steps(layer, "stack").size());
  }

  @Test
  void overlaidAreasShowThrough() {
    JsonNode chart = still("draw overlaid area: x month, y sum of sales, color product");
    assertEquals(0.5, mark(chart, 0).path("fillOpacity").asDouble());
    assertEquals(2, mark(chart, 0).at("/line/strokeWidth").asDouble());
    assertTrue(steps(chart.at("/layer/0"), "stack").isEmpty());
  }

  @Test
  void pointsHaveSizesColoursAndLabels() {
    JsonNode chart = still("""
        draw point: x sales, y cost, size sales, color cost, label product, opacity 0.5
        axis x: from 0 to 30
        """);
    assertEquals(0.5, mark(chart, 0).path("fillOpacity").asDouble());
    JsonNode encoding = encoding(chart, 0);
    assertEquals("[16,784]", encoding.at("/size/scale/range").toString());
    assertEquals("descending", encoding.at("/order/sort").asText());
    assertEquals("quantitative", encoding.at("/color/type").asText());
    assertEquals("gradient", encoding.at("/color/legend/type").asText());
    assertEquals("[0,30]", encoding.at("/x/scale/domain").toString());
    assertEquals("text", chart.at("/layer/0/layer/1/mark/type").asText());
    assertEquals("datum['sales'] >= 0 && datum['sales'] <= 30",
        steps(chart.at("/layer/0"), "filter").get(4).path("filter").asText());
  }

  @Test
  void histogramsHaveTheBinsOfTheDrawing() {
    JsonNode chart = still("draw histogram: x v, bins 4", "v\n0\n1\n2\n3.5\n8\n");
    String from = steps(chart.at("/layer/0"), "calculate").get(0).path("calculate").asText();
    assertEquals("0 + 2 * (floor((datum['v'] - 0) / 2 + 1.0E-9)"
        + " - (abs(datum['v'] - 8) < 2.0E-9 ? 1 : 0))", from);
    assertEquals("bin start", encoding(chart, 0).at("/x/field").asText());
    assertEquals("bin end", encoding(chart, 0).at("/x2/field").asText());
    assertEquals(1, steps(chart.at("/layer/0"), "stack").size());
    JsonNode overlaid =
        still("draw overlaid histogram: x sales, color product");
    assertEquals(0.6, mark(overlaid, 0).path("fillOpacity").asDouble());
  }

  @Test
  void ownBinsAreRowsOfTheirOwn() {
    JsonNode chart = still("""
        <chart xmlns="urn:chartbridge:chart:2"><elements>
        <histogram fill="#ff0000">
        <bin from="0" to="5" value="12"/><bin from="5" to="7.5" value="3"/>
        </histogram></elements></chart>""", null);
    assertEquals("{\"bin from\":5,\"bin to\":7.5,\"bin value\":3}",
        chart.at("/layer/0/data/values/1").toString());
    assertEquals("#ff0000", mark(chart, 0).path("color").asText());
    assertEquals(0, chart.at("/data/values").size());
  }

  @Test
  void boxPlotsAreMadeOfTheirParts() {
    JsonNode box = still("draw box: x region, y sales, color product").at("/layer/0");
    JsonNode quartiles = steps(box, "joinaggregate").get(0).path("joinaggregate");
    assertEquals(List.of("q1", "median", "q3"), quartiles.findValuesAsText("op"));
    List<String> marks = box.findValuesAsText("type").stream()
        .filter(List.of("bar", "rule", "tick", "point")::contains).toList();
    assertEquals(List.of("bar", "rule", "rule", "tick", "tick", "tick", "point"), marks);
    assertEquals("#73b1d5", box.at("/layer/0/encoding/fill/scale/range/0").asText());
    assertEquals("product", box.at("/layer/0/encoding/xOffset/field").asText());
  }

  @Test
  void boxPlotsWithoutPositionsStandAlone() {
    JsonNode chart = still("draw box: y sales");
    assertEquals("all", encoding(chart, 0).at("/x/field").asText());
  }

  @Test
  void piesNameTheirSlicesOrHaveALegend() {
    JsonNode named = still("draw pie: x product, y sum of sales");
    assertEquals("arc", mark(named, 0).path("type").asText());
    assertTrue(encoding(named, 0).at("/color/legend").isNull());
    assertEquals("normalize", steps(named.at("/layer/0"), "stack").get(0).path("offset").asText());
    JsonNode legend = still("draw pie: x product, y sum of sales\nlegend: left, title \"What\"");
    assertEquals("What", encoding(legend, 0).at("/color/legend/title").asText());
    assertEquals("left", legend.at("/config/legend/orient").asText());
  }

  @Test
  void heatMapsHaveCellsOfCategoriesValuesOrBins() {
    JsonNode categories = still("draw heatmap: x region, y product, color mean of sales");
    assertEquals("rect", mark(categories, 0).path("type").asText());
    assertEquals(0, encoding(categories, 0).at("/x/scale/paddingInner").asDouble(1));
    JsonNode even = still("draw heatmap: x a, y b, color v", "a,b,v\n10,1,3\n20,1,4\n40,2,5\n");
    assertEquals("+datum['a'] - 5",
        steps(even.at("/layer/0"), "calculate").get(0).path("calculate").asText());
    JsonNode uneven = still("draw heatmap: x a, y b, color v", "a,b,v\n1,1,3\n2,1,4\n4.5,2,5\n");
    assertEquals("[0.5, 1.5, 3.25][indexof([1, 2, 4.5], +datum['a'])]",
        steps(uneven.at("/layer/0"), "calculate").get(0).path("calculate").asText());
    StringBuilder csv = new StringBuilder("a,b\n");
    for (int i = 0; i < 200; i++) {
      csv.append(Math.sqrt(i)).append(',').append(i % 5).append('\n');
    }
    JsonNode bins = still("draw heatmap: x a, y b, color count", csv.toString());
    assertTrue(steps(bins.at("/layer/0"), "calculate").get(0).path("calculate").asText()
        .contains("floor("));
  }

  @Test
  void panelsAreFacets() {
    JsonNode chart = still("""
        draw bar: x region, y sum of sales
        panels by product: rows of 2, free y
        """);
    assertEquals("product", chart.at("/facet/field").asText());
    assertEquals(List.of("Tea", "Coffee"), texts(chart.at("/facet/sort")));
    assertEquals(2, chart.path("columns").asInt());
    assertEquals("independent", chart.at("/resolve/scale/y").asText());
    assertFalse(chart.at("/resolve/scale").has("x"));
    assertFalse(chart.has("autosize"));
    JsonNode y = chart.at("/spec/layer/0/encoding/y/scale");
    assertFalse(y.has("domain"), "each panel has its own ends");
    assertEquals(List.of("product", "region"),
        texts(steps(chart.at("/spec/layer/0"), "aggregate").get(0).path("groupby")));
  }

  @Test
  void axesSayAllTheyAreTold() {
    JsonNode chart = still("""
        draw point: x month, y sales
        axis x: title "When", format "MMM yyyy", reversed
        axis y: no title, no grid, from 1 to 50, format "#,##0.0 kg"
        """);
    JsonNode x = encoding(chart, 0).path("x");
    assertEquals("When", x.at("/axis/title").asText());
    assertEquals("%b %Y", x.at("/axis/format").asText());
    assertTrue(x.at("/scale/reverse").asBoolean());
    JsonNode y = encoding(chart, 0).path("y");
    assertTrue(y.at("/axis/title").isNull());
    assertFalse(y.at("/axis/grid").asBoolean(true));
    assertEquals("[1,50]", y.at("/scale/domain").toString());
    assertEquals("format(datum.value, ',.1f') + ' kg'", y.at("/axis/labelExpr").asText());
  }

  @Test
  void elementsWithoutColoursAreASeriesEach() {
    JsonNode chart = still("""
        draw bar: x region, y mean of sales
        draw line: x region, y max of sales, fill #d55e00
        """);
    assertEquals(List.of("sales (mean)", "sales (max)"),
        texts(encoding(chart, 0).at("/color/scale/domain")));
    assertEquals(List.of("#0072b2", "#d55e00"),
        texts(encoding(chart, 1).at("/color/scale/range")));
    assertEquals("'sales (max)'",
        steps(chart.at("/layer/1"), "calculate").get(0).path("calculate").asText());
    assertFalse(chart.has("resolve"));
  }

  @Test
  void coloursOfSeveralMeaningsHaveScalesOfTheirOwn() {
    JsonNode chart = still("""
        draw bar: x region, y sum of sales, color product
        draw point: x region, y max of sales, color mean of cost
        """);
    assertEquals("independent", chart.at("/resolve/scale/color").asText());
  }

  @Test
  void aPaletteAndItsVariantsAreUsed() {
    JsonNode chart = still("""
        draw bar: x product, y sum of sales, color region
        palette #112233, #445566
        """);
    List<String> range = texts(encoding(chart, 0).at("/color/scale/range"));
    assertEquals(List.of("#112233", "#445566"), range.subList(0, 2));
    assertEquals(3, range.size());
  }

  @Test
  void stylesWithoutColoursHaveDashesAndShapes() {
    JsonNode line = encoding(still("style mono\ndraw line: x month, y sales, color product"), 0);
    assertEquals(List.of("1", "0"), texts(line.at("/strokeDash/scale/range/0")));
    assertEquals(2, line.at("/strokeDash/scale/range").size());
    JsonNode point = encoding(still("style mono\ndraw point: x month, y sales, color product"), 0);
    assertEquals(List.of("circle", "square"), texts(point.at("/shape/scale/range")));
  }

  @Test
  void legendsCanBeLeftOutOrRepeatNothing() {
    JsonNode none = still("draw bar: x region, y sum of sales, color product\nlegend: none");
    assertTrue(encoding(none, 0).at("/color/legend").isNull());
    JsonNode same = still("draw bar: x region, y sum of sales, color region");
    assertTrue(encoding(same, 0).at("/color/legend").isNull());
    assertFalse(encoding(same, 0).has("xOffset"));
  }

  @Test
  void columnsWithPathsInTheirNamesGetAnotherName() {
    JsonNode chart = still("draw bar: x \"a.b[0]\", y \"t'x\"", "a.b[0],t'x\nu,3\n");
    assertEquals("datum['a.b[0]']", chart.at("/transform/0/calculate").asText());
    assertEquals("column_1", encoding(chart, 0).at("/x/field").asText());
    assertEquals("datum['t\\'x']", chart.at("/transform/1/calculate").asText());
    assertEquals("a.b[0]", encoding(chart, 0).at("/x/axis/title").asText());
  }

  @Test
  void fieldsOfOurOwnKeepOffColumns() {
    JsonNode chart = still("draw stacked bar: x lower, y upper", "lower,upper\na,1\n");
    assertEquals("lower_", encoding(chart, 0).at("/y/field").asText());
    assertEquals("upper_", encoding(chart, 0).at("/y2/field").asText());
  }

  @Test
  void marksAreDescribedToThoseWhoDoNotSeeThem() {
    JsonNode chart = still("draw bar: x region, y sum of sales");
    assertTrue(mark(chart, 0).at("/description/expr").asText()
        .startsWith("'region: ' + (datum['region']) + '; ' + 'sales (sum): ' + "));
    assertFalse(encoding(chart, 0).has("tooltip"));
  }

  @ParameterizedTest
  @CsvSource(delimiter = '|', quoteCharacter = '`', value = {
      "draw point: x sales, y cost / axis y: format \"0.0E0\"|Axis y: the format \"0.0E0\" has no"
          + " form in Vega-Lite",
      "draw point: x month, y cost / axis x: format \"w yyyy\"|Axis x: \"w\" of the format \"w"
          + " yyyy\" has no form in Vega-Lite",
      "draw bar: x nothing, y sales|The data has no column \"nothing\"",
      "draw bar: x region, y product|Element 1 (bar), y: column \"product\" holds categories",
  })
  void whatCannotBeIsNamed(String text, String message) {
    String found = failure(text.replace(" / ", "\n"), Documents.CSV);
    assertTrue(found.contains(message), found);
  }

  @Test
  void numbersAndTextsOnOneAxisHaveNoForm() {
    String found = failure("""
        draw point: x a, y v
        draw point: x b, y v
        axis x: category
        """, "a,b,v\n1,x,2\n2,y,3\n");
    assertTrue(found.startsWith("line 3, column 6: Axis x: categories that are numbers here and "
            + "texts there"),
        found);
  }

  @Test
  void aChartWithoutDataIsNoStillChart() {
    ChartException e = assertThrows(
        ChartException.class, () -> still("draw bar: x region, y sum of sales", null));
    assertTrue(e.getMessage().startsWith("The chart has no data of its own"), e.getMessage());
  }
}
