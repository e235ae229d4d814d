// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.image;

import static java.nio.charset.StandardCharsets.UTF_8;
import static org.junit.jupiter.api.Assertions.assertEquals;
import static org.junit.jupiter.api.Assertions.assertTrue;

import java.io.BufferedReader;
import java.io.IOException;
import java.nio.file.Files;
import java.nio.file.Path;
import java.util.List;
import java.util.concurrent.TimeUnit;
import java.util.stream.Collectors;
import java.util.stream.Stream;
import org.junit.jupiter.api.AfterEach;
import org.junit.jupiter.api.BeforeEach;
import org.junit.jupiter.api.Test;
import org.junit.jupiter.api.io.TempDir;

/** What a JVM that ends in the middle of writing files leaves of them. */
class UnfinishedFilesTest {
  private static final int SIGTERM = 15;

  @TempDir Path folder;
  private Process program;
  private BufferedReader output;

  @BeforeEach
  void runUntilFilesAreStaged() throws IOException {
    Files.writeString(folder.resolve("first"), "old");
    program = new ProcessBuilder(Path.of(System.getProperty("java.home"), "bin", "java").toString(),
        "-Xshare:auto", "-classpath", System.getProperty("java.class.path"),
        WritingProgram.class.getName(), folder.toString())
                  .redirectError(ProcessBuilder.Redirect.INHERIT)
                  .start();
    output = program.inputReader(UTF_8);
    assertEquals("staged", output.readLine());
    assertEquals(List.of("first", "made"), names(folder).stream()
        .filter(name -> !name.endsWith(".part")).collect(Collectors.toList()));
    assertEquals(4, names(folder).size() + names(folder.resolve("made")).size());
  }

  @AfterEach
  void end() {
    program.destroyForcibly();
  }

  private static List<String> names(Path folder) throws IOException {
    try (Stream<Path> files = Files.list(folder)) {
      return files.map(file -> file.getFileName().toString()).sorted().collect(Collectors.toList());
    }
  }

  private void assertNothingIsLeft(int exitCode) throws Exception {
    assertTrue(program.waitFor(60, TimeUnit.SECONDS));
    assertEquals(exitCode, program.exitValue());
    assertEquals(List.of("first"), names(folder));
    assertEquals("old", Files.readString(folder.resolve("first")));
  }

  @Test
  void aSignalLeavesNothing() throws Exception {
    program.toHandle().destroy();
    assertNothingIsLeft(128 + SIGTERM);
  }

  @Test
  void anExitLeavesNothingAndNothingNewBegins() throws Exception {
    program.outputWriter(UTF_8).append("exit\n").flush();
    assertEquals("Cannot write files: Java is ending.", output.readLine());
    assertNothingIsLeft(7);
  }
}
