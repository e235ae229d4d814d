// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.image;

import static java.nio.charset.StandardCharsets.UTF_8;

import java.io.IOException;
import java.nio.file.Path;
import org.chartbridge.chart.ChartException;

/**
 * A program that stays in the middle of writing two files until it is ended, or told to end by a
 * line of input.
 */
final class WritingProgram {
  private WritingProgram() {}

  public static void main(String[] arguments) {
    Path folder = Path.of(arguments[0]);
    try (OutputFiles files = new OutputFiles()) {
      Path made = folder.resolve("made");
      files.makeFolder(made);
      files.stage(made.resolve("second"), out -> out.write("new".getBytes(UTF_8)));
      files.stage(folder.resolve("first"), out -> {
        out.write("ne".getBytes(UTF_8));
        out.flush();
        System.out.println("staged");
        awaitLine();
        exitAside();
        tryToWriteMore(folder);
      });
    }
  }

  private static void awaitLine() throws IOException {
    while (System.in.read() != '\n') {
      continue;
    }
  }

  /** The thread that asks for the end waits for it forever, so it is another one. */
  private static void exitAside() {
    Thread exit = new Thread(() -> System.exit(7));
    // Keeps the JVM from being gone before the file operations below were tried.
    Runtime.getRuntime().addShutdownHook(new Thread(() -> pause(1000)));
    exit.start();
    pause(500);
  }

  private static void tryToWriteMore(Path folder) {
    try {
      OutputFiles.write(folder.resolve("third"), out -> out.write(1));
    } catch (ChartException e) {
      System.out.println(e.getMessage());
    }
  }

  private static void pause(long milliseconds) {
    try {
      Thread.sleep(milliseconds);
    } catch (InterruptedException e) {
      throw new IllegalStateException(e);
    }
  }
}
