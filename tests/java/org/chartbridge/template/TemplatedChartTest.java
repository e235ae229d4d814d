// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.template;

import static java.nio.charset.StandardCharsets.UTF_8;
import static org.junit.jupiter.api.Assertions.assertEquals;
import static org.junit.jupiter.api.Assertions.assertInstanceOf;
import static org.junit.jupiter.api.Assertions.assertThrows;

import java.io.IOException;
import java.nio.file.Files;
import java.nio.file.Path;
import org.chartbridge.chart.ChartException;
import org.chartbridge.format.ChartSource;
import org.junit.jupiter.api.AfterEach;
import org.junit.jupiter.api.Test;
import org.junit.jupiter.api.io.TempDir;

/** Without native code; with it, tests/integration. */
class TemplatedChartTest {
  private static final String CHART = "<chart xmlns=\"urn:chartbridge:chart:2\" TEMPLATE>"
      + "<elements><bar><x column=\"a\"/></bar></elements></chart>";

  @TempDir Path folder;

  @AfterEach
  void clearFolders() {
    System.clearProperty(TemplateFolders.PROPERTY);
  }

  private static byte[] chart(String attribute) {
    return CHART.replace("TEMPLATE", attribute).getBytes(UTF_8);
  }

  @Test
  void readsChartsWithoutTemplate() {
    byte[] xml = chart("width=\"300\"");
    assertEquals(ChartSource.read(xml), TemplatedChart.read(xml));
    byte[] text = "draw bar: x a".getBytes(UTF_8);
    assertEquals(ChartSource.read(text), TemplatedChart.read(text));
  }

  @Test
  void failsAsTheChartFails() {
    ChartException e =
        assertThrows(ChartException.class, () -> TemplatedChart.read("draw".getBytes(UTF_8)));
    assertEquals(
        assertThrows(ChartException.class, () -> ChartSource.read("draw".getBytes(UTF_8)))
            .getMessage(),
        e.getMessage());
  }

  @Test
  void saysThatTheHostHasNoNativeCode() throws IOException {
    System.setProperty(TemplateFolders.PROPERTY, folder.toString());
    Files.writeString(
        folder.resolve("t.xml"), "<template xmlns=\"urn:chartbridge:template:1\"/>");
    ChartException e = assertThrows(
        ChartException.class, () -> TemplatedChart.read(chart("template=\"t\"")));
    assertEquals("The template \"t\" cannot be applied: the host has not bound the native method "
        + "of com.tesk.charteditor.template.ApplyTemplate.", e.getMessage());
    assertInstanceOf(UnsatisfiedLinkError.class, e.getCause());
  }

  @Test
  void namesTheTemplateThatIsWrong() throws IOException {
    System.setProperty(TemplateFolders.PROPERTY, folder.toString());
    Files.writeString(folder.resolve("t.xml"),
        "<template xmlns=\"urn:chartbridge:template:1\">\n<style/></template>");
    ChartException e = assertThrows(
        ChartException.class, () -> TemplatedChart.read(chart("template=\"t\"")));
    assertEquals("The template \"t\": line 2, column 1: <style> needs the attribute name",
        e.getMessage());
  }
}
