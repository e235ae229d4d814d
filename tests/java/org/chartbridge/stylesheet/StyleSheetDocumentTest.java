// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.stylesheet;

import static java.nio.charset.StandardCharsets.UTF_8;
import static org.junit.jupiter.api.Assertions.assertEquals;
import static org.junit.jupiter.api.Assertions.assertThrows;

import java.io.IOException;
import java.nio.file.Files;
import java.nio.file.Path;
import java.util.List;
import org.chartbridge.chart.Arrangement;
import org.chartbridge.chart.Channel;
import org.chartbridge.chart.Chart;
import org.chartbridge.chart.ChartException;
import org.chartbridge.chart.Element;
import org.chartbridge.format.ChartReader;
import org.chartbridge.format.DocumentedBlocks;
import org.junit.jupiter.api.Test;

/** The style sheets that are shown to people do what is said about them. */
class StyleSheetDocumentTest {
  private static final Path SOURCE = Path.of(System.getProperty("chartbridge.source"));

  private static Chart applied(String chart, byte[] sheet) throws IOException {
    byte[] source = Files.readAllBytes(SOURCE.resolve("examples/charts").resolve(chart));
    return ChartReader.read(StyleSheet.apply(source, sheet));
  }

  private static byte[] example(String name) throws IOException {
    return Files.readAllBytes(SOURCE.resolve("examples/style-sheets").resolve(name));
  }

  @Test
  void theDocumentedOneMakesADarkVariant() throws IOException {
    List<String> examples = DocumentedBlocks.of("style-sheets.md", "xml");
    assertEquals(1, examples.size());
    Chart chart = applied("titanic.gpl", examples.get(0).getBytes(UTF_8));
    assertEquals("dark", chart.style());
    assertEquals(2, chart.columns().size());
  }

  @Test
  void darkChangesStyleAndSize() throws IOException {
    Chart chart = applied("cars-weight.xml", example("dark.xsl"));
    assertEquals("dark", chart.style());
    assertEquals(1000, chart.size().width());
    chart.elements().forEach(element -> assertEquals(null, element.fill()));
  }

  @Test
  void sharesLiesBarsDown() throws IOException {
    Element bar = applied("titanic.gpl", example("shares.xsl")).elements().get(0);
    assertEquals(Arrangement.FILLED, bar.arrangement());
    assertEquals(Channel.of("class"), bar.y());
    ChartException error = assertThrows(
        ChartException.class, () -> applied("geyser.gpl", example("shares.xsl")));
    assertEquals("The style sheet: line 10, column 7: it stops with the message \"the chart has no"
        + " bars with colours to compare\"", error.getMessage());
  }
}
