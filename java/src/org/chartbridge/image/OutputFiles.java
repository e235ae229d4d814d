// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.image;

import java.io.IOException;
import java.io.OutputStream;
import java.nio.file.AccessDeniedException;
import java.nio.file.FileSystemException;
import java.nio.file.Files;
import java.nio.file.InvalidPathException;
import java.nio.file.Path;
import java.nio.file.StandardCopyOption;
import java.nio.file.StandardOpenOption;
import java.util.ArrayList;
import java.util.HexFormat;
import java.util.List;
import java.util.concurrent.ThreadLocalRandom;
import org.chartbridge.chart.ChartException;

/**
 * Files that appear whole or not at all. Each is written under a passing name in the folder of its
 * target and renamed when all of them are complete; until then a reader sees what was there before.
 * A target that is no regular file, such as a pipe or
 * {@code /dev/null}, is written directly.
 */
public final class OutputFiles implements AutoCloseable {
  /** Writes the bytes of one file; the stream is closed by the caller. */
  @FunctionalInterface
  public interface Content {
    void writeTo(OutputStream out) throws IOException;
  }

  private record Staged(Path passing, Path target) {}

  private final List<Staged> staged = new ArrayList<>();

  /** Writes one file. */
  public static void write(Path target, Content content) {
    try (OutputFiles files = new OutputFiles()) {
      files.stage(target, content);
      files.commit();
    }
  }

  /**
   * Reads a path as a host gives it.
   *
   * @throws ChartException when it is empty or none
   */
  public static Path path(String text) {
    if (text == null || text.isEmpty()) {
      throw new ChartException("The output path is empty.");
    }
    try {
      return Path.of(text);
    } catch (InvalidPathException e) {
      throw new ChartException("The output path is invalid: " + e.getReason() + ".", e);
    }
  }

  /**
   * Writes a file that appears at {@link #commit}.
   *
   * @throws ChartException when that is impossible; the message names the file and the reason
   */
  public void stage(Path target, Content content) {
    Path file = resolved(target);
    check(file, target);
    try {
      if (Files.exists(file) && !Files.isRegularFile(file)) {
        try (OutputStream out = Files.newOutputStream(file, StandardOpenOption.WRITE)) {
          content.writeTo(out);
        }
        return;
      }
      Path passing = passingName(file);
      try (OutputStream out = Files.newOutputStream(
               passing, StandardOpenOption.CREATE_NEW, StandardOpenOption.WRITE)) {
        staged.add(new Staged(passing, file));
        content.writeTo(out);
      }
    } catch (IOException e) {
      throw cannotWrite(target, e);
    }
  }

  /** Puts all staged files in place. */
  public void commit() {
    while (!staged.isEmpty()) {
      Staged next = staged.get(0);
      try {
        Files.move(next.passing(), next.target(), StandardCopyOption.ATOMIC_MOVE,
            StandardCopyOption.REPLACE_EXISTING);
      } catch (IOException e) {
        throw cannotWrite(next.target(), e);
      }
      staged.remove(0);
    }
  }

  /** Removes what was staged and not committed. */
  @Override
  public void close() {
    for (Staged left : staged) {
      // Whether this works or not, the failure that led here is the one to tell.
      left.passing().toFile().delete();
    }
    staged.clear();
  }

  /** A symbolic link stays; what it points at is replaced. */
  private static Path resolved(Path target) {
    try {
      return Files.isSymbolicLink(target) && Files.exists(target) ? target.toRealPath() : target;
    } catch (IOException e) {
      return target;
    }
  }

  private static void check(Path file, Path target) {
    if (Files.isDirectory(file)) {
      throw cannotWrite(target, "it is a folder");
    }
    Path folder = file.toAbsolutePath().getParent();
    if (folder == null || !Files.exists(folder)) {
      throw cannotWrite(target, "the folder \"" + folder + "\" does not exist");
    }
    if (!Files.isDirectory(folder)) {
      throw cannotWrite(target, "\"" + folder + "\" is not a folder");
    }
    if (Files.exists(file) && !Files.isWritable(file)) {
      throw cannotWrite(target, "it is write-protected");
    }
  }

  private static Path passingName(Path file) {
    String random = HexFormat.of().toHexDigits(ThreadLocalRandom.current().nextLong());
    return file.resolveSibling(".chart-" + random + ".part");
  }

  private static ChartException cannotWrite(Path target, IOException e) {
    String reason = e.getMessage();
    if (e instanceof AccessDeniedException) {
      reason = "no permission to write into its folder";
    } else if (e instanceof FileSystemException failure) {
      // Its message would be the name under which the file is written.
      boolean known = failure.getReason() != null;
      reason = known ? failure.getReason() : "its folder takes no files";
    }
    ChartException error = cannotWrite(target, reason);
    error.initCause(e);
    return error;
  }

  private static ChartException cannotWrite(Path target, String reason) {
    return new ChartException("Cannot write \"" + target + "\": " + reason + ".");
  }
}
