// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.data;

import static java.nio.charset.StandardCharsets.UTF_8;
import static org.junit.jupiter.api.Assertions.assertEquals;
import static org.junit.jupiter.api.Assertions.assertTrue;

import java.util.Locale;
import java.util.Random;
import org.junit.jupiter.api.Test;
import org.junit.jupiter.params.ParameterizedTest;
import org.junit.jupiter.params.provider.ValueSource;

class NumberParserTest {
  private static double parse(String text) {
    byte[] bytes = ("##" + text + "##").getBytes(UTF_8);
    return NumberParser.parse(bytes, 2, bytes.length - 2);
  }

  private static void assertSame(String text) {
    assertEquals(Double.parseDouble(text), parse(text), 0.0, text);
  }

  @ParameterizedTest
  @ValueSource(strings = {"0", "-0", "1", "+7", "12.5", ".5", "5.", "-.25", "1e3", "1E+3", "1e-3",
      "0.1", "0.30000000000000004", "9007199254740993", "900719925474099", "900719925474098.5",
      "123456789012345678901234567890", "1e22", "1e23", "1e-22", "1e-23", "1.7976931348623157e308",
      "4.9e-324", "1e-400", "0e99999999999", "000000000000000000000012", "0.000000000000000000001",
      "1.0000000000000000000000000000001", " 12 ", "8.5e+0010"})
  void isTheNearestDouble(String text) {
    assertSame(text);
  }

  @ParameterizedTest
  @ValueSource(strings = {"", " ", "-", "+", ".", "-.", "e5", "1e", "1e+", "1e5.5", "1.2.3", "1,5",
      "12a", "a12", "0x10", "1_000", "1f", "1d", "NaN", "Infinity", "-Infinity", "1e400", "--1",
      "1 2", "\u0661", "1\t", "\u00bd"})
  void isNoNumber(String text) {
    assertTrue(Double.isNaN(parse(text)), text);
  }

  @Test
  void agreesWithTheJdkOnRandomNumbers() {
    Random random = new Random(4711);
    for (int i = 0; i < 200_000; i++) {
      double value = Double.longBitsToDouble(random.nextLong());
      if (Double.isFinite(value)) {
        assertSame(Double.toString(value));
      }
      assertSame(String.format(Locale.ROOT, "%." + random.nextInt(12) + "f",
          (random.nextDouble() - 0.5) * Math.pow(10, random.nextInt(12))));
      assertSame(random.nextInt() + "e" + (random.nextInt(60) - 30));
    }
  }
}
