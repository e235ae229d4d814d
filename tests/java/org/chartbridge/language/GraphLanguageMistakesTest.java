// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.language;

import static java.nio.charset.StandardCharsets.UTF_8;
import static org.junit.jupiter.api.Assertions.assertEquals;
import static org.junit.jupiter.api.Assertions.assertThrows;
import static org.junit.jupiter.api.Assertions.assertTimeout;

import java.time.Duration;
import java.util.List;
import org.chartbridge.chart.ChartException;
import org.junit.jupiter.api.Test;
import org.junit.jupiter.params.ParameterizedTest;
import org.junit.jupiter.params.provider.Arguments;
import org.junit.jupiter.params.provider.MethodSource;

class GraphLanguageMistakesTest {
  private static final String STATEMENTS =
      "expected one of title, subtitle, caption, size, column, draw, axis, legend, panels, "
          + "style, palette";
  private static final String KINDS =
      "expected one of bar, line, area, point, histogram, box, pie, heatmap";
  private static final String MARKS = KINDS + ", grouped, stacked, filled, overlaid";
  private static final String CLAUSES =
      "expected one of x, y, color, size, label, fill, opacity, bins";
  private static final String AXIS =
      "expected one of auto, linear, log, time, category, from, to, title, format, reversed, no";
  private static final String LEGEND = "expected one of right, bottom, top, left, none, title";
  private static final String VALUE =
      "expected a column name, count, or sum, mean, median, min or max of one";
  private static final String END = "expected \",\" or the end of the line";

  private static GraphLanguageException mistakes(String source) {
    return assertThrows(
        GraphLanguageException.class, () -> GraphLanguage.read(source.getBytes(UTF_8)));
  }

  static List<Arguments> syntax() {
    return List.of(
        // Statements
        mistake("bar: x a", "1, column 1: found \"bar\", " + STATEMENTS),
        mistake("Title \"a\"",
            "1, column 1: found \"Title\", " + STATEMENTS + "; did you mean \"title\"?"),
        mistake("\n  \"a\"", "2, column 3: found the text \"a\", " + STATEMENTS),
        mistake(": x", "1, column 1: found \":\", " + STATEMENTS),
        mistake("draw bar:\n  x a\ny b",
            "3, column 1: found \"y\", " + STATEMENTS
                + "; indent this line if it goes on with the statement above"),
        mistake("title", "1, column 6: found the end of the chart, expected a text in quotes"),
        mistake("title\nsize 1 by 2",
            "1, column 6: found the end of the line, expected a text in quotes"),
        mistake("title Sales", "1, column 7: found \"Sales\", expected a text in quotes"),
        mistake("title \"a\" \"b\"",
            "1, column 11: found the text \"b\", expected the end of the line"),
        mistake("title \"a\"\n  subtitle \"b\"",
            "2, column 3: found \"subtitle\", but the statement above is complete; do not indent "
                + "the line of the next one"),
        mistake(
            "title \"a\"\ntitle \"b\"", "2, column 1: title is already given at line 1, column 1"),
        mistake("axis x: log\naxis x: time",
            "2, column 6: axis x is already given at line 1, column 6"),
        mistake("size 800", "1, column 9: found the end of the chart, expected by"),
        mistake(
            "size 800 bye 600", "1, column 10: found \"bye\", expected by; did you mean \"by\"?"),
        mistake("size wide by 600", "1, column 6: found \"wide\", expected a whole number"),
        mistake("size 8.5 by 600", "1, column 6: found 8.5, expected a whole number"),
        mistake("size 9999999999 by 600", "1, column 6: found 9999999999, expected a whole number"),
        mistake("style #000000", "1, column 7: found #000000, expected the name of a style"),
        mistake("palette red", "1, column 9: found \"red\", expected a colour such as #0072b2"),
        mistake(
            "palette #000000 #111111", "1, column 17: found #111111, expected the end of the line"),
        // Columns
        mistake("column : number", "1, column 8: found \":\", expected a column name"),
        mistake("column a number", "1, column 10: found \"number\", expected \":\""),
        mistake("column a: text",
            "1, column 11: found \"text\", expected one of number, category, time"),
        mistake("column a: numbr",
            "1, column 11: found \"numbr\", expected one of number, category, time; "
                + "did you mean \"number\"?"),
        mistake("column a: time \"yyyy\"", "1, column 16: found the text \"yyyy\", " + END),
        mistake("column a: time written yyyy",
            "1, column 24: found \"yyyy\", expected a text in quotes"),
        mistake("column a: number, name \"b\"", "1, column 19: found \"name\", expected label"),
        mistake("column a: category b < , label \"c\"",
            "1, column 24: found \",\", expected a category"),
        mistake("column a: number, label \"b\", label \"c\"",
            "1, column 30: label is already given at line 1, column 19"),
        // Marks
        mistake(
            "draw bars: x a", "1, column 6: found \"bars\", " + MARKS + "; did you mean \"bar\"?"),
        mistake("draw stacked: x a", "1, column 13: found \":\", " + KINDS),
        mistake("draw bar x a", "1, column 10: found \"x\", expected \":\""),
        mistake("draw bar:", "1, column 10: found the end of the chart, " + CLAUSES),
        mistake("draw bar: x a,", "1, column 15: found the end of the chart, " + CLAUSES),
        mistake("draw bar: x a,, y b", "1, column 15: found \",\", " + CLAUSES),
        mistake("draw bar:\n  x a\n  colour b",
            "3, column 3: found \"colour\", " + CLAUSES + "; did you mean \"color\"?"),
        mistake("draw bar: x a y b", "1, column 15: found \"y\", " + END),
        mistake("draw bar: x a, x b", "1, column 16: x is already given at line 1, column 11"),
        mistake("draw bar: x 5", "1, column 13: found 5, " + VALUE),
        mistake("draw bar: x", "1, column 12: found the end of the chart, " + VALUE),
        mistake("draw bar: x a, y sum b",
            "1, column 22: found \"b\", expected \"of\", \",\" or the end of the line"),
        mistake("draw bar: x a, y sum of",
            "1, column 24: found the end of the chart, expected a column name"),
        mistake("draw bar: x a, y total of b", "1, column 24: found \"of\", " + END),
        mistake("draw bar: x a, fill blue",
            "1, column 21: found \"blue\", expected a colour such as #0072b2"),
        mistake("draw bar: x a, opacity half", "1, column 24: found \"half\", expected a number"),
        mistake("draw bar: x a, opacity 1e999", "1, column 24: found 1e999, expected a number"),
        mistake(
            "draw histogram: x a, bins 2.5", "1, column 27: found 2.5, expected a whole number"),
        // Axes
        mistake("axis z: log", "1, column 6: found \"z\", expected one of x, y"),
        mistake("axis x log", "1, column 8: found \"log\", expected \":\""),
        mistake("axis x: logarithmic", "1, column 9: found \"logarithmic\", " + AXIS),
        mistake(
            "axis x: log, time", "1, column 14: the scale is already given at line 1, column 9"),
        mistake("axis x: from low",
            "1, column 14: found \"low\", expected a number or a date such as 2024-01-31"),
        mistake("axis x: from 2024-02-30",
            "1, column 14: found 2024-02-30, expected a number or a date such as 2024-01-31"),
        mistake(
            "axis x: from 1 to 2, to 3", "1, column 22: to is already given at line 1, column 16"),
        mistake("axis x: no lines", "1, column 12: found \"lines\", expected one of grid, title"),
        mistake("axis x: no title, title \"a\"",
            "1, column 19: title is already given at line 1, column 12"),
        mistake("axis x: no grid, no grid",
            "1, column 21: no grid is already given at line 1, column 12"),
        // Legend and panels
        mistake("legend bottom", "1, column 8: found \"bottom\", expected \":\""),
        mistake("legend: under", "1, column 9: found \"under\", " + LEGEND),
        mistake(
            "legend: top, left", "1, column 14: the position is already given at line 1, column 9"),
        mistake("panels region", "1, column 8: found \"region\", expected by"),
        mistake("panels by", "1, column 10: found the end of the chart, expected a column name"),
        mistake(
            "panels by a, rows of 2", "1, column 12: found \",\", expected the end of the line"),
        mistake("panels by a: rows 2", "1, column 19: found 2, expected of"),
        mistake("panels by a: free z", "1, column 19: found \"z\", expected one of x, y"),
        mistake("panels by a: free x, free x",
            "1, column 27: free x is already given at line 1, column 19"),
        // Characters
        mistake("title \"abc",
            "1, column 7: the text that begins here is not closed with \" on its line"),
        mistake("title \"a\\q\"",
            "1, column 9: found \\q in a text; expected \\\", \\\\, \\n, \\t or \\u{...}"),
        mistake("title \"a\\",
            "1, column 9: found \\ in a text; expected \\\", \\\\, \\n, \\t or \\u{...}"),
        mistake("title \"\\u20AC\"",
            "1, column 8: \\u must be followed by a code point in braces, such as \\u{20AC}"),
        mistake("title \"\\u{D800}\"",
            "1, column 8: \\u must be followed by a code point in braces, such as \\u{20AC}"),
        mistake("title \"\\u{110000}\"",
            "1, column 8: \\u must be followed by a code point in braces, such as \\u{20AC}"),
        mistake("palette #12345",
            "1, column 9: found \"#12345\"; a colour is # and six hexadecimal digits, such as "
                + "#0072b2"),
        mistake("palette #1234567",
            "1, column 9: found \"#1234567\"; a colour is # and six hexadecimal digits, such as "
                + "#0072b2"),
        mistake("size 800x600",
            "1, column 6: found \"800x600\"; this is neither a number nor a date; "
                + "put names that start with a digit in quotes"),
        mistake("draw bar: x 2024sales",
            "1, column 13: found \"2024sales\"; this is neither a number nor a date; "
                + "put names that start with a digit in quotes"),
        mistake("draw bar: x net-sales",
            "1, column 16: found \"-sales\"; this is neither a number nor a date; "
                + "put names that start with a digit in quotes"),
        mistake("draw bar: x a; y b",
            "1, column 14: found \";\", which has no meaning here; put names with it in quotes"),
        mistake("draw bar: x \uD83D\uDE00",
            "1, column 13: found \"\uD83D\uDE00\", which has no meaning here; put names with it "
                + "in quotes"),
        mistake("title \u0007", "1, column 7: found the control character U+0007"),
        // A character beyond the basic plane is one column
        mistake("style \"\uD83D\uDE00\uD83D\uDE00\" x",
            "1, column 12: found \"x\", expected the end of the line"),
        // Lines are counted whatever ends them
        mistake("// a\r\n\r\n// b\r// c\n  titel",
            "5, column 3: found \"titel\", " + STATEMENTS + "; did you mean \"title\"?"));
  }

  static List<Arguments> meaning() {
    return List.of(mistake("", "1, column 1: the chart has no element; " + KINDS),
        mistake("title \"a\"\n", "2, column 1: the chart has no element; " + KINDS),
        mistake(
            "size 15 by 600\ndraw bar: x a", "1, column 6: the width is 15; expected 16 to 10000"),
        mistake("size 800 by 10001\ndraw bar: x a",
            "1, column 13: the height is 10001; expected 16 to 10000"),
        mistake("style \" \"\ndraw bar: x a", "1, column 7: a name must not be empty"),
        mistake("draw bar: x \"\"", "1, column 13: a name must not be empty"),
        // Columns
        mistake("column a: number\ncolumn a: time\ndraw bar: x a",
            "2, column 8: column \"a\" is declared twice"),
        mistake("column a: time written \"bogus\"\ndraw bar: x a",
            "1, column 24: \"bogus\" is not a date pattern, such as yyyy-MM-dd"),
        mistake("column a: category b < c < b\ndraw bar: x a",
            "1, column 28: category \"b\" is listed twice"),
        // Channels
        mistake("draw heatmap: x a, y b",
            "1, column 1: a heat map needs color: the value that each cell shows"),
        mistake("draw bar: color b", "1, column 1: a bar needs x or y: the column along that axis"),
        mistake("draw box: color b",
            "1, column 1: a box plot needs x or y: the column along that axis"),
        mistake("draw histogram: bins 3",
            "1, column 1: a histogram needs x or y: the column along that axis"),
        mistake("draw line: x a", "1, column 1: a line needs y: the value along the y axis"),
        mistake("draw area: y a", "1, column 1: an area needs x: the column along the x axis"),
        mistake("draw pie: y count", "1, column 1: a pie needs x: the column of the slices"),
        mistake("draw pie: x a, color b",
            "1, column 22: a pie has no color; expected one of x, y, label"),
        mistake("draw box: y a, label b",
            "1, column 22: a box plot has no label; expected one of x, y, color"),
        mistake("draw bar: x a, size b",
            "1, column 21: a bar has no size; expected one of x, y, color, label"),
        mistake(
            "draw line: x sum of a, y b", "1, column 14: x of a line cannot be summed up with sum"),
        mistake("draw box: x a, y mean of b",
            "1, column 18: y of a box plot cannot be summed up with mean"),
        mistake("draw bar: x sum of a, y sum of b",
            "1, column 25: x and y are both summed up; one of them must be a plain column"),
        mistake("draw pie: x a\ndraw bar: x a",
            "1, column 1: a pie stands alone; it shares no axes with other elements"),
        // Kinds of columns
        mistake("column a: category\ndraw bar: x b, y sum of a",
            "2, column 18: sum needs numbers, but column \"a\" is declared as category"),
        mistake("column a: category\ndraw histogram: x a",
            "2, column 19: x of a histogram needs numbers, but column \"a\" is declared as "
                + "category"),
        mistake("column a: category\ndraw histogram: y a, x count",
            "2, column 19: y of a histogram needs numbers, but column \"a\" is declared as "
                + "category"),
        mistake("column a: category\ndraw box: y a",
            "2, column 13: y of a box plot needs numbers, but column \"a\" is declared as "
                + "category"),
        mistake("column a: category\ndraw point: x b, y c, size a",
            "2, column 28: size of a point needs numbers, but column \"a\" is declared as "
                + "category"),
        mistake("column a: category\ndraw heatmap: x b, y c, color a",
            "2, column 31: color of a heat map needs numbers, but column \"a\" is declared as "
                + "category"),
        mistake("column a: category\ncolumn b: category\ndraw bar: x a, y b",
            "3, column 1: a bar needs numbers or count, but x and y are both declared as category"),
        mistake("column a: category\naxis x: log\ndraw bar: x a",
            "3, column 13: the x axis is log and needs a number column, "
                + "but column \"a\" is declared as category"),
        mistake("column a: number\naxis x: time\ndraw bar: x a",
            "3, column 13: the x axis is time and needs a time column, "
                + "but column \"a\" is declared as number"),
        // Looks
        mistake("draw grouped area: x a, y b",
            "1, column 6: an area cannot be grouped; expected one of stacked, filled, overlaid"),
        mistake("draw stacked line: x a, y b", "1, column 6: a line cannot be stacked"),
        mistake("draw bar: x a, bins 3", "1, column 21: a bar has no bins; only a histogram has"),
        mistake("draw histogram: x a, bins 0",
            "1, column 27: the number of bins is 0; expected 1 to 500"),
        mistake("draw bar: x a, color b, fill #000000",
            "1, column 30: fill sets one colour for all marks, but their colours already come "
                + "from the data"),
        mistake("draw pie: x a, fill #000000",
            "1, column 21: fill sets one colour for all marks, but their colours already come "
                + "from the data"),
        mistake(
            "draw bar: x a, opacity -0.5", "1, column 24: the opacity is -0.5; expected 0 to 1"),
        // Axes
        mistake("axis y: log, from 0\ndraw bar: x a",
            "1, column 19: a log axis holds only values above 0, but its limit is 0"),
        mistake("axis y: from 2 to 1\ndraw bar: x a",
            "1, column 19: the axis ends at 1, which is not above its start 2"),
        mistake("axis x: time, from 2024-02-01 to 2024-01-01\ndraw bar: x a",
            "1, column 34: the axis ends at 2024-01-01, which is not above its start 2024-02-01"),
        mistake(
            "axis x: category, to 5\ndraw bar: x a", "1, column 22: a category axis has no limits"),
        mistake("axis x: category, format \"0\"\ndraw bar: x a",
            "1, column 26: a category axis has no format"),
        mistake("axis y: linear, format \"yyyy\"\ndraw bar: x a",
            "1, column 24: \"yyyy\" is not a number pattern, such as #,##0.0"),
        mistake("axis x: time, format \"#,##0\"\ndraw bar: x a",
            "1, column 22: \"#,##0\" is not a date pattern, such as yyyy-MM"),
        mistake("panels by a: rows of 0\ndraw bar: x a",
            "1, column 22: the number of panels in a row is 0; expected 1 to 100"),
        mistake("title \"\\u{FFFE}\"\ndraw bar: x a",
            "1, column 7: the text holds the character U+FFFE, which a chart cannot hold"));
  }

  private static Arguments mistake(String source, String message) {
    return Arguments.of(source, "line " + message);
  }

  @ParameterizedTest
  @MethodSource("syntax")
  void saysWhatWasFoundAndWhatWasExpected(String source, String message) {
    assertEquals(message, mistakes(source).problems().get(0));
  }

  @ParameterizedTest
  @MethodSource("meaning")
  void saysWhatMakesNoSense(String source, String message) {
    assertEquals(message, mistakes(source).problems().get(0));
  }

  @Test
  void collectsTheMistakesOfAllStatements() {
    GraphLanguageException all = mistakes(
        "titel \"a\"\ndraw bar:\n  x a\n  colour b\n  size wrong wrong\nsize 1 by\naxis x: "
            + "log\ndraw pie: x a, y");
    assertEquals(
        List.of(
            "line 1, column 1: found \"titel\", " + STATEMENTS + "; did you mean \"title\"?",
            "line 4, column 3: found \"colour\", " + CLAUSES + "; did you mean \"color\"?",
            "line 6, column 10: found the end of the line, expected a whole number",
            "line 8, column 17: found the end of the chart, " + VALUE),
        all.problems());
    assertEquals(all.problems().get(0) + " (and 3 more mistakes)", all.getMessage());
  }

  @Test
  void sortsTheMistakesOfMeaningByTheirPlace() {
    GraphLanguageException all = mistakes("draw bar: x a, bins 3\nsize 5 by 6");
    assertEquals(
        List.of(
            "line 1, column 21: a bar has no bins; only a histogram has",
            "line 2, column 6: the width is 5; expected 16 to 10000",
            "line 2, column 11: the height is 6; expected 16 to 10000"),
        all.problems());
    assertEquals(all.problems().get(0) + " (and 2 more mistakes)", all.getMessage());
  }

  @Test
  void theMessageOfOneMistakeIsTheMistake() {
    assertEquals("line 1, column 10: found the end of the chart, " + CLAUSES,
        mistakes("draw bar:").getMessage());
    assertEquals(true, mistakes("a\nb").getMessage().endsWith(" (and 1 more mistake)"));
  }

  @Test
  void stopsAtTwentyMistakes() {
    GraphLanguageException all =
        assertTimeout(Duration.ofSeconds(5), () -> mistakes("wrong\n".repeat(100_000)));
    assertEquals(20, all.problems().size());
    assertEquals(
        true, all.getMessage().endsWith(" (and at least 19 more mistakes)"), all.getMessage());
  }

  @Test
  void refusesWhatIsNoUtf8AndWhatIsTooLarge() {
    byte[] latin =
        "title \"a\"\n// gr\u00f6\u00dfe".getBytes(java.nio.charset.StandardCharsets.ISO_8859_1);
    ChartException encoding = assertThrows(ChartException.class, () -> GraphLanguage.read(latin));
    assertEquals("line 2: byte 15 is not valid UTF-8", encoding.getMessage());
    ChartException size = assertThrows(
        ChartException.class, () -> GraphLanguage.read(new byte[GraphLanguage.MAX_BYTES + 1]));
    assertEquals("the chart has 1048577 bytes; at most 1048576 are accepted", size.getMessage());
  }
}
