// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.data;

import static java.nio.charset.StandardCharsets.UTF_8;
import static org.junit.jupiter.api.Assertions.assertEquals;

import java.time.Instant;
import java.time.OffsetDateTime;
import java.time.ZoneOffset;
import java.util.Random;
import org.junit.jupiter.api.Test;
import org.junit.jupiter.params.ParameterizedTest;
import org.junit.jupiter.params.provider.CsvSource;
import org.junit.jupiter.params.provider.ValueSource;

class IsoTimeParserTest {
  private final IsoTimeParser parser = new IsoTimeParser();

  private long parse(String text) {
    byte[] bytes = ("7" + text + "7").getBytes(UTF_8);
    return parser.parse(bytes, 1, bytes.length - 1);
  }

  @ParameterizedTest
  @CsvSource({"1970, 1970-01-01T00:00:00Z", "2024-02, 2024-02-01T00:00:00Z",
      "2024-02-29, 2024-02-29T00:00:00Z", "1899-12-31, 1899-12-31T00:00:00Z",
      "2024-02-29T13:05, 2024-02-29T13:05:00Z", "2024-02-29 13:05:59, 2024-02-29T13:05:59Z",
      "2024-02-29T13:05:59.1239, 2024-02-29T13:05:59.123Z",
      "'2024-02-29T13:05:59,5Z', 2024-02-29T13:05:59.500Z",
      "2024-03-01T00:30+02:00, 2024-02-29T22:30:00Z", "2024-02-29T23:30-0130, 2024-03-01T01:00:00Z",
      "2024-02-29t23:30:00z, 2024-02-29T23:30:00Z", "2024-02-29T23:30+05, 2024-02-29T18:30:00Z",
      "0001-01-01, 0001-01-01T00:00:00Z", "9999-12-31T23:59:59.999Z, 9999-12-31T23:59:59.999Z"})
  void
  isATime(String text, String instant) {
    assertEquals(Instant.parse(instant).toEpochMilli(), parse(text));
  }

  @ParameterizedTest
  @ValueSource(
      strings = {"", "24", "20240229", "2024-", "2024-2", "2024-13", "2024-00", "2024-02-30",
          "2023-02-29", "2024-02-2", "2024-02-29T", "2024-02-29T1", "2024-02-29T24:00",
          "2024-02-29T12:60", "2024-02-29T12:00:60", "2024-02-29T12:00:", "2024-02-29T12:00.",
          "2024-02-29T12:00:00.", "2024-02-29T12:00+", "2024-02-29T12:00+2",
          "2024-02-29T12:00+19:00", "2024-02-29T12:00+02:", "2024-02-29T12:00+02:60",
          "2024-02-29T12:00Zx", "2024-02T12:00", "2024T12:00", "2024-02-29Z", " 2024-02-29",
          "2024-02-29 ", "+2024-02-29", "2024-O2-29", "2024/02/29", "February"})
  void
  isNoTime(String text) {
    assertEquals(IsoTimeParser.NONE, parse(text), text);
  }

  @Test
  void agreesWithTheJdkOnRandomTimes() {
    Random random = new Random(99);
    for (int i = 0; i < 100_000; i++) {
      long millis = random.nextLong(-62_135_596_800_000L, 253_402_300_799_999L);
      ZoneOffset offset = ZoneOffset.ofTotalSeconds(60 * random.nextInt(-1080, 1081));
      OffsetDateTime time = Instant.ofEpochMilli(millis).atOffset(offset);
      if (time.getYear() >= 1 && time.getYear() <= 9999) {
        assertEquals(millis, parse(time.toString()), time::toString);
      }
    }
  }
}
