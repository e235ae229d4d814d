// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.client;

import static java.nio.charset.StandardCharsets.ISO_8859_1;
import static java.nio.charset.StandardCharsets.UTF_8;
import static org.junit.jupiter.api.Assertions.assertEquals;
import static org.junit.jupiter.api.Assertions.assertNull;
import static org.junit.jupiter.api.Assertions.assertThrows;
import static org.junit.jupiter.api.Assertions.assertTrue;

import java.nio.file.Files;
import java.nio.file.Path;
import java.util.List;
import org.chartbridge.chart.Aggregate;
import org.chartbridge.chart.Arrangement;
import org.chartbridge.chart.Bin;
import org.chartbridge.chart.Channel;
import org.chartbridge.chart.Chart;
import org.chartbridge.chart.ChartException;
import org.chartbridge.chart.ColumnDeclaration;
import org.chartbridge.chart.ColumnKind;
import org.chartbridge.chart.Element;
import org.chartbridge.chart.ElementKind;
import org.chartbridge.chart.Facet;
import org.chartbridge.chart.LegendPosition;
import org.chartbridge.chart.ScaleKind;
import org.chartbridge.format.ChartReader;
import org.junit.jupiter.api.Test;
import org.junit.jupiter.params.ParameterizedTest;
import org.junit.jupiter.params.provider.CsvSource;

class ClientTemplateTest {
  private static final String BAR = "{\"elements\":[{\"bar\":{\"x\":{\"column\":\"a\"}}}]}";

  private static byte[] bytes(String json) {
    return json.replace('\'', '"').getBytes(UTF_8);
  }

  private static Chart read(String json) {
    return ChartReader.read(ClientTemplate.toXml(bytes(json)));
  }

  private static String error(String json) {
    return assertThrows(ChartException.class, () -> ClientTemplate.toXml(bytes(json)))
        .getMessage();
  }

  /** A template of one slot whose value becomes the title, and a value for it. */
  private static Chart ofSlot(String slot, String value) {
    return read(textOfSlot(slot, value));
  }

  private static String textOfSlot(String slot, String value) {
    return "{'version':1,'slots':[{'name':'s'," + slot + "}],'values':{'s':" + value + "},\n"
        + "'chart':{'titles':{'title':{'slot':'s'}},'elements':[{'bar':{'x':{'column':'a'}}}]}}";
  }

  private static String example(String name) throws Exception {
    return Files.readString(Path.of(System.getProperty("chartbridge.source"), "examples",
        "client-templates", name));
  }

  @Test
  void mirrorsEveryPartOfAChart() {
    Chart chart = read("""
        {'version': 1, 'chart': {
          'width': 900, 'height': 450, 'style': 'dark', 'template': 'house',
          'titles': {'title': 'T', 'subtitle': 'S', 'caption': 'C'},
          'columns': [
            {'name': 'r', 'kind': 'category', 'label': 'Region', 'categories': ['N', 'S']},
            {'name': 't', 'kind': 'time', 'pattern': 'yyyy'}],
          'axes': {'x': {'scale': 'category', 'reversed': true},
                   'y': {'scale': 'linear', 'min': -1.5e1, 'max': 20, 'grid': false,
                         'format': '0'}},
          'elements': [
            {'bar': {'arrangement': 'stacked', 'opacity': 0.5, 'fill': null,
                     'x': {'column': 'r'}, 'y': {'column': 'v', 'aggregate': 'sum'},
                     'color': {'column': 'g'}, 'label': {'aggregate': 'count'}}},
            {'point': {'x': {'column': 'r'}, 'y': {'column': 'v'}, 'size': {'column': 'v'}}}],
          'legend': {'position': 'top', 'title': 'L'},
          'facet': {'column': 'f', 'columns': 2, 'shared-y': false},
          'palette': ['#111111', '#222222'],
          'data': 'r,v\\n1,2\\n'
        }}""");
    assertEquals(900, chart.size().width());
    assertEquals("dark", chart.style());
    assertEquals("house", chart.template());
    assertEquals("C", chart.titles().caption());
    assertEquals(List.of(
            new ColumnDeclaration("r", ColumnKind.CATEGORY, "Region", null, List.of("N", "S")),
            new ColumnDeclaration("t", ColumnKind.TIME, null, "yyyy", List.of())),
        chart.columns());
    assertEquals(ScaleKind.CATEGORY, chart.x().scale());
    assertTrue(chart.x().reversed());
    assertEquals(-15, chart.y().min());
    assertEquals(List.of(
            new Element(ElementKind.BAR, Channel.of("r"), new Channel("v", Aggregate.SUM),
                Channel.of("g"), null, Channel.count(), Arrangement.STACKED, null, null, 0.5),
            new Element(ElementKind.POINT, Channel.of("r"), Channel.of("v"), null, Channel.of("v"),
                null, null, null, null, 1)),
        chart.elements());
    assertEquals(LegendPosition.TOP, chart.legend().position());
    assertEquals(new Facet("f", 2, true, false), chart.facet());
    assertEquals(List.of("#111111", "#222222"), chart.palette());
    assertEquals("r,v\n1,2\n", chart.data());
  }

  @Test
  void mirrorsBothKindsOfHistograms() {
    Chart chart = read("{'version':1,'chart':{'elements':[{'histogram':{'bins':[{'from':0,'to':1,"
        + "'value':2}]}},{'histogram':{'bins':5,'x':{'column':'a'}}}]}}");
    assertEquals(List.of(new Bin(0, 1, 2)), chart.elements().get(0).ownBins());
    assertEquals(5, chart.elements().get(1).bins());
  }

  @Test
  void slotsGetTheirValuesFromTheRequestTheTemplateOrTheirDefaults() throws Exception {
    String template = example("distribution.json");
    Chart chart = read(template);
    assertEquals(Channel.of("waiting"), chart.elements().get(0).x());
    assertEquals("#0072b2", chart.elements().get(0).fill());
    assertNull(chart.elements().get(0).bins());
    assertNull(chart.facet());
    assertNull(chart.titles().title());
    assertEquals(List.of(new ColumnDeclaration(
            "waiting", ColumnKind.NUMBER, null, null, List.of())), chart.columns());
    Chart asked = read(template + "{'measure':'duration','bins':'12','panels':'kind',"
        + "'fill':'#ABCDEF','title':'Ä <&>'}");
    assertEquals(Channel.of("duration"), asked.elements().get(0).x());
    assertEquals(12, asked.elements().get(0).bins());
    assertEquals("#ABCDEF", asked.elements().get(0).fill());
    assertEquals("kind", asked.facet().column());
    assertEquals("Ä <&>", asked.titles().title());
  }

  @Test
  void anEmptyOptionalSlotTakesItsChannelAlong() throws Exception {
    String template = example("compare-groups.json");
    Chart chart = read(template + "{'category':'region','measure':'sales'}");
    Element bar = chart.elements().get(0);
    assertNull(bar.color());
    assertEquals("sales (sum) by region", chart.titles().subtitle());
    assertEquals(new Channel("sales", Aggregate.SUM), bar.y());
    Chart grouped = read(template + "\n{'category':'region','measure':'sales','group':'year',"
        + "'arrangement':'stacked','grid':'false'}");
    assertEquals(Channel.of("year"), grouped.elements().get(0).color());
    assertEquals(Arrangement.STACKED, grouped.elements().get(0).arrangement());
    assertEquals(false, grouped.y().grid());
  }

  @ParameterizedTest
  @CsvSource(delimiter = '|', quoteCharacter = '~', value = {
      "'kind':'text' | 'x' | x", "'kind':'text' | '' | ~~",
      "'kind':'number' | -1.50e3 | -1.50e3", "'kind':'number' | '7' | 7",
      "'kind':'number','min':1,'max':2,'whole':true | 2 | 2",
      "'kind':'boolean' | true | true", "'kind':'boolean' | 'false' | false",
      "'kind':'color' | '#aBcdEf' | #aBcdEf", "'kind':'choice','choices':['a','b'] | 'b' | b",
      "'kind':'column','holds':'time' | 'when' | when"})
  void slotsTakeWhatFitsThem(String slot, String value, String title) {
    assertEquals(title, ofSlot(slot, value).titles().title());
  }

  @ParameterizedTest
  @CsvSource(delimiter = '|', quoteCharacter = '~', value = {
      "'kind':'text' | 5 | a text", "'kind':'text' | ['a'] | a text",
      "'kind':'number' | 'x' | a number", "'kind':'number' | true | a number",
      "'kind':'number' | 1e999 | a number",
      "'kind':'number','min':1 | 0.5 | a number of at least 1",
      "'kind':'number','max':1 | 1.5 | a number of at most 1",
      "'kind':'number','min':1,'max':2,'whole':true | 1.5 | a whole number from 1 to 2",
      "'kind':'boolean' | 1 | true or false", "'kind':'boolean' | 'yes' | true or false",
      "'kind':'color' | 'red' | a colour such as #0072b2",
      "'kind':'choice','choices':['a','b'] | 'c' | one of a, b",
      "'kind':'column' | ' ' | the name of a column",
      "'kind':'column','holds':'number' | {} | the name of a column of numbers"})
  void slotsRefuseWhatDoesNotFit(String slot, String value, String expected) {
    String text = textOfSlot(slot, value);
    String message = error(text);
    int column = text.indexOf("'values':{'s':") + "'values':{'s':".length() + 1;
    assertTrue(message.startsWith(
        "line 1, column " + column + ": the value of slot \"s\" is "), message);
    assertTrue(message.endsWith("; expected " + expected), message);
    String byDefault = error("{'version':1,'slots':[{'name':'s'," + slot + ",\n'default':" + value
        + "}],'chart':" + BAR + "}");
    assertTrue(byDefault.startsWith("line 2, column 11: the value of slot \"s\" is "), byDefault);
  }

  @Test
  void aValueIsNeededUnlessTheSlotIsOptional() {
    assertEquals("line 1, column 23: slot \"s\" has no value; expected a text",
        error(textOfSlot("'kind':'text'", "'x'").replace(",'values':{'s':'x'}", "")));
    assertEquals("line 1, column 65: slot \"s\" has no value; expected a text",
        error(textOfSlot("'kind':'text'", "null")));
    assertNull(ofSlot("'kind':'text','optional':true,'default':'d'", "null").titles().title());
    assertEquals("d",
        read(textOfSlot("'kind':'text','default':'d'", "1").replace(",'values':{'s':1}", ""))
            .titles().title());
  }

  @Test
  void columnsAreDeclaredAsTheirSlotsWantThem() {
    String slots = "'slots':[{'name':'x','kind':'column','holds':'category'},"
        + "{'name':'y','kind':'column','holds':'number'}]";
    String chart = "'chart':{'elements':[{'bar':{'x':{'column':{'slot':'x'}},"
        + "'y':{'column':{'slot':'y'}}}}]";
    List<ColumnDeclaration> declared = read("{'version':1," + slots + "," + chart
        + ",'columns':[{'name':'b','kind':'number','label':'B'}]}}{'x':'a','y':'b'}").columns();
    assertEquals(List.of(new ColumnDeclaration("b", ColumnKind.NUMBER, "B", null, List.of()),
        new ColumnDeclaration("a", ColumnKind.CATEGORY, null, null, List.of())), declared);
    assertEquals("line 1, column 71: slots \"x\" and \"y\" both name the column \"a\", which cannot"
        + " hold category and number",
        error("{'version':1," + slots + "," + chart + "}}{'x':'a','y':'a'}"));
  }

  @ParameterizedTest
  @CsvSource(delimiter = '|', quoteCharacter = '~', value = {
      "[] | line 1, column 1: the template is an array; expected an object",
      "{} | line 1, column 1: the template needs the member \"version\", a number",
      "{'version':2} | line 1, column 12: the template is of version 2; version 1 is known here",
      "{'version':1} | line 1, column 1: the template needs the member \"chart\", an object",
      "{'version':1,'chart':5} | line 1, column 22: chart of the template is 5; expected an object",
      "{'version':1,'chart':{},'slot':[]} | line 1, column 32: the template has no member \"slot\";"
          + " expected one of version, $schema, name, description, slots, values, chart; did you"
          + " mean \"slots\"?",
      "{'version':1,'slots':[{'name':'a','kind':'number'},{'name':'a','kind':'text'}],'chart':{}}"
          + "| line 1, column 52: there are two slots called \"a\"",
      "{'version':1,'slots':[{'kind':'text'}],'chart':{}}"
          + "| line 1, column 23: a slot needs the member \"name\", a text",
      "{'version':1,'slots':[{'name':'a','kind':'colour'}],'chart':{}}"
          + "| line 1, column 42: kind of slot \"a\" is \"colour\"; expected one of column, number,"
          + " text, boolean, color, choice; did you mean \"color\"?",
      "{'version':1,'slots':[{'name':'a','kind':'text','min':1}],'chart':{}}"
          + "| line 1, column 55: a slot has no member \"min\"; expected one of name, kind, label,"
          + " description, optional, default",
      "{'version':1,'slots':[{'name':'a','kind':'choice','choices':[]}],'chart':{}}"
          + "| line 1, column 23: slot \"a\" offers no choices",
      "{'version':1,'chart':{'titles':{'title':{'slot':'t'}},'elements':[]}}"
          + "| line 1, column 49: there is no slot \"t\"; the template has none",
      "{'version':1,'slots':[{'name':'title','kind':'text'}],'values':{'tilte':'x'},'chart':{}}"
          + "| line 1, column 73: there is no slot \"tilte\"; expected title; did you mean"
          + " \"title\"?",
      "{'version':1,'chart':{'elements':[{'bar':{},'line':{}}]}} | line 1, column 35: an element is"
          + " an object with one member, such as {\"bar\": {...}}, but this one has 2",
      "{'version':1,'chart':{'elements':{'bar':{}}}}"
          + "| line 1, column 34: elements is an object; expected an array",
      "{'version':1,'chart':{'elements':[{'bra':{}}]}} | line 1, column 42: found <bra> inside"
          + " <elements>; expected one of bar, line, area, point, histogram, box, pie, heatmap; did"
          + " you mean \"bar\"?",
      "{'version':1,'chart':{'elements':[{'bar':{'arrangement':'staked'}}]}} | line 1, column 57:"
          + " arrangement of <bar> is \"staked\"; expected one of grouped, stacked, filled,"
          + " overlaid; did you mean \"stacked\"?",
      "{'version':1,'chart':{'elements':[{'bar':{'arrangement':{'a':1}}}]}} | line 1, column 57:"
          + " found <arrangement> inside <bar>; expected one of x, y, color, label",
      "{'version':1,'chart':{'titles':{'title':['a',{'b':1}]},'elements':[]}} | line 1, column 46:"
          + " found an object; expected a text, a number, true, false or {\"slot\": \"name\"}",
      "{'version':1,'chart':{}} [] | line 1, column 26: values is an array; expected an object",
      "{'version':1,'chart':{}} {} {} | line 1, column 29: a template and an object with values may"
          + " stand here, nothing more",
  })
  void tellsWhatIsWrongAndWhere(String json, String message) {
    assertEquals(message, error(json));
  }

  @Test
  void aChartThatMakesNoSenseIsToldByTheSlotThatMadeItSo() {
    String message = error(textOfSlot("'kind':'text'", "'stacked'").replace(
        "'titles':{'title':{'slot':'s'}},", "'palette':['#111111',{'slot':'s'}],"));
    assertEquals("line 2, column 31: \"stacked\" is not a colour; expected # and six hexadecimal"
        + " digits, such as #0072b2 (the value of slot \"s\")", message);
  }

  @ParameterizedTest
  @CsvSource(delimiter = '|', quoteCharacter = '~', value = {
      "{'version':1, | line 1, column 14", "{'version':1\\n 'chart':{}} | line 2, column 2",
      "{'version':01} | line 1, column 12", "{'version':1,'version':1} | line 1, column 14",
      "{'version':1,} | line 1, column 14", "nonsense | line 1, column 1",
      "{'version':1}} | line 1, column 14"})
  void tellsWhatIsNoJson(String json, String place) {
    String message = error(json.replace("\\n", "\n"));
    assertTrue(message.contains(": not well-formed JSON: "), message);
    assertTrue(message.startsWith(place.substring(0, place.indexOf(','))), message);
    assertEquals(-1, message.indexOf('\n'));
  }

  @Test
  void tellsWhatIsNoText() {
    assertEquals("The template is empty.", error(""));
    assertEquals("The template is empty.", error(" \n "));
    assertEquals("The template is empty.",
        assertThrows(ChartException.class, () -> ClientTemplate.toXml(null)).getMessage());
    byte[] latin = "{'name':'ä'}".getBytes(ISO_8859_1);
    assertThrows(ChartException.class, () -> ClientTemplate.toXml(latin));
    String message = error("[".repeat(100_000));
    assertEquals("line 1, column 513: nested more than 512 levels deep", message);
  }

  @Test
  void aByteOrderMarkDoesNotCount() {
    assertEquals(1, read("\uFEFF{'version':1,'chart':" + BAR + "}").elements().size());
  }
}
