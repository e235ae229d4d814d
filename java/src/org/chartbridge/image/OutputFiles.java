// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.image;

import java.io.IOException;
import java.io.OutputStream;
import java.nio.file.AccessDeniedException;
import java.nio.file.FileSystemException;
import java.nio.file.Files;
import java.nio.file.InvalidPathException;
import java.nio.file.Path;
import java.nio.file.StandardOpenOption;
import java.util.ArrayDeque;
import java.util.ArrayList;
import java.util.Deque;
import java.util.List;
import org.chartbridge.chart.ChartException;

/**
 * Files that appear whole or not at all. Each is written under a passing name in the folder of its
 * target and renamed when all of them are complete; until then a reader sees what was there before.
 * When one of them cannot be put in place, those before it are taken back: all appear, or none. A
 * JVM that ends in order meanwhile leaves nothing of them either.
 *
 * <p>A target that is no regular file, such as a pipe or {@code /dev/null}, is written directly.
 *
 * <p>An object is for one thread.
 */
public final class OutputFiles implements AutoCloseable {
  /** Writes the bytes of one file; the stream is closed by the caller. */
  @FunctionalInterface
  public interface Content {
    void writeTo(OutputStream out) throws IOException;
  }

  /** As many as Linux follows. */
  private static final int MAX_LINKS = 40;

  private final List<StagedFile> staged = new ArrayList<>();
  private final Deque<Path> madeFolders = new ArrayDeque<>();

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
      try (OutputStream out = newStaged(file)) {
        content.writeTo(out);
      }
    } catch (IOException e) {
      throw cannotWrite(target, e);
    }
  }

  private OutputStream newStaged(Path target) throws IOException {
    StagedFile file = new StagedFile(target);
    synchronized (UnfinishedFiles.LOCK) {
      UnfinishedFiles.add(this);
      OutputStream out = Files.newOutputStream(
          file.passing(), StandardOpenOption.CREATE_NEW, StandardOpenOption.WRITE);
      staged.add(file);
      return out;
    }
  }

  /**
   * Makes a folder, and those above it, where they are missing; they go away again unless the files
   * are committed.
   *
   * @throws ChartException when that is impossible; the message names the folder and the reason
   */
  public void makeFolder(Path folder) {
    synchronized (UnfinishedFiles.LOCK) {
      UnfinishedFiles.add(this);
      makeFolder(resolved(folder).toAbsolutePath(), folder);
    }
  }

  private void makeFolder(Path path, Path named) {
    if (Files.isDirectory(path)) {
      return;
    }
    if (path.getParent() != null) {
      makeFolder(path.getParent(), named);
    }
    try {
      Files.createDirectory(path);
      madeFolders.push(path);
    } catch (IOException e) {
      String reason = Files.exists(path)
          ? "\"" + path + "\" is no folder" : "\"" + path + "\" cannot be made";
      throw new ChartException("Cannot write into \"" + named + "\": " + reason + ".", e);
    }
  }

  /**
   * Puts all staged files in place.
   *
   * @throws ChartException when one of them cannot be; all targets are then what they were before
   */
  public void commit() {
    synchronized (UnfinishedFiles.LOCK) {
      UnfinishedFiles.check();
      int last = staged.size() - 1;
      for (int i = 0; i <= last; i++) {
        putInPlace(i, i < last);
      }
      for (StagedFile file : staged) {
        file.forgetOld();
      }
      staged.clear();
      madeFolders.clear();
    }
  }

  /** Nothing comes after the last file that could fail, so it needs no way back. */
  private void putInPlace(int index, boolean othersFollow) {
    StagedFile file = staged.get(index);
    try {
      if (othersFollow) {
        file.keepOld();
      }
      file.putInPlace();
    } catch (IOException e) {
      ChartException failure = cannotWrite(file.target(), e);
      undo(index, failure);
      throw failure;
    }
  }

  private void undo(int last, ChartException failure) {
    for (int i = last; i >= 0; i--) {
      try {
        staged.get(i).undo();
      } catch (IOException e) {
        failure.addSuppressed(e);
      }
    }
  }

  /** Removes what was staged, and the folders made for it, unless it was committed. */
  @Override
  public void close() {
    synchronized (UnfinishedFiles.LOCK) {
      discard();
      UnfinishedFiles.remove(this);
    }
  }

  /** The caller holds the lock of {@link UnfinishedFiles}. */
  void discard() {
    for (StagedFile file : staged) {
      file.discard();
    }
    staged.clear();
    for (Path folder : madeFolders) {
      // Where something else was put there in the meantime, it stays.
      folder.toFile().delete();
    }
    madeFolders.clear();
  }

  /** A symbolic link stays; what it points at is replaced, or made where it is not there yet. */
  private static Path resolved(Path target) {
    Path file = target;
    try {
      for (int links = 0; Files.isSymbolicLink(file); links++) {
        if (links == MAX_LINKS) {
          throw cannotWrite(target, "its symbolic links lead in a circle");
        }
        // From the link's own folder, unless it is a full path. Nothing is shortened: in front of
        // ".." there may be another link.
        file = file.resolveSibling(Files.readSymbolicLink(file));
      }
    } catch (IOException e) {
      throw cannotWrite(target, e);
    }
    return file;
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
