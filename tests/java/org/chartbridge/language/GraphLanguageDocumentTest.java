// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.language;

import static java.nio.charset.StandardCharsets.UTF_8;
import static org.junit.jupiter.api.Assertions.assertEquals;
import static org.junit.jupiter.api.Assertions.assertTrue;

import java.io.IOException;
import java.util.ArrayList;
import java.util.EnumSet;
import java.util.List;
import java.util.Set;
import java.util.regex.Matcher;
import java.util.regex.Pattern;
import org.chartbridge.chart.Chart;
import org.chartbridge.chart.ElementKind;
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
      read(draws ? block : block + "draw bar: x a").elements().forEach(element -> shown.add(element.kind()));
    }
    assertTrue(shown.size() >= 6, shown::toString);
  }

  /** Every word in quotes of the grammar is a word of the language, and the other way round. */
  @Test
  void theGrammarHasTheWordsOfTheLanguage() throws IOException {
    String grammar = DocumentedBlocks.of("graph-language.md", "ebnf").get(0);
    Matcher matcher = Pattern.compile("\"([a-z]{1,9})\"").matcher(grammar);
    Set<String> words = new java.util.TreeSet<>();
    while (matcher.find()) {
      words.add(matcher.group(1));
    }
    List<String> known = new ArrayList<>(List.of(
        "title subtitle caption size by style palette column label number time written category draw axis legend panels"
            .split(" ")));
    known.addAll(List.of("grouped stacked filled overlaid bar line area point histogram box pie heatmap".split(" ")));
    known.addAll(List.of("x y color fill opacity bins count sum mean median min max of".split(" ")));
    known.addAll(List.of("auto linear log from to format reversed no grid".split(" ")));
    known.addAll(List.of("right bottom top left none rows free".split(" ")));
    known.addAll(List.of("e", "n", "t"));
    assertEquals(new java.util.TreeSet<>(known), words);
  }
}
