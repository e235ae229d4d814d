// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.tree.draw;

import static org.junit.jupiter.api.Assertions.assertEquals;
import static org.junit.jupiter.api.Assertions.assertTrue;

import java.awt.Font;
import java.util.Collections;
import java.util.List;
import java.util.Locale;
import java.util.NavigableSet;
import java.util.TreeSet;
import org.chartbridge.tree.Models;
import org.chartbridge.tree.TreeModel;
import org.chartbridge.tree.pmml.PmmlReader;
import org.junit.jupiter.api.Test;
import org.junit.jupiter.params.ParameterizedTest;
import org.junit.jupiter.params.provider.CsvSource;

/** Numbers, predicates and broken lines. */
class TextsTest {
  private static final Font FONT = new Font("Liberation Sans", Font.PLAIN, 12);

  @ParameterizedTest
  @CsvSource({"0.800000011920929, 0.8", "1.6500000357627869, 1.65", "31.32612218622545, 31.33",
      "1234567.8, 1234568", "0.2857142857142857, 0.2857", "-0.22004892, \u22120.22", "0, 0",
      "-0.0, 0", "7, 7", "0.00012345, 0.0001234", "1e-7, 1E\u22127", "99999, 99999",
      "0.99999, 1", "NaN, NaN",
      "123456789012345, 123456789012345", "2345678901234567890, 2.346E18"})
  void
  numbersKeepFourDigitsButNeverLoseWholeOnes(double value, String text) {
    assertEquals(text, new NumberText(Locale.ROOT, 4).number(value));
  }

  @Test
  void numbersThatAreComparedHaveDigitsEnoughToBeToldApart() {
    NumberText numbers = new NumberText(Locale.ROOT, 4);
    assertEquals("100000002.33", numbers.number(1e8 + 7.0 / 3, 2));
    assertEquals("100000001", numbers.number(1e8 + 1, 2));
    assertEquals("1.2345678901234565E15", numbers.number(1234567890123456.5, 0.5));
    assertEquals("1000.2", numbers.number(1000.2, 0.2));
    assertEquals("31.33", numbers.number(31.32612218622545, 62));
    assertEquals("0", numbers.number(0, 1e-3));
    assertEquals("7", numbers.number(7, 0));
    assertEquals("7", numbers.number(7, Double.NaN));
    assertEquals("1.798E308", numbers.number(Double.MAX_VALUE, Double.POSITIVE_INFINITY));
  }

  @Test
  void splitsKeepTheHalfBetweenWholeNumbersAndWhatTellsThemApart() {
    NumberText numbers = new NumberText(Locale.ROOT, 4);
    NavigableSet<Double> none = Collections.emptyNavigableSet();
    assertEquals("1234.5", numbers.split(1234.5, none));
    assertEquals("1234567.5", numbers.split(1234567.5, none));
    assertEquals("2.45", numbers.split(2.45, none));
    assertEquals("2.45", numbers.split(2.4500000476837, none));
    NavigableSet<Double> near = new TreeSet<>(List.of(0.12341, 0.12344, 0.5));
    assertEquals("0.12341", numbers.split(0.12341, near));
    assertEquals("0.12344", numbers.split(0.12344, near));
    assertEquals("0.5", numbers.split(0.5, near));
  }

  @Test
  void twoSplitsOfATreeThatDifferNeverReadTheSame() {
    String split = "<Node score=\"A\"><SimplePredicate field=\"x\" operator=\"lessThan\""
        + " value=\"%s\"/></Node>";
    TreeModel tree = Models.read(Models.document("<Node score=\"A\"><True/>"
        + split.formatted("31.326122") + split.formatted("31.326222") + "</Node>")).tree(1);
    PredicateText texts = PredicateText.ofTree(tree, new NumberText(Locale.ROOT, 4), false);
    assertEquals(List.of("x < 31.3261", "x < 31.3262"), tree.root().children().stream()
        .map(node -> texts.of(node.predicate()).replace('\u00A0', ' ')).toList());
  }

  @Test
  void longWordsBreakBehindWhatJoinsTheirParts() {
    assertEquals(List.of("first_part_", "second_part"),
        TextBlock.wrap("first_part_second_part", FONT, 80, 5));
    assertEquals(List.of("Petal.", "Length.", "Mean"),
        TextBlock.wrap("Petal.Length.Mean", FONT, 60, 5));
    assertEquals(List.of("north-", "western"), TextBlock.wrap("north-western", FONT, 55, 5));
    // A short word is not torn, and a number or a date breaks only where nothing else is left.
    assertEquals(List.of("a_b", "first_word"), TextBlock.wrap("a_b first_word", FONT, 65, 5));
    assertEquals(List.of("long_name", "-0.5"), TextBlock.wrap("long_name -0.5", FONT, 62, 5));
    assertEquals(List.of("2020-11-21_", "late"), TextBlock.wrap("2020-11-21_late", FONT, 80, 5));
    assertEquals("__init__", String.join("", TextBlock.wrap("__init__", FONT, 30, 5)));
  }

  @Test
  void digitsAndLocaleAreHonoured() {
    assertEquals("0,28571", new NumberText(Locale.GERMANY, 5).number(2.0 / 7));
    assertEquals("0.3", new NumberText(Locale.ROOT, 1).number(2.0 / 7));
    assertEquals("1.234.567", new NumberText(Locale.GERMANY, 4).count(1234567));
    assertEquals("0.25", new NumberText(Locale.ROOT, 4).count(0.25));
    assertEquals("33.3\u2009%", new NumberText(Locale.ROOT, 4).share(1.0 / 3));
    assertEquals("<\u200A0.1\u2009%", new NumberText(Locale.ROOT, 4).share(0.0004));
    assertEquals("0\u2009%", new NumberText(Locale.ROOT, 4).share(0));
    assertEquals("100\u2009%", new NumberText(Locale.ROOT, 4).share(1));
  }

  @Test
  void valuesThatAreNoNumbersStay() {
    NumberText numbers = new NumberText(Locale.ROOT, 4);
    assertEquals("1.235", numbers.value("1.23456"));
    for (String text : List.of("abc", "1.23456f", "", " ", "2020-01-01", "NaN")) {
      assertEquals(text, numbers.value(text));
    }
  }

  private static String label(TreeModel tree, String path, boolean complete) {
    return new PredicateText(tree.fields(), new NumberText(Locale.ROOT, 4), complete)
        .of(Models.node(tree.root(), path).predicate()).replace('\u00A0', ' ');
  }

  @Test
  void predicatesReadLikeSentences() {
    TreeModel sets = PmmlReader.read(Models.odd("sets-quotes")).tree(1);
    assertEquals(
        "Home town in {Rome, New York, say \"hi\", back\\slash}", label(sets, "1.1", false));
    assertEquals("Home town not in {Rome, New York, a, b}", label(sets, "1.2", false));
    assertEquals("grade < high", label(sets, "1.2.1", false));
    TreeModel compounds = PmmlReader.read(Models.odd("surrogates")).tree(1);
    assertEquals("x < 1", label(compounds, "1.1", false));
    assertEquals("never", label(compounds, "1.1.1", false));
    assertEquals("z is missing", label(compounds, "1.1.2", false));
    assertEquals("z is not missing", label(compounds, "1.1.3", false));
    assertEquals("(x < 5 and y < 6) or z > 7", label(compounds, "1.2.1", false));
    assertEquals("x < 5 xor z > 7", label(compounds, "1.2.2", false));
    assertEquals("always", label(compounds, "1", false));
    PredicateText texts =
        new PredicateText(compounds.fields(), new NumberText(Locale.ROOT, 4), false);
    assertEquals(List.of("y > 2", "z \u2260 3"),
        texts.surrogates(Models.node(compounds.root(), "1.1").predicate()).stream()
            .map(text -> text.replace('\u00A0', ' ')).toList());
    TreeModel old = PmmlReader.read(Models.odd("prefixed-4.0")).tree(1);
    assertEquals("Gr\u00F6\u00DFe < 0.001", label(old, "1.1", false));
    assertEquals("Gr\u00F6\u00DFe < 1e-3", label(old, "1.1", true));
  }

  @Test
  void longSetsAreCutShortInThePictureOnly() {
    String array =
        "<Node score=\"B\"><SimpleSetPredicate field=\"c\" booleanOperator=\"isIn\"><Array>"
        + "\"some value\" ".repeat(30) + "</Array></SimpleSetPredicate></Node>";
    TreeModel tree = Models.read(
        Models.document("<Node score=\"A\"><True/>" + array + "</Node>")).tree(1);
    String cut = label(tree, "1.1", false);
    assertTrue(cut.endsWith(", \u2026 23 more}"), cut);
    assertEquals(7, cut.split("some value", -1).length - 1);
    assertEquals(30, label(tree, "1.1", true).split("some value", -1).length - 1);
  }

  @Test
  void numericClassesAndCodesAreNotRounded() {
    TreeModel tree = Models.read(Models.document("<Node score=\"A\"><True/><Node score=\"B\">"
        + "<SimplePredicate field=\"c\" operator=\"equal\" value=\"0012345678\"/></Node></Node>"))
        .tree(1);
    assertEquals("c = 0012345678", label(tree, "1.1", false));
  }

  @Test
  void linesBreakAtSpacesAndWithinLongWords() {
    assertEquals(List.of("one two", "three"), TextBlock.wrap("one two three", FONT, 55, 5));
    List<String> word = TextBlock.wrap("w".repeat(40), FONT, 60, 99);
    assertEquals("w".repeat(40), String.join("", word));
    for (String line : word) {
      assertTrue(TreeStyle.width(line, FONT) <= 60, line);
    }
    assertEquals(List.of("a b"), TextBlock.wrap("  a\n\tb ", FONT, 100, 5));
    assertEquals(List.of(), TextBlock.wrap("  ", FONT, 100, 5));
    List<String> few = TextBlock.wrap("word ".repeat(50), FONT, 80, 2);
    assertEquals(2, few.size());
    assertTrue(few.get(1).endsWith("\u2026") && TreeStyle.width(few.get(1), FONT) <= 80);
    String trees = "\uD83C\uDF33".repeat(20);
    for (int width = 1; width < 90; width++) {
      for (String line : TextBlock.wrap(trees, FONT, width, 99)) {
        assertEquals(line.length(), 2 * line.codePointCount(0, line.length()), width + ": " + line);
      }
    }
    assertTrue(TextBlock.wrap("x".repeat(1_000_000), FONT, 100, 3).size() == 3);
  }

  @Test
  void namesOfSetsAreAsciiAndNeverEmpty() {
    assertEquals("Iris-species", PictureSet.baseName("Iris species"));
    assertEquals("Hohe-Baume", PictureSet.baseName("  Hohe B\u00E4ume "));
    assertEquals("tree", PictureSet.baseName("\u4E2D\u6587"));
    assertEquals("tree", PictureSet.baseName("../.."));
    assertEquals("a-b", PictureSet.baseName("../a/b"));
    assertEquals(80, PictureSet.baseName("x".repeat(500)).length());
  }
}
