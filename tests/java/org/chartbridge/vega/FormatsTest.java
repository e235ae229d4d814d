// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.vega;

import static org.junit.jupiter.api.Assertions.assertEquals;
import static org.junit.jupiter.api.Assertions.assertThrows;
import static org.junit.jupiter.api.Assertions.assertTrue;

import org.chartbridge.chart.ChartException;
import org.junit.jupiter.params.ParameterizedTest;
import org.junit.jupiter.params.provider.CsvSource;

/** Number and date patterns in the words of Vega. */
class FormatsTest {
  @ParameterizedTest
  @CsvSource(delimiter = '|', quoteCharacter = '`', value = {
      "0|format(v, '.0f')",
      "#,##0|format(v, ',.0f')",
      "#,##0.00|format(v, ',.2f')",
      "0.###|format(v, '.3~f')",
      "0%|format(100 * v, '.0f') + '%'",
      "#,##0.0 kg|format(v, ',.1f') + ' kg'",
      "0 'it''s'|format(v, '.0f') + ' it\\'s'",
      "$#,##0|(v < 0 ? '\u2212' : '') + '$' + format(abs(v), ',.0f')",
      "'E'0|(v < 0 ? '\u2212' : '') + 'E' + format(abs(v), '.0f')",
  })
  void numberPatternsBecomeExpressions(String pattern, String expected) {
    assertEquals(expected, NumberFormatJson.expression("Axis y", pattern, "v"));
  }

  @ParameterizedTest
  @CsvSource(delimiter = '|', quoteCharacter = '`', value = {
      "0.0E0|an exponent",
      "0;(0)|a pattern of its own for negative numbers",
      "\u00a40|a currency sign",
      "0\u2030|per mille",
      "000|leading zeros",
      "0.0#|both required and optional decimals",
      "#,####|groups of other than three digits",
  })
  void whatHasNoFormIsNamed(String pattern, String what) {
    ChartException e = assertThrows(
        ChartException.class, () -> NumberFormatJson.expression("Axis y", pattern, "v"));
    assertTrue(e.getMessage().startsWith("Axis y: the format \"" + pattern + "\" has no form"),
        e.getMessage());
    assertTrue(e.getMessage().contains(what), e.getMessage());
  }

  @ParameterizedTest
  @CsvSource(delimiter = '|', quoteCharacter = '`', value = {
      "yyyy|%Y", "yy|%y", "uuuu-MM-dd|%Y-%m-%d", "d MMM yyyy|%-d %b %Y", "MMMM|%B", "M/d|%-m/%-d",
      "EEE HH:mm|%a %H:%M", "EEEE h:mm a|%A %-I:%M %p", "ss.SSS|%S.%L", "QQQ uuuu|Q%q %Y",
      "d.'von' MMM '%'|%-d.von %b %%", "h 'o''clock'|%-I o'clock", "DDD|%j",
  })
  void datePatternsBecomeDirectives(String pattern, String expected) {
    assertEquals(expected, TimeFormatJson.specifier("Axis x", pattern));
  }

  @ParameterizedTest
  @CsvSource({"w,w", "yyyy VV,VV", "HH:mm:ss.SSSSSS,SSSSSS", "GGG,GGG", "MMMMM,MMMMM", "[yyyy],["})
  void lettersWithoutAFormAreNamed(String pattern, String letters) {
    ChartException e = assertThrows(
        ChartException.class, () -> TimeFormatJson.specifier("Axis x", pattern));
    assertTrue(e.getMessage().startsWith(
        "Axis x: \"" + letters + "\" of the format \"" + pattern + "\""), e.getMessage());
  }
}
