// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.language;

import static java.nio.charset.StandardCharsets.UTF_8;
import static org.junit.jupiter.api.Assertions.assertEquals;
import static org.junit.jupiter.api.Assertions.assertTrue;

import java.io.IOException;
import java.util.Arrays;
import java.util.EnumSet;
import java.util.List;
import java.util.Set;
import java.util.TreeSet;
import java.util.regex.Matcher;
import java.util.regex.Pattern;
import org.chartbridge.chart.Aggregate;
import org.chartbridge.chart.Arrangement;
import org.chartbridge.chart.Chart;
import org.chartbridge.chart.ColumnKind;
import org.chartbridge.chart.ElementKind;
import org.chartbridge.chart.LegendPosition;
import org.chartbridge.chart.ScaleKind;
import org.chartbridge.chart.Words;
import org.chartbridge.format.ChartReader;
import org.chartbridge.format.ChartWriter;
import org.chartbridge.format.DocumentedBlocks;
import org.junit.jupiter.api.Test;

class GraphLanguageDocumentTest {
  private static Chart read(String source) {
    return GraphLanguage.read(source.getBytes(UTF_8));
  }

  @Test
  void everyExampleIsAChart() throws IOException {
    List<String> examples = DocumentedBlocks.of("graph-language.md", "chart");
    assertTrue(examples.size() >= 8, () -> examples.size() + " examples");
    for (String example : examples) {
      Chart chart = read(example);
      assertEquals(chart, ChartReader.read(ChartWriter.write(chart)));
    }
  }

  @Test
  void everyStatementInTheReferenceIsOne() throws IOException {
    List<String> blocks = DocumentedBlocks.of("graph-language.md", "statement");
    assertTrue(blocks.size() >= 5, () -> blocks.size() + " blocks");
    Set<ElementKind> shown = EnumSet.noneOf(ElementKind.class);
    for (String block : blocks) {
      boolean draws = block.contains("draw ");
      read(draws ? block : block + "draw bar: x a")
          .elements()
          .forEach(element -> shown.add(element.kind()));
    }
    assertTrue(shown.size() >= 6, shown::toString);
  }

  /** Every word in quotes of the grammar is a word of the language, and the other way round. */
  @Test
  void theGrammarHasTheWordsOfTheLanguage() throws IOException {
    String grammar = DocumentedBlocks.of("graph-language.md", "ebnf").get(0);
    Matcher matcher = Pattern.compile("\"([a-z]{1,9})\"").matcher(grammar);
    Set<String> words = new TreeSet<>();
    while (matcher.find()) {
      words.add(matcher.group(1));
    }
    String keywords =
        """
        title subtitle caption size by style palette column label written draw axis legend panels
        x y color fill opacity bins of from to format reversed no grid rows free e n t
        """;
    Set<String> known = new TreeSet<>(Arrays.asList(keywords.strip().split("\\s+")));
    known.addAll(Words.all(ColumnKind.class));
    known.addAll(Words.all(Arrangement.class));
    known.addAll(Words.all(ElementKind.class));
    known.addAll(Words.all(Aggregate.class));
    known.addAll(Words.all(ScaleKind.class));
    known.addAll(Words.all(LegendPosition.class));
    assertEquals(known, words);
  }
}
