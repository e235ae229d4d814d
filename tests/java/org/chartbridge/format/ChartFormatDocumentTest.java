// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.format;

import static java.nio.charset.StandardCharsets.UTF_8;
import static org.junit.jupiter.api.Assertions.assertEquals;
import static org.junit.jupiter.api.Assertions.assertTrue;

import java.io.IOException;
import java.util.EnumSet;
import java.util.List;
import java.util.Set;
import org.chartbridge.chart.ElementKind;
import org.junit.jupiter.api.Test;

class ChartFormatDocumentTest {
  @Test
  void everyExampleIsAChart() throws IOException {
    List<String> examples = DocumentedBlocks.of("chart-format.md", "xml");
    assertTrue(examples.size() >= 8, () -> examples.size() + " examples");
    Set<ElementKind> shown = EnumSet.noneOf(ElementKind.class);
    for (String example : examples) {
      ChartReader.read(example.getBytes(UTF_8))
          .elements()
          .forEach(element -> shown.add(element.kind()));
    }
    assertEquals(EnumSet.allOf(ElementKind.class), shown);
  }

  @Test
  void theExampleOfVersionOneUpgradesToTheFirstExample() throws IOException {
    List<String> examples = DocumentedBlocks.of("chart-format.md", "xml");
    String old = examples.get(examples.size() - 1);
    assertTrue(old.contains("urn:chartbridge:chart:1"));
    String upgraded = new String(ChartUpgrade.upgrade(old.getBytes(UTF_8)), UTF_8);
    assertEquals(examples.get(0), upgraded);
  }
}
