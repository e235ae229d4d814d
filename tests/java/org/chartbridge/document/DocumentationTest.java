// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.document;

import static org.junit.jupiter.api.Assertions.assertEquals;
import static org.junit.jupiter.api.Assertions.assertTrue;

import com.fasterxml.jackson.databind.JsonNode;
import com.fasterxml.jackson.databind.ObjectMapper;
import java.io.IOException;
import java.nio.file.Files;
import java.nio.file.Path;
import java.util.ArrayList;
import java.util.List;
import java.util.TreeSet;
import java.util.regex.Matcher;
import java.util.regex.Pattern;
import org.chartbridge.document.export.RequestReader;
import org.junit.jupiter.api.Test;
import org.junit.jupiter.api.io.TempDir;
import org.junit.jupiter.params.ParameterizedTest;
import org.junit.jupiter.params.provider.ValueSource;

/** What the documentation says of documents holds. */
class DocumentationTest {
  @TempDir Path folder;

  private static String page() throws IOException {
    return Files.readString(Documents.SOURCE.resolve("docs/documents.md"));
  }

  private static String block(String language) throws IOException {
    Matcher block =
        Pattern.compile("```" + language + "\n(.*?)```", Pattern.DOTALL).matcher(page());
    assertTrue(block.find());
    return block.group(1);
  }

  @ParameterizedTest
  @ValueSource(strings = {"html", "pdf", "odt", "csv", "txt"})
  void exportsTheExample(String ending) throws IOException {
    Path file = folder.resolve("example." + ending);
    Documents.export(block("xml"), file, "");
    assertTrue(Files.size(file) > 40);
  }

  @Test
  void readsTheRequest() throws IOException {
    assertEquals("de", RequestReader.read(block("json")).language().toLanguageTag());
  }

  @Test
  void namesAllOptionsOfARequest() throws IOException {
    JsonNode schema = new ObjectMapper().readTree(
        Documents.SOURCE.resolve("docs/document-request.schema.json").toFile());
    List<String> inSchema = new ArrayList<>();
    schema.get("properties").fieldNames().forEachRemaining(inSchema::add);

    String section =
        page().substring(page().indexOf("## Requests"), page().indexOf("## What comes"));
    List<String> onPage = new ArrayList<>();
    Matcher row = Pattern.compile("(?m)^\\| `([a-z]+)` \\|").matcher(section);
    while (row.find()) {
      onPage.add(row.group(1));
    }
    assertEquals(new TreeSet<>(inSchema), new TreeSet<>(onPage));

    String expected = org.junit.jupiter.api.Assertions.assertThrows(
        org.chartbridge.chart.ChartException.class, () -> RequestReader.read("{\"zzzzzzzz\":1}"))
            .getMessage();
    String names = expected.substring(expected.indexOf("one of ") + 7);
    assertEquals(new TreeSet<>(inSchema), new TreeSet<>(List.of(names.split(", "))));
  }
}
