// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.document.pdf;

import static org.junit.jupiter.api.Assertions.assertEquals;

import java.io.IOException;
import java.nio.charset.StandardCharsets;
import java.util.List;
import java.util.stream.Stream;

/** Programs that read PDF: a second opinion on what was written. */
final class PdfTool {
  private PdfTool() {}

  /** What the program prints, which must succeed. */
  static String run(Object... command) throws IOException, InterruptedException {
    List<String> words = Stream.of(command).map(Object::toString).toList();
    Process process = new ProcessBuilder(words).redirectErrorStream(true).start();
    String output = new String(process.getInputStream().readAllBytes(), StandardCharsets.UTF_8);
    assertEquals(0, process.waitFor(), words + ": " + output);
    return output;
  }
}
