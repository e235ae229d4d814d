// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.tree.pmml;

import static org.junit.jupiter.api.Assertions.assertDoesNotThrow;
import static org.junit.jupiter.api.Assertions.assertEquals;
import static org.junit.jupiter.api.Assertions.assertThrows;
import static org.junit.jupiter.api.Assertions.assertTrue;

import java.io.IOException;
import java.nio.file.Files;
import java.nio.file.Path;
import org.chartbridge.tree.Models;
import org.chartbridge.tree.TreeException;
import org.chartbridge.tree.draw.TreeReader;
import org.junit.jupiter.api.Test;
import org.junit.jupiter.api.io.TempDir;

class SchemaFolderTest {
  @TempDir Path folder;

  private final byte[] good = Models.utf8(Models.document("<Node score=\"A\"><True/></Node>"));
  private final byte[] extra =
      Models.utf8(Models.document("<Node score=\"A\"><True/></Node>")
          .replace("<TreeModel", "<TreeModel x-own=\"1\""));

  private void copySchema(String name) throws IOException {
    Files.copy(Models.SOURCE.resolve("tests/data/pmml/small-pmml.xsd"), folder.resolve(name));
  }

  @Test
  void theSchemaOfTheVersionDecides() throws IOException {
    assertEquals("pmml-4-4.xsd", SchemaFolder.pmmlSchema("4.4"));
    assertEquals("pmml-4-2.xsd", SchemaFolder.pmmlSchema("4.2.1"));
    assertEquals("pmml-4-0.xsd", SchemaFolder.pmmlSchema("4"));
    copySchema("pmml-4-3.xsd");
    TreeReader reader = new TreeReader();
    reader.setSchemaPath(folder.toString());
    assertDoesNotThrow(() -> reader.model(extra));
    copySchema("pmml-4-4.xsd");
    assertDoesNotThrow(() -> reader.model(good));
    String message = assertThrows(TreeException.class, () -> reader.model(extra)).getMessage();
    assertTrue(message.startsWith("PMML document, line 9, column "), message);
    assertTrue(message.contains("not valid by pmml-4-4.xsd")
        && message.contains("Attribute 'x-own' is not allowed"), message);
    byte[] zipped = PmmlBytes.compress(extra);
    assertThrows(TreeException.class, () -> reader.model(zipped));
    reader.setSchemaPath("");
    assertDoesNotThrow(() -> reader.model(extra));
    reader.setSchemaPath(folder.toString());
    reader.setSchemaPath(null);
    assertDoesNotThrow(() -> reader.model(extra));
  }

  @Test
  void displayDataAreCheckedToo() throws IOException {
    TreeReader reader = new TreeReader();
    byte[] display = Models.utf8("<tree-display xmlns=\"urn:chartbridge:tree-display:1\"/>");
    Files.writeString(folder.resolve("tree-display.xsd"),
        "<xs:schema xmlns:xs=\"http://www.w3.org/2001/XMLSchema\"/>");
    assertDoesNotThrow(() -> reader.display(display));
    reader.setSchemaPath(folder.toString());
    String message = assertThrows(TreeException.class, () -> reader.display(display)).getMessage();
    assertTrue(message.startsWith("Display data, line 1, column "), message);
  }

  @Test
  void aFolderThatIsNoneIsRefusedAndTheOldOneStays() throws IOException {
    copySchema("pmml-4-4.xsd");
    TreeReader reader = new TreeReader();
    reader.setSchemaPath(folder.toString());
    String missing = folder.resolve("missing").toString();
    assertEquals("The schema path \"" + missing + "\" is no folder.",
        assertThrows(TreeException.class, () -> reader.setSchemaPath(missing)).getMessage());
    assertThrows(TreeException.class, () -> reader.model(extra));
    assertThrows(TreeException.class, () -> reader.setSchemaPath("a\0b"));
  }

  @Test
  void aSchemaIsReadAgainWhenItChanges() throws IOException {
    TreeReader reader = new TreeReader();
    reader.setSchemaPath(folder.toString());
    Path schema = folder.resolve("pmml-4-4.xsd");
    Files.writeString(schema, "<xs:schema");
    String message = assertThrows(TreeException.class, () -> reader.model(good)).getMessage();
    assertTrue(message.startsWith("The schema \"" + schema + "\" cannot be used: "), message);
    Files.delete(schema);
    copySchema("pmml-4-4.xsd");
    assertDoesNotThrow(() -> reader.model(good));
    // Another schema under the same name, by which the same document is not valid.
    Files.writeString(schema, "<xs:schema xmlns:xs=\"http://www.w3.org/2001/XMLSchema\"/>");
    String changed = assertThrows(TreeException.class, () -> reader.model(good)).getMessage();
    assertTrue(changed.contains("not valid by pmml-4-4.xsd"), changed);
  }
}
