// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.format;

import static org.junit.jupiter.api.Assertions.assertEquals;
import static org.junit.jupiter.api.Assertions.assertNull;

import java.util.List;
import org.chartbridge.chart.ChartException;
import org.chartbridge.chart.Suggestions;
import org.junit.jupiter.api.Test;
import org.junit.jupiter.params.ParameterizedTest;
import org.junit.jupiter.params.provider.CsvSource;
import org.junit.jupiter.params.provider.ValueSource;

class SuggestionsTest {
  private static final List<String> KNOWN = List.of("bar", "color", "histogram", "x");

  @ParameterizedTest
  @CsvSource({
    "colour,color", "Color,color", "COLOR,color", "colro,color", "bra,bar", "bars,bar",
    "histogramm,histogram", "hsitogarm,histogram", "barr,bar", "X,x"
  })
  void findsWhatWasMeant(String found, String meant) {
    assertEquals(meant, Suggestions.closest(found, KNOWN));
  }

  @ParameterizedTest
  @ValueSource(strings = {"", "y", "line", "size", "hologram!", "baobab"})
  void doesNotGuessWildly(String found) {
    assertNull(Suggestions.closest(found, KNOWN));
  }

  @Test
  void wordsTheExpectation() {
    assertEquals("expected bar", Suggestions.oneOf(List.of("bar")));
    assertEquals("expected one of bar, color, histogram, x", Suggestions.expected("y", KNOWN));
    assertEquals(
        "expected one of bar, color, histogram, x; did you mean \"bar\"?",
        Suggestions.expected("baar", KNOWN));
  }

  @Test
  void messagesAreOneLine() {
    assertEquals("a b c d", new ChartException("a\r\n\n b\tc \u2028d").getMessage());
    assertEquals("a  b", new ChartException("a  b").getMessage());
    assertNull(new ChartException(null, new RuntimeException()).getMessage());
  }
}
