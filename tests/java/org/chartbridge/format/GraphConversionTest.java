// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.format;

import static java.nio.charset.StandardCharsets.UTF_8;
import static org.junit.jupiter.api.Assertions.assertEquals;
import static org.junit.jupiter.api.Assertions.assertFalse;
import static org.junit.jupiter.api.Assertions.assertTrue;

import java.io.IOException;
import java.nio.file.Files;
import java.nio.file.Path;
import org.chartbridge.language.GraphLanguage;
import org.junit.jupiter.api.Test;

class GraphConversionTest {
  private static String xml(String text) {
    return new String(GraphConversion.toXml(text.getBytes(UTF_8)), UTF_8);
  }

  @Test
  void saysNoMoreThanTheText() {
    assertEquals(
        """
        <?xml version="1.0" encoding="UTF-8"?>
        <chart xmlns="urn:chartbridge:chart:2">
          <elements>
            <bar>
              <x column="a"/>
            </bar>
          </elements>
        </chart>
        """,
        xml("draw bar: x a"));
  }

  @Test
  void saysDefaultsThatTheTextGives() {
    assertEquals(
        """
        <?xml version="1.0" encoding="UTF-8"?>
        <chart xmlns="urn:chartbridge:chart:2" width="800" height="600">
          <axes>
            <y scale="auto"/>
          </axes>
          <elements>
            <bar arrangement="grouped" opacity="1">
              <x column="a"/>
            </bar>
            <bar>
              <x column="a"/>
            </bar>
          </elements>
        </chart>
        """,
        xml("size 800 by 600\ndraw grouped bar: x a, opacity 1\ndraw bar: x a\naxis y: auto"));
  }

  @Test
  void keepsTheSizeOfWhichHalfIsTheDefault() {
    assertTrue(xml("size 800 by 500\ndraw bar: x a").contains("width=\"800\" height=\"500\""));
  }

  /** The converted chart is the same chart. */
  @Test
  void keepsTheExamples() throws IOException {
    Path charts = Path.of(System.getProperty("chartbridge.source"), "examples", "charts");
    int count = 0;
    try (var files = Files.newDirectoryStream(charts, "*.gpl")) {
      for (Path file : files) {
        byte[] text = Files.readAllBytes(file);
        byte[] xml = GraphConversion.toXml(text);
        assertEquals(GraphLanguage.read(text), ChartReader.read(xml), file.toString());
        boolean saysSize = new String(text, UTF_8).contains("\nsize ");
        assertEquals(saysSize, new String(xml, UTF_8).contains("width="), file.toString());
        count++;
      }
    }
    assertFalse(count == 0);
  }
}
