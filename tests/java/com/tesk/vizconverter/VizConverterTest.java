// SPDX-License-Identifier: Apache-2.0
package com.tesk.vizconverter;

import static java.nio.charset.StandardCharsets.UTF_8;
import static org.junit.jupiter.api.Assertions.assertArrayEquals;
import static org.junit.jupiter.api.Assertions.assertEquals;
import static org.junit.jupiter.api.Assertions.assertFalse;
import static org.junit.jupiter.api.Assertions.assertNotNull;
import static org.junit.jupiter.api.Assertions.assertNull;

import java.lang.reflect.Method;
import java.lang.reflect.Modifier;
import java.util.Random;
import org.junit.jupiter.api.Test;

class VizConverterTest {
  private static final String XML =
      """
      <?xml version="1.0" encoding="UTF-8"?>
      <chart xmlns="urn:chartbridge:chart:2">
        <titles title="Größe"/>
        <elements>
          <bar>
            <x column="a"/>
            <y column="b" aggregate="sum"/>
          </bar>
        </elements>
      </chart>
      """;
  private static final String OLD =
      "<chart xmlns='urn:chartbridge:chart:1'><title>Größe</title>"
          + "<layer type='bar'><x><field name='a'/></x><y><sum field='b'/></y></layer></chart>";

  private final VizConverter converter = new VizConverter();

  @Test
  void hasTheSignaturesThatNativeCodeLooksUp() throws NoSuchMethodException {
    assertNotNull(VizConverter.class.getConstructor());
    for (String name : new String[] {"ConvertGPL", "ConvertXml", "graphBoardConverterToXml"}) {
      Method method = VizConverter.class.getMethod(name, byte[].class);
      assertEquals(byte[].class, method.getReturnType());
      assertFalse(Modifier.isStatic(method.getModifiers()));
    }
    assertEquals(byte[].class,
        VizConverter.class.getMethod("graphBoardApplyStyleSheet", byte[].class, byte[].class)
            .getReturnType());
    assertEquals(String.class, VizConverter.class.getMethod("getErrorMessage").getReturnType());
  }

  @Test
  void convertsTheGraphLanguage() {
    byte[] xml = converter.ConvertGPL("title \"Größe\"\ndraw bar: x a, y sum of b".getBytes(UTF_8));
    assertEquals(XML, new String(xml, UTF_8));
    assertNull(converter.getErrorMessage());
  }

  @Test
  void upgradesXml() {
    byte[] xml = converter.ConvertXml(OLD.getBytes(UTF_8));
    assertEquals(XML, new String(xml, UTF_8));
    assertArrayEquals(xml, converter.ConvertXml(xml));
    assertNull(converter.getErrorMessage());
  }

  @Test
  void keepsTheReasonOfTheLastFailureOnly() {
    assertNull(converter.getErrorMessage());
    assertNull(converter.ConvertGPL("draw bar:\n  x a\n  colour b".getBytes(UTF_8)));
    assertEquals(
        "line 3, column 3: found \"colour\", expected one of x, y, color, size, label, fill, "
            + "opacity, bins; "
            + "did you mean \"color\"?",
        converter.getErrorMessage());
    assertNull(converter.ConvertXml("<chart".getBytes(UTF_8)));
    assertEquals(
        true, converter.getErrorMessage().startsWith("line 1, column 7: not well-formed XML"));
    assertNotNull(converter.ConvertXml(XML.getBytes(UTF_8)));
    assertNull(converter.getErrorMessage());
  }

  @Test
  void answersEveryKindOfBadInput() {
    assertNull(converter.ConvertGPL(null));
    assertEquals("there is nothing to convert", converter.getErrorMessage());
    assertNull(converter.ConvertXml(new byte[0]));
    assertEquals("the document is empty", converter.getErrorMessage());
    assertNull(converter.ConvertGPL(new byte[0]));
    assertEquals(
        "line 1, column 1: the chart has no element; expected one of bar, line, area, point, "
            + "histogram, box, pie, heatmap",
        converter.getErrorMessage());
    assertNull(converter.ConvertGPL(new byte[] {'a', (byte) 0xFF}));
    assertEquals("line 1: byte 1 is not valid UTF-8", converter.getErrorMessage());
    assertNull(converter.ConvertGPL("title \"\\u{1}\"\ndraw bar: x a".getBytes(UTF_8)));
    assertEquals("line 1, column 7: the text holds the character U+0001, which a chart cannot hold",
        converter.getErrorMessage());
    assertNull(converter.ConvertXml("<!DOCTYPE a><a/>".getBytes(UTF_8)));
    assertEquals("line 1, column 1: a document type declaration (<!DOCTYPE) is not allowed",
        converter.getErrorMessage());
  }

  /**
   * Valid texts with bytes changed, left out and doubled: an answer or a reason, never an
   * exception, never "unexpectedly".
   */
  @Test
  void damagedInputAlwaysGetsAnAnswerOrAReason() {
    Random random = new Random(99);
    String gpl =
        """
        title "Größe \\u{20AC}" // note
        column t: time written "yyyy", label "T"
        column r: category a < b < "c d"
        draw stacked bar: x r, y sum of s, color p, opacity 0.5
        axis y: log, from 1 to 1e6, format "0.0", no grid
        axis x: time, from 2020-01-01, reversed
        legend: bottom, title "L"
        panels by r: rows of 2, free x
        palette #0072b2, #e69f00
        """;
    int answers = 0;
    for (int i = 0; i < 6_000; i++) {
      boolean text = i % 2 == 0;
      byte[] damaged = damage((text ? gpl : i % 4 == 1 ? XML : OLD).getBytes(UTF_8), random);
      byte[] result = text ? converter.ConvertGPL(damaged) : converter.ConvertXml(damaged);
      answers += result == null ? 0 : 1;
      String source = new String(damaged, UTF_8);
      assertEquals(result == null, converter.getErrorMessage() != null, source);
      if (result == null) {
        assertFalse(converter.getErrorMessage().contains("unexpectedly"),
            () -> converter.getErrorMessage() + "\n" + source);
        // The reader words what the schema refuses; the validator's own words stay unused.
        assertFalse(converter.getErrorMessage().contains("cvc-"), converter.getErrorMessage());
        assertFalse(converter.getErrorMessage().contains("\n"), converter.getErrorMessage());
      }
    }
    assertEquals(true, answers > 20 && answers < 5_900, answers + " answers");
  }

  private static byte[] damage(byte[] source, Random random) {
    byte[] bytes = source.clone();
    int changes = 1 + random.nextInt(3);
    for (int i = 0; i < changes; i++) {
      int at = random.nextInt(bytes.length);
      switch (random.nextInt(4)) {
        case 0 -> bytes[at] = (byte) random.nextInt(256);
        case 1 -> bytes[at] = bytes[random.nextInt(bytes.length)];
        case 2 -> bytes = java.util.Arrays.copyOf(bytes, Math.max(1, at));
        default -> System.arraycopy(bytes, at, bytes, at / 2, bytes.length - at);
      }
    }
    return bytes;
  }
}
