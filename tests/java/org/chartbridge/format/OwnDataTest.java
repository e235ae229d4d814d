// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.format;

import static java.nio.charset.StandardCharsets.UTF_8;
import static org.junit.jupiter.api.Assertions.assertEquals;
import static org.junit.jupiter.api.Assertions.assertNull;
import static org.junit.jupiter.api.Assertions.assertThrows;

import org.chartbridge.chart.Chart;
import org.chartbridge.chart.ChartException;
import org.junit.jupiter.api.Test;

/** Charts that carry data, and those that name a template. */
class OwnDataTest {
  private static Chart chart(String attributes, String inside) {
    return ChartReader.read(("<chart xmlns='urn:chartbridge:chart:2'" + attributes
        + "><elements><bar><x column='a'/></bar></elements>\n" + inside + "</chart>")
        .getBytes(UTF_8));
  }

  private static String data(String text) {
    return chart("", "<data>" + text + "</data>").data();
  }

  private static String error(String attributes, String inside) {
    return assertThrows(ChartException.class, () -> chart(attributes, inside)).getMessage();
  }

  @Test
  void dataAreTheTextWithoutTheLayoutAroundIt() {
    assertEquals("a,b\n1,2\n", data("a,b\n1,2\n"));
    assertEquals("a,b\n1,2\n", data("\n  \n\ta,b\n1,2\n    ").replace("\t", ""));
    assertEquals("  a\n", data("  a"));
    assertEquals("a\n\n\n", data("a\n\n\n"));
    assertEquals("a\n\" x \n \"\n", data("a\n\" x \n \""));
  }

  @Test
  void dataMayBeWrittenInEveryWayThatXmlHas() {
    assertEquals("a,\"<&>\"\n\r\n", data("a,<![CDATA[\"<&>\"]]>\n&#13;\n<!-- end -->"));
  }

  @Test
  void thereAreNoDataWhereThereIsNoText() {
    assertNull(chart("", "").data());
    assertNull(data(""));
    assertNull(data(" \n\t "));
  }

  @Test
  void dataHoldTextOnly() {
    assertEquals("line 2, column 8: <data> holds text only, but found <row>",
        error("", "<data>a<row/></data>"));
    assertEquals("line 2, column 7: <data> has no attribute \"src\"",
        error("", "<data src='x'/>"));
    assertEquals("line 2, column 8: <chart> has more than one <data>",
        error("", "<data/><data/>"));
  }

  @Test
  void aTemplateIsAName() {
    assertEquals("house style", chart(" template='house style'", "").template());
    assertNull(chart("", "").template());
    assertEquals("line 1, column 40: a name must not be empty", error(" template=' '", ""));
  }
}
