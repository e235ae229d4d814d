// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.image;

import static org.junit.jupiter.api.Assertions.assertEquals;
import static org.junit.jupiter.api.Assertions.assertTrue;

import java.io.IOException;
import java.nio.file.Files;
import java.nio.file.Path;
import java.util.List;
import java.util.stream.Stream;
import org.junit.jupiter.api.Test;
import org.junit.jupiter.api.io.TempDir;

/** No output needs the temporary folder or leaves files elsewhere, and no library logs anything. */
class TemporaryFolderTest {
  @TempDir Path folder;

  private void writesEverything(Path temporary) throws IOException, InterruptedException {
    Path out = Files.createDirectory(folder.resolve("out"));
    Path home = Files.createDirectory(folder.resolve("home"));
    Process process = new ProcessBuilder(
        Path.of(System.getProperty("java.home"), "bin", "java").toString(),
        "-Djava.io.tmpdir=" + temporary, "-Duser.home=" + home, "-XX:-UsePerfData",
        "-Dchartbridge.source=" + System.getProperty("chartbridge.source"),
        "-cp", System.getProperty("java.class.path"), EveryOutput.class.getName(), out.toString())
        .redirectErrorStream(true).start();
    String printed = new String(process.getInputStream().readAllBytes());
    assertEquals("", printed);
    assertEquals(0, process.waitFor());
    try (Stream<Path> files = Files.list(out)) {
      // Besides the pictures the two maps of the charts and trees, and what was put there.
      assertTrue(files.count() > 30);
    }
    assertEquals(List.of(), files(home));
  }

  private static List<Path> files(Path folder) throws IOException {
    try (Stream<Path> files = Files.walk(folder)) {
      // The JDK itself keeps a list of fonts there, as long as it may.
      return files.filter(file -> Files.isRegularFile(file) && !file.toString().contains("/.java/"))
          .toList();
    }
  }

  @Test
  void aFolderThatIsNotThere() throws IOException, InterruptedException {
    writesEverything(folder.resolve("nowhere"));
  }

  @Test
  void aFileInstead() throws IOException, InterruptedException {
    writesEverything(Files.writeString(folder.resolve("file"), "x"));
  }

  @Test
  void aFolderThatStaysEmpty() throws IOException, InterruptedException {
    Path temporary = Files.createDirectory(folder.resolve("temporary"));
    writesEverything(temporary);
    assertEquals(List.of(), files(temporary));
  }
}
