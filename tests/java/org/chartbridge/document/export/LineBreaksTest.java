// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.document.export;

import static org.junit.jupiter.api.Assertions.assertEquals;

import java.util.Locale;
import org.junit.jupiter.api.Test;
import org.junit.jupiter.params.ParameterizedTest;
import org.junit.jupiter.params.provider.CsvSource;
import org.junit.jupiter.params.provider.ValueSource;

class LineBreaksTest {
  private static String pieces(String text, LineBreaks.Detail detail) {
    return String.join("|", new LineBreaks(text, Locale.GERMAN).pieces(detail));
  }

  @ParameterizedTest
  @ValueSource(strings = {"-1,234.56", "1.5e-10", "2024-01-31", "31/01/2024",
      "2024-01-31T12:30:45.250Z",
      "2024-01-31T12:30:45+02:00",
      "15-Mar-2024", "15. M\u00E4rz 2024", "March 15, 2024",
      "2024-May-01",
      "12:30:45.250", "1/2", "10-20", "10\u201320", "1 234 567", "1\u202F234\u202F567", "12 %", "-5",
      "$ 1,000.00", "\u22125.1", "5.1\u00B0", "\u0661\u066B\u0665", "\u00B15", "1'000'000"})
  void keepsNumbersAndDatesWhole(String text) {
    assertEquals(text, pieces(text, LineBreaks.Detail.ANYWHERE));
    assertEquals("vor |" + text + " |nach", pieces("vor " + text + " nach",
        LineBreaks.Detail.ANYWHERE));
  }

  @ParameterizedTest
  @CsvSource({"two words,two |words,two |words", "snake_case_name,snake_case_name,snake_|case_|name",
      "well-known,well-known,well-|known", "km/h,km/h,km/|h", "data_2024-01-31_v2,"
      + "data_2024-01-31_v2,data_|2024-01-31_|v2", "model-3,model-3,model-|3",
      "_private,_private,_private", "a - b,a |- |b,a |- |b", "https://a.org/b,https://a.org/b,"
      + "https://|a.org/|b", "\u6771\u4EAC,\u6771\u4EAC,\u6771|\u4EAC",
      "\u6771\u4EAC\u3068\u5927\u962A\u3068\u3002\u4EAC,\u6771|\u4EAC|\u3068|\u5927|\u962A|\u3068\u3002|"
      + "\u4EAC,\u6771|\u4EAC|\u3068|\u5927|\u962A|\u3068\u3002|\u4EAC"})
  void breaksWordsOnlyWhenAskedTo(String text, String words, String parts) {
    assertEquals(words, pieces(text, LineBreaks.Detail.WORDS));
    assertEquals(parts, pieces(text, LineBreaks.Detail.PARTS));
  }

  @Test
  void breaksWhatIsLongerThanWordsAnywhere() {
    String key = "a".repeat(41);
    assertEquals(key, pieces(key, LineBreaks.Detail.PARTS));
    assertEquals(41, pieces(key, LineBreaks.Detail.ANYWHERE).split("\\|").length);
    assertEquals(81, pieces("a".repeat(81), LineBreaks.Detail.PARTS).split("\\|").length);
    String number = "1".repeat(300);
    assertEquals(number, pieces(number, LineBreaks.Detail.ANYWHERE));
  }
}
