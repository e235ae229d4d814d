// SPDX-License-Identifier: Apache-2.0
package com.tesk.java_client.ex_access;

import static java.nio.charset.StandardCharsets.UTF_8;
import static org.junit.jupiter.api.Assertions.assertArrayEquals;
import static org.junit.jupiter.api.Assertions.assertEquals;
import static org.junit.jupiter.api.Assertions.assertFalse;
import static org.junit.jupiter.api.Assertions.assertNull;
import static org.junit.jupiter.api.Assertions.assertThrows;
import static org.junit.jupiter.api.Assertions.assertTrue;

import java.io.ByteArrayInputStream;
import java.io.IOException;
import java.lang.reflect.Modifier;
import java.nio.ByteBuffer;
import java.nio.charset.Charset;
import java.nio.file.Files;
import java.nio.file.Path;
import java.util.List;
import java.util.stream.Stream;
import java.util.zip.GZIPInputStream;
import org.chartbridge.chart.ChartException;
import org.chartbridge.document.Documents;
import org.junit.jupiter.api.Test;
import org.junit.jupiter.api.io.TempDir;
import org.junit.jupiter.params.ParameterizedTest;
import org.junit.jupiter.params.provider.CsvSource;
import org.junit.jupiter.params.provider.ValueSource;

class ExKvoAdapterTest {
  private static final String BROKEN_CHART =
      "<chart><description>\ndraw bor: x a</description><data>a\n1\n</data></chart>";

  @TempDir Path folder;

  private final ExKvoAdapter adapter = new ExKvoAdapter(true);

  private static ByteBuffer buffer(String text) {
    byte[] bytes = text.getBytes(UTF_8);
    return ByteBuffer.allocateDirect(bytes.length).put(bytes).flip();
  }

  private static String paragraph(String text) {
    return Documents.xml("<paragraph>" + text + "</paragraph>");
  }

  private boolean create(String xml, String name) {
    return adapter.createOutputDocument(buffer(xml), name);
  }

  private String text(String options) throws IOException {
    Path file = folder.resolve("text.txt");
    Files.deleteIfExists(file);
    String error = adapter.exportOutput("{\"output\":\"" + file + "\"" + options + "}");
    assertTrue(error == null || error.isEmpty(), error);
    return Files.readString(file);
  }

  private List<String> files() throws IOException {
    try (Stream<Path> files = Files.list(folder)) {
      return files.map(file -> file.getFileName().toString()).sorted().toList();
    }
  }

  private String error(org.junit.jupiter.api.function.Executable work) {
    return assertThrows(ChartException.class, work).getMessage();
  }

  @Test
  void hasExactlyTheMethodsThatTheNativeSideCalls() throws Exception {
    Class<?> type = ExKvoAdapter.class;
    assertTrue(Modifier.isPublic(type.getConstructor(boolean.class).getModifiers()));
    assertEquals(String.class, type.getMethod("exportOutput", String.class).getReturnType());
    assertEquals(boolean.class,
        type.getMethod("writeOutputDocumentFile", String.class, int.class, boolean.class)
            .getReturnType());
    assertEquals(boolean.class,
        type.getMethod("createOutputDocument", ByteBuffer.class, String.class).getReturnType());
    for (var method : type.getDeclaredMethods()) {
      assertFalse(
          Modifier.isPublic(method.getModifiers()) && Modifier.isStatic(method.getModifiers()));
    }
  }

  @Test
  void exportsTheNewestDocumentOrTheOneThatIsNamed() throws IOException {
    assertTrue(create(paragraph("first"), "a"));
    assertTrue(create(paragraph("second"), "b"));
    assertEquals("second\n", text(""));
    assertEquals("first\n", text(",\"document\":\"a\""));
    assertTrue(create(paragraph("first again"), "a"));
    assertEquals("first again\n", text(""));
    assertEquals("first again\n", text(",\"document\":\"a\""));
    assertEquals("second\n", text(",\"document\":\"b\""));
  }

  @Test
  void letsDocumentsGo() throws IOException {
    create(paragraph("first"), "a");
    create(paragraph("second"), "b");
    assertEquals("second\n", text(",\"release\":true"));
    assertEquals("first\n", text(",\"release\":true"));
    assertEquals("there is no document; create one first, or name an \"input\"",
        adapter.exportOutput("{\"output\":\"x.txt\"}"));
  }

  @Test
  void keepsTheOldDocumentWhenTheNewOneIsNone() throws IOException {
    create(paragraph("first"), "a");
    assertTrue(error(() -> create("<document", "a")).startsWith("line 1, column "));
    assertEquals("first\n", text(""));
  }

  @Test
  void readsFromPositionToLimitAndLeavesTheBufferAlone() throws IOException {
    ByteBuffer buffer = buffer("xx" + paragraph("here") + "yy");
    buffer.position(2).limit(buffer.capacity() - 2);
    assertTrue(adapter.createOutputDocument(buffer.asReadOnlyBuffer(), "a"));
    assertTrue(adapter.createOutputDocument(buffer, "a"));
    assertEquals(2, buffer.position());
    // The host's memory is its own again.
    buffer.clear();
    for (int i = 0; i < buffer.capacity(); i++) {
      buffer.put(i, (byte) 0);
    }
    assertEquals("here\n", text(""));
  }

  @ParameterizedTest
  @CsvSource({"0,false", "0,true", "1,false", "1,true"})
  void writesTheDocumentInFourForms(int form, boolean pictures) throws IOException {
    create(Documents.everything(), "a");
    Path file = folder.resolve("out.tdoc");
    assertTrue(adapter.writeOutputDocumentFile(file.toString(), form, pictures));
    byte[] bytes = Files.readAllBytes(file);
    boolean compressed = bytes[0] == 0x1F;
    assertEquals(form == 0, compressed);
    byte[] xml = compressed
        ? new GZIPInputStream(new ByteArrayInputStream(bytes)).readAllBytes() : bytes;
    String text = new String(xml, UTF_8);
    assertEquals(pictures, text.contains("<picture "));
    if (!pictures) {
      assertEquals(Documents.everything(), text);
    }
    String direct = text("");
    assertEquals(direct, text(",\"input\":\"" + file + "\""));
    assertTrue(adapter.createOutputDocument(ByteBuffer.wrap(bytes), "again"));
    assertEquals(direct, text(""));
    assertEquals(List.of("out.tdoc", "text.txt"), files());
  }

  @Test
  void saysWhyNoFileIsWritten() throws IOException {
    String path = folder.resolve("out.tdoc").toString();
    assertEquals("there is no document; create one first, or name an \"input\"",
        error(() -> adapter.writeOutputDocumentFile(path, 0, false)));
    create(Documents.xml(BROKEN_CHART), "a");
    assertEquals("there is no document form 2; the forms are 0 compressed, 1 plain XML",
        error(() -> adapter.writeOutputDocumentFile(path, 2, false)));
    assertEquals("The output path is empty.",
        error(() -> adapter.writeOutputDocumentFile("", 0, false)));
    assertTrue(error(() -> adapter.writeOutputDocumentFile(folder + "/no/out", 0, false))
        .contains("does not exist"));
    assertTrue(adapter.writeOutputDocumentFile(path, 1, false));
    byte[] before = Files.readAllBytes(Path.of(path));
    assertTrue(error(() -> adapter.writeOutputDocumentFile(path, 1, true))
        .startsWith("line 2, column 6: "));
    assertArrayEquals(before, Files.readAllBytes(Path.of(path)));
    assertEquals(List.of("out.tdoc"), files());
  }

  @Test
  void saysWhyThereIsNoDocument() {
    assertEquals("the name of the document is empty", error(() -> create("x", "")));
    assertEquals("the name of the document is empty", error(() -> create("x", null)));
    assertEquals("the document is empty", error(() -> create("", "a")));
    assertEquals("the document is empty",
        error(() -> adapter.createOutputDocument(null, "a")));
    assertTrue(error(() -> adapter.createOutputDocument(
        ByteBuffer.allocateDirect((16 << 20) + 1), "a")).startsWith("the document has 16777217"));
    assertTrue(error(() -> create(
        Documents.xml("<image src=\"a.png\"/>"), "a")).contains("cannot refer to files"));
    assertTrue(error(() -> create(Documents.xml("<image src=\"a.png\"/>"), folder + "/d.xml"))
        .endsWith("there is no file \"a.png\""));
  }

  @Test
  void takesFilesOfTheFolderOfItsName() throws IOException {
    String xml = Files.readString(Documents.EXAMPLE);
    assertTrue(create(xml, Documents.EXAMPLE.toAbsolutePath().toString()));
    Path file = folder.resolve("report.xml");
    assertTrue(adapter.writeOutputDocumentFile(file.toString(), 1, false));
    assertFalse(Files.readString(file).contains("src="));
    assertEquals(text(""), text(",\"input\":\"" + file + "\""));
  }

  @ParameterizedTest
  @ValueSource(strings = {"html", "pdf", "odt", "text", "csv"})
  void exportsTheExample(String target) throws IOException {
    Path file = folder.resolve("out." + target);
    assertNull(adapter.exportOutput("{\"input\":\"" + Documents.EXAMPLE + "\",\"to\":\"" + target
        + "\",\"output\":\"" + file + "\"}"));
    assertTrue(Files.size(file) > 200);
    assertEquals(List.of("out." + target), files());
  }

  @Test
  void findsTheExampleSound() {
    assertNull(adapter.exportOutput(
        "{\"input\":\"" + Documents.EXAMPLE + "\",\"to\":\"check\"}"));
  }

  @Test
  void saysAllThatACheckFinds() {
    create("<document xmlns=\"urn:chartbridge:document:1\">\n" + BROKEN_CHART + "\n"
        + Documents.CHART.replace("x region", "x area") + "\n<tree><model>aaaa</model></tree>"
        + "</document>", "a");
    String[] findings = adapter.exportOutput("{\"to\":\"check\"}").split("\n");
    assertEquals(3, findings.length);
    assertTrue(findings[0].startsWith("line 3, column 6: "), findings[0]);
    assertTrue(findings[1].startsWith("line 8, column 13: the chart \"Sales\": "), findings[1]);
    assertTrue(findings[1].contains("area"), findings[1]);
    assertTrue(findings[2].contains(": the tree: "), findings[2]);
  }

  /** The native exporter keeps the last text until another one comes. */
  @Test
  void answersAnEmptyTextAfterAFailure() throws IOException {
    create(paragraph("a"), "a");
    String good = "{\"output\":\"" + folder.resolve("a.txt") + "\"}";
    assertNull(adapter.exportOutput(good));
    assertEquals("there is no document \"b\"",
        adapter.exportOutput("{\"document\":\"b\",\"output\":\"b.txt\"}"));
    assertEquals("", adapter.exportOutput(good));
    assertNull(adapter.exportOutput(good));
  }

  @Test
  void answersWhateverIsAsked() {
    for (String request : new String[] {null, "", "{", "[1]", "{\"output\":\"\\u0000\",\"to\":"
        + "\"pdf\"}", "{\"input\":\"\\u0000\",\"output\":\"a.pdf\"}", "{\"output\":\"\"}"}) {
      String answer = adapter.exportOutput(request);
      assertFalse(answer.isEmpty());
      assertFalse(answer.contains("\n"));
    }
  }

  @ParameterizedTest
  @ValueSource(strings = {"html", "pdf", "odt", "text"})
  void leavesWhatIsThereWhenAnExportFails(String target) throws IOException {
    Path file = folder.resolve("out");
    Files.writeString(file, "before");
    create(Documents.xml(BROKEN_CHART), "a");
    String request = "{\"to\":\"" + target + "\",\"output\":\"" + file + "\"}";
    String error = adapter.exportOutput(request);
    assertTrue(error.startsWith("line 2, column 6: "), error);
    assertEquals("before", Files.readString(file));
    assertEquals(List.of("out"), files());
    String missing = adapter.exportOutput(request.replace("/out\"", "/no/out\""));
    assertTrue(missing.startsWith("line 2"), missing);
    create(paragraph("a"), "a");
    assertTrue(adapter.exportOutput(request.replace("/out\"", "/no/out\""))
        .endsWith("/no\" does not exist."));
  }

  @Test
  void saysWhichInputIsMissing() {
    assertEquals("cannot read \"" + folder.resolve("no.xml") + "\": there is no such file",
        adapter.exportOutput(
            "{\"input\":\"" + folder.resolve("no.xml") + "\",\"output\":\"a.txt\"}"));
    assertEquals("the folder \"/no/folder\" does not exist", adapter.exportOutput("{\"input\":\""
        + Documents.EXAMPLE + "\",\"base\":\"/no/folder\",\"output\":\"a.txt\"}"));
  }

  @Test
  void looksForFilesInTheBaseFolder() throws IOException {
    Path file = folder.resolve("copy.xml");
    Files.copy(Documents.EXAMPLE, file);
    String answer = adapter.exportOutput("{\"input\":\"" + file + "\",\"to\":\"check\"}");
    assertTrue(answer.contains("there is no file \"air.csv\""), answer);
    assertEquals("", adapter.exportOutput("{\"input\":\"" + file + "\",\"base\":\""
        + Documents.EXAMPLE.getParent() + "\",\"to\":\"check\"}"));
  }

  /** In UTF-8 mode text is UTF-8; else it is in the encoding of the machine. */
  @Test
  void writesTextInTheEncodingOfTheHost() throws IOException {
    String xml = paragraph("größer");
    String before = System.getProperty("native.encoding");
    System.setProperty("native.encoding", "ISO-8859-15");
    try {
      for (boolean utf8 : new boolean[] {true, false}) {
        ExKvoAdapter host = new ExKvoAdapter(utf8);
        host.createOutputDocument(buffer(xml), "a");
        Path file = folder.resolve("a.txt");
        assertNull(host.exportOutput("{\"output\":\"" + file + "\"}"));
        Charset expected = utf8 ? UTF_8 : Charset.forName("ISO-8859-15");
        assertEquals("größer\n", new String(Files.readAllBytes(file), expected));
        assertEquals(utf8 ? 9 : 7, Files.size(file));
      }
    } finally {
      System.setProperty("native.encoding", before);
    }
  }
}
