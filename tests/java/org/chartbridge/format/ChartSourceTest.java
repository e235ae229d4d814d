// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.format;

import static java.nio.charset.StandardCharsets.UTF_16BE;
import static java.nio.charset.StandardCharsets.UTF_16LE;
import static java.nio.charset.StandardCharsets.UTF_8;
import static org.junit.jupiter.api.Assertions.assertEquals;
import static org.junit.jupiter.api.Assertions.assertFalse;
import static org.junit.jupiter.api.Assertions.assertThrows;
import static org.junit.jupiter.api.Assertions.assertTrue;

import org.chartbridge.chart.Chart;
import org.chartbridge.chart.ChartException;
import org.junit.jupiter.api.Test;

class ChartSourceTest {
  private static final String XML =
      "<chart xmlns='urn:chartbridge:chart:2'><elements><bar><x "
          + "column='größe'/></bar></elements></chart>";
  private static final String OLD =
      "<chart xmlns='urn:chartbridge:chart:1'><layer type='bar'><x><field "
          + "name='größe'/></x></layer></chart>";
  private static final String TEXT = "draw bar: x größe";

  @Test
  void readsEveryNotation() {
    Chart expected = ChartSource.read(TEXT.getBytes(UTF_8));
    assertEquals("größe", expected.elements().get(0).x().column());
    assertEquals(expected, ChartSource.read(("\uFEFF" + TEXT).getBytes(UTF_8)));
    assertEquals(expected, ChartSource.read(XML.getBytes(UTF_8)));
    assertEquals(expected, ChartSource.read(OLD.getBytes(UTF_8)));
    assertEquals(expected, ChartSource.read((" \r\n\t" + XML).getBytes(UTF_8)));
    assertEquals(expected, ChartSource.read(("\uFEFF" + XML).getBytes(UTF_8)));
    assertEquals(expected, ChartSource.read(("\uFEFF" + XML).getBytes(UTF_16LE)));
    assertEquals(expected, ChartSource.read(("\uFEFF" + XML).getBytes(UTF_16BE)));
    assertEquals(expected, ChartSource.read(XML.getBytes(UTF_16LE)));
    assertEquals(expected, ChartSource.read(XML.getBytes(UTF_16BE)));
  }

  @Test
  void tellsThemApart() {
    assertTrue(ChartSource.isXml("<".getBytes(UTF_8)));
    assertTrue(ChartSource.isXml("\uFEFF\n <a/>".getBytes(UTF_8)));
    assertFalse(ChartSource.isXml("// <".getBytes(UTF_8)));
    assertFalse(ChartSource.isXml(" ".getBytes(UTF_8)));
    assertFalse(ChartSource.isXml(new byte[0]));
    assertFalse(ChartSource.isXml("\uFEFF".getBytes(UTF_8)));
  }

  @Test
  void errorsAreThoseOfTheNotation() {
    ChartException empty = assertThrows(ChartException.class, () -> ChartSource.read(new byte[0]));
    assertEquals("the chart is empty", empty.getMessage());
    ChartException text =
        assertThrows(ChartException.class, () -> ChartSource.read("hello".getBytes(UTF_8)));
    assertTrue(
        text.getMessage().startsWith("line 1, column 1: found \"hello\", expected one of title"),
        text.getMessage());
    ChartException xml =
        assertThrows(ChartException.class, () -> ChartSource.read("<hello/>".getBytes(UTF_8)));
    assertTrue(xml.getMessage().startsWith("line 1, column 1: found <hello>"), xml.getMessage());
  }
}
