// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.image;

import static java.nio.charset.StandardCharsets.UTF_8;

import java.io.IOException;
import java.nio.file.Files;
import java.nio.file.Path;
import java.util.concurrent.CountDownLatch;
import java.util.concurrent.TimeUnit;
import org.chartbridge.chart.ChartException;

/**
 * A program that stays in the middle of writing two files until it is ended, or told to end by a
 * line of input.
 */
final class WritingProgram {
  private static final int PATIENCE_SECONDS = 60;
  private static final CountDownLatch TRIED = new CountDownLatch(1);

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
        awaitRemovalOf(made);
        tryToWriteMore(folder);
        TRIED.countDown();
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
    // Keeps the JVM from being gone before the file operations below were tried.
    Runtime.getRuntime().addShutdownHook(new Thread(WritingProgram::awaitTrial));
    new Thread(() -> System.exit(7)).start();
  }

  private static void awaitTrial() {
    try {
      TRIED.await(PATIENCE_SECONDS, TimeUnit.SECONDS);
    } catch (InterruptedException e) {
      throw new IllegalStateException(e);
    }
  }

  /** Unfinished files go as the JVM begins to end. */
  private static void awaitRemovalOf(Path folder) {
    for (int i = 0; i < 100 * PATIENCE_SECONDS && Files.exists(folder); i++) {
      pause(10);
    }
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
