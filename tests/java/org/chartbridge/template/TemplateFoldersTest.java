// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.template;

import static java.nio.charset.StandardCharsets.UTF_8;
import static org.junit.jupiter.api.Assertions.assertEquals;
import static org.junit.jupiter.api.Assertions.assertThrows;
import static org.junit.jupiter.api.Assertions.assertTrue;

import java.io.File;
import java.io.IOException;
import java.nio.file.Files;
import java.nio.file.Path;
import org.chartbridge.chart.ChartException;
import org.chartbridge.xml.SafeXml;
import org.junit.jupiter.api.AfterEach;
import org.junit.jupiter.api.BeforeEach;
import org.junit.jupiter.api.Test;
import org.junit.jupiter.api.io.TempDir;

class TemplateFoldersTest {
  @TempDir Path first;
  @TempDir Path second;

  @BeforeEach
  void setFolders() {
    System.setProperty(
        TemplateFolders.PROPERTY, first + File.pathSeparator + File.pathSeparator + second);
  }

  @AfterEach
  void clearFolders() {
    System.clearProperty(TemplateFolders.PROPERTY);
  }

  private static String read(String name) {
    return new String(TemplateFolders.read(name), UTF_8);
  }

  private static String failure(String name) {
    return assertThrows(ChartException.class, () -> TemplateFolders.read(name)).getMessage();
  }

  @Test
  void takesTheFirstFolderThatHasIt() throws IOException {
    Files.writeString(second.resolve("a.xml"), "second");
    assertEquals("second", read("a"));
    Files.writeString(first.resolve("a.xml"), "first");
    assertEquals("first", read("a"));
  }

  @Test
  void takesLettersDigitsAndSigns() throws IOException {
    for (String name : new String[] {"a", "A-1", "_x.y", "-", "a..b", "x".repeat(100)}) {
      Files.writeString(first.resolve(name + ".xml"), name);
      assertEquals(name, read(name));
    }
  }

  @Test
  void takesNoOtherNames() throws IOException {
    Files.createDirectory(first.resolve("inner"));
    Files.writeString(first.resolve("inner/a.xml"), "inner");
    Files.writeString(first.resolve(".a.xml"), "hidden");
    for (String name : new String[] {
        "", ".", "..", ".a", "../a", "inner/a", "/etc/a", "a\\b", "a b", "a\u0000", "a\n", "\u00E4",
        "x".repeat(101)}) {
      assertTrue(failure(name).startsWith("The template name \""), name);
    }
  }

  @Test
  void namesTheFoldersWhereItIsNot() {
    assertEquals("The template \"none\" is not there; searched in " + first + ", " + second + ".",
        failure("none"));
    System.clearProperty(TemplateFolders.PROPERTY);
    assertEquals("The template \"none\" is not there; no folder of templates is set (system "
        + "property chartbridge.templates).", failure("none"));
  }

  @Test
  void saysWhyItCannotBeRead() throws IOException {
    Files.createDirectory(first.resolve("folder.xml"));
    assertTrue(failure("folder").startsWith(
        "The template \"folder\" (" + first.resolve("folder.xml") + ") cannot be read: "));
    Files.write(first.resolve("large.xml"), new byte[SafeXml.MAX_BYTES + 1]);
    assertTrue(failure("large").endsWith("has more than " + SafeXml.MAX_BYTES + " bytes."));
  }
}
