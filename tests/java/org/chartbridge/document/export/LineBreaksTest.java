// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.document.export;

import static org.junit.jupiter.api.Assertions.assertEquals;
import static org.junit.jupiter.api.Assertions.assertTrue;

import java.util.ArrayList;
import java.util.List;
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

  @ParameterizedTest
  @ValueSource(strings = {",", ".", "-", "/", ":", ",-", " "})
  void breaksListsOfNumbersBehindTheirSeparators(String separator) {
    StringBuilder list = new StringBuilder("100");
    for (int i = 101; i < 3000; i++) {
      list.append(separator).append(i < 1000 ? i : 100 + i % 900);
    }
    for (LineBreaks.Detail detail : LineBreaks.Detail.values()) {
      List<String> pieces = new LineBreaks(list.toString(), Locale.GERMAN).pieces(detail);
      assertEquals(2900, pieces.size());
      for (String piece : pieces) {
        assertTrue(piece.matches("\\d{3}" + separator + "|\\d{3}"), piece);
      }
    }
  }

  @Test
  void tellsListsFromNumbers() {
    LineBreaks.Detail anywhere = LineBreaks.Detail.ANYWHERE;
    assertEquals("1 234 567 890 123 456", pieces("1 234 567 890 123 456", anywhere));
    assertEquals("101 |102 |103 |104 |105 |106 |107",
        pieces("101 102 103 104 105 106 107", anywhere));
    assertEquals("1,2,3,4,5,6,7,8,9,10,11,12,13,14,15,16,", pieces(
        "1,2,3,4,5,6,7,8,9,10,11,12,13,14,15,16,", anywhere), "40 characters");
    assertEquals("1,|2,|3,|4,|5,|6,|7,|8,|9,|10,|11,|12,|13,|14,|15,|16,|17",
        pieces("1,2,3,4,5,6,7,8,9,10,11,12,13,14,15,16,17", anywhere));
    String decimal = "-0." + "1".repeat(60) + "e-17";
    assertEquals(decimal, pieces(decimal, anywhere), "no list");
    String signed = "- 101 102 103 104 105 106 107e-5 %";
    assertEquals("- 101 |102 |103 |104 |105 |106 |107e-5 %", pieces(signed, anywhere));
  }

  @Test
  void breaksListsInRunningTextToo() {
    String list = "123456,".repeat(20) + "7";
    LineBreaks breaks = LineBreaks.running(list, Locale.ENGLISH);
    assertEquals(21, breaks.pieces(LineBreaks.Detail.WORDS).size());
  }

  @Test
  void needsLittleOfTheStack() throws InterruptedException {
    List<Throwable> thrown = new ArrayList<>();
    Thread thread = new Thread(null, () -> {
      for (String part : List.of("1,", "1.", "1:-", "123 ", "1 234 ", "-", "2024-01-01T10:00:")) {
        new LineBreaks(part.repeat(30_000) + "1", Locale.GERMAN).pieces(LineBreaks.Detail.PARTS);
      }
    }, "small", 256 * 1024);
    thread.setUncaughtExceptionHandler((where, what) -> thrown.add(what));
    thread.start();
    thread.join();
    assertEquals(List.of(), thrown);
  }
}
