// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.image;

import static java.nio.charset.StandardCharsets.UTF_8;
import static org.junit.jupiter.api.Assertions.assertEquals;
import static org.junit.jupiter.api.Assertions.assertFalse;
import static org.junit.jupiter.api.Assertions.assertSame;
import static org.junit.jupiter.api.Assertions.assertThrows;
import static org.junit.jupiter.api.Assertions.assertTrue;
import static org.junit.jupiter.api.Assumptions.assumeTrue;

import java.io.IOException;
import java.nio.file.Files;
import java.nio.file.Path;
import java.nio.file.attribute.FileTime;
import java.util.List;
import java.util.stream.Collectors;
import java.util.stream.Stream;
import org.chartbridge.chart.ChartException;
import org.junit.jupiter.api.Test;
import org.junit.jupiter.api.io.TempDir;

class OutputFilesTest {
  @TempDir Path folder;

  private static OutputFiles.Content text(String text) {
    return out -> out.write(text.getBytes(UTF_8));
  }

  private static String error(Path target) {
    return assertThrows(ChartException.class, () -> OutputFiles.write(target, text("new")))
        .getMessage();
  }

  private List<String> files() throws IOException {
    try (Stream<Path> files = Files.list(folder)) {
      return files.map(file -> file.getFileName().toString()).sorted().collect(Collectors.toList());
    }
  }

  @Test
  void writesAndReplaces() throws IOException {
    Path file = folder.resolve("a b.png");
    OutputFiles.write(file, text("one"));
    assertEquals("one", Files.readString(file));
    OutputFiles.write(file, text("two"));
    assertEquals("two", Files.readString(file));
    assertEquals(List.of("a b.png"), files());
  }

  @Test
  void hasThePermissionsOfAnyNewFile() throws IOException {
    Path file = folder.resolve("a.png");
    OutputFiles.write(file, text("one"));
    Path other = Files.writeString(folder.resolve("other"), "x");
    assertEquals(Files.getPosixFilePermissions(other), Files.getPosixFilePermissions(file));
  }

  @Test
  void aFailureHalfWayLeavesEverythingAsItWas() throws IOException {
    Path file = Files.writeString(folder.resolve("a.png"), "old");
    ChartException failure = new ChartException("half way");
    assertSame(failure, assertThrows(ChartException.class, () -> OutputFiles.write(file, out -> {
      out.write(new byte[100_000]);
      out.flush();
      assertEquals("old", Files.readString(file));
      throw failure;
    })));
    assertEquals("old", Files.readString(file));
    assertEquals(List.of("a.png"), files());
    ChartException e = assertThrows(ChartException.class,
        () -> OutputFiles.write(file, out -> { throw new IOException("the disk is on fire"); }));
    assertEquals("Cannot write \"" + file + "\": the disk is on fire.", e.getMessage());
    assertThrows(OutOfMemoryError.class,
        () -> OutputFiles.write(file, out -> { throw new OutOfMemoryError("test"); }));
    assertEquals(List.of("a.png"), files());
  }

  @Test
  void severalFilesAppearTogether() throws IOException {
    Path first = folder.resolve("a");
    Path second = folder.resolve("b");
    try (OutputFiles files = new OutputFiles()) {
      files.stage(first, text("1"));
      files.stage(second, text("2"));
      assertFalse(Files.exists(first) || Files.exists(second));
      files.commit();
    }
    assertEquals("1", Files.readString(first));
    assertEquals("2", Files.readString(second));
    assertThrows(ChartException.class, () -> {
      try (OutputFiles files = new OutputFiles()) {
        files.stage(folder.resolve("c"), text("3"));
        files.stage(folder.resolve("missing/d"), text("4"));
        files.commit();
      }
    });
    assertEquals(List.of("a", "b"), files());
  }

  /** The last of three cannot be put in place, because a folder has come to be there. */
  private String failingCommit() throws IOException {
    Path blocked = folder.resolve("c");
    try (OutputFiles files = new OutputFiles()) {
      files.stage(folder.resolve("a"), text("new a"));
      files.stage(folder.resolve("b"), text("new b"));
      files.stage(blocked, text("new c"));
      Files.createDirectory(blocked);
      Files.writeString(blocked.resolve("content"), "x");
      return assertThrows(ChartException.class, files::commit).getMessage();
    }
  }

  @Test
  void whenOneCannotBePutInPlaceThoseBeforeItAreTakenBack() throws IOException {
    Path old = Files.writeString(folder.resolve("a"), "old a");
    FileTime time = FileTime.fromMillis(1_000_000_000_000L);
    Files.setLastModifiedTime(old, time);
    String message = failingCommit();
    assertTrue(message.startsWith("Cannot write \"" + folder.resolve("c") + "\": "), message);
    assertEquals("old a", Files.readString(old));
    assertEquals(time, Files.getLastModifiedTime(old));
    assertEquals(List.of("a", "c"), files());
    assertEquals("x", Files.readString(folder.resolve("c/content")));
  }

  @Test
  void theOneInTheMiddleToo() throws IOException {
    Files.writeString(folder.resolve("a"), "old a");
    Files.writeString(folder.resolve("z"), "old z");
    try (OutputFiles files = new OutputFiles()) {
      files.stage(folder.resolve("a"), text("new a"));
      files.stage(folder.resolve("b"), text("new b"));
      files.stage(folder.resolve("z"), text("new z"));
      Files.createDirectories(folder.resolve("b/content"));
      assertThrows(ChartException.class, files::commit);
      assertEquals("old a", Files.readString(folder.resolve("a")));
    }
    assertEquals("old z", Files.readString(folder.resolve("z")));
    assertEquals(List.of("a", "b", "z"), files());
  }

  @Test
  void replacingSeveralLeavesNothingOfTheOldOnes() throws IOException {
    Files.writeString(folder.resolve("a"), "old a");
    Files.writeString(folder.resolve("b"), "old b");
    try (OutputFiles files = new OutputFiles()) {
      files.stage(folder.resolve("a"), text("new a"));
      files.stage(folder.resolve("b"), text("new b"));
      files.commit();
    }
    assertEquals("new a", Files.readString(folder.resolve("a")));
    assertEquals("new b", Files.readString(folder.resolve("b")));
    assertEquals(List.of("a", "b"), files());
  }

  @Test
  void foldersThatWereMadeGoWithFilesThatFail() throws IOException {
    Path made = folder.resolve("x/y");
    try (OutputFiles files = new OutputFiles()) {
      files.makeFolder(made);
      files.stage(made.resolve("a"), text("1"));
      assertTrue(Files.isDirectory(made));
    }
    assertEquals(List.of(), files());
    try (OutputFiles files = new OutputFiles()) {
      files.makeFolder(made);
      files.stage(made.resolve("a"), text("1"));
      files.commit();
    }
    assertEquals("1", Files.readString(made.resolve("a")));
  }

  @Test
  void aFolderThatDoesNotExist() {
    Path target = folder.resolve("none/here/a.png");
    assertEquals("Cannot write \"" + target + "\": the folder \"" + folder.resolve("none/here")
            + "\" does not exist.",
        error(target));
  }

  @Test
  void aFolderThatIsAFile() throws IOException {
    Path file = Files.writeString(folder.resolve("file"), "x");
    assertEquals(
        "Cannot write \"" + file.resolve("a.png") + "\": \"" + file + "\" is not a folder.",
        error(file.resolve("a.png")));
  }

  @Test
  void aTargetThatIsAFolder() throws IOException {
    Path target = Files.createDirectory(folder.resolve("a.png"));
    assertEquals("Cannot write \"" + target + "\": it is a folder.", error(target));
    assertEquals(List.of("a.png"), files());
  }

  @Test
  void anEmptyOrImpossiblePath() {
    assertEquals("The output path is empty.",
        assertThrows(ChartException.class, () -> OutputFiles.path("")).getMessage());
    assertEquals("The output path is empty.",
        assertThrows(ChartException.class, () -> OutputFiles.path(null)).getMessage());
    assertEquals("The output path is invalid: Nul character not allowed.",
        assertThrows(ChartException.class, () -> OutputFiles.path("a\0b")).getMessage());
  }

  @Test
  void aFolderWithoutPermission() throws IOException {
    Files.createDirectory(folder.resolve("closed"));
    assertTrue(folder.resolve("closed").toFile().setWritable(false, false));
    assumeTrue(!Files.isWritable(folder.resolve("closed")), "the superuser may write everywhere");
    Path target = folder.resolve("closed/a.png");
    assertEquals(
        "Cannot write \"" + target + "\": no permission to write into its folder.", error(target));
  }

  @Test
  void aWriteProtectedFile() throws IOException {
    Path target = Files.writeString(folder.resolve("a.png"), "old");
    assertTrue(target.toFile().setWritable(false, false));
    assumeTrue(!Files.isWritable(target), "the superuser may write everything");
    assertEquals("Cannot write \"" + target + "\": it is write-protected.", error(target));
  }

  /** Not even the superuser can make a file there. */
  @Test
  void aFolderThatTakesNoFiles() {
    Path target = Path.of("/proc/a.png");
    assumeTrue(Files.isDirectory(target.getParent()));
    assertEquals("Cannot write \"/proc/a.png\": its folder takes no files.", error(target));
  }

  @Test
  void aFullDisk() {
    Path full = Path.of("/dev/full");
    assumeTrue(Files.isWritable(full));
    assertEquals("Cannot write \"/dev/full\": No space left on device.", error(full));
  }

  @Test
  void whatIsNoRegularFileIsWrittenDirectly() throws IOException {
    Path device = Path.of("/dev/null");
    assumeTrue(Files.isWritable(device));
    OutputFiles.write(device, text("gone"));
    assertFalse(Files.isRegularFile(device));
  }

  @Test
  void aSymbolicLinkStaysAndItsTargetIsReplaced() throws IOException {
    Path real = Files.writeString(folder.resolve("real"), "old");
    Path link = Files.createSymbolicLink(folder.resolve("link"), real);
    OutputFiles.write(link, text("new"));
    assertTrue(Files.isSymbolicLink(link));
    assertEquals("new", Files.readString(real));
  }

  @Test
  void whatASymbolicLinkPointsAtIsMadeWhereItIsNotThereYet() throws IOException {
    Files.createDirectory(folder.resolve("far"));
    Path link = Files.createSymbolicLink(folder.resolve("link"), Path.of("far/away"));
    Files.createSymbolicLink(folder.resolve("far/away"), Path.of("../real"));
    Path first = Files.createSymbolicLink(folder.resolve("first"), link);
    OutputFiles.write(first, text("new"));
    assertEquals("new", Files.readString(folder.resolve("real")));
    assertEquals(List.of("far", "first", "link", "real"), files());
    for (String name : List.of("first", "link", "far/away")) {
      assertTrue(Files.isSymbolicLink(folder.resolve(name)), name);
    }
  }

  @Test
  void theWayOfALinkIsThatOfTheSystem() throws IOException {
    Files.createDirectories(folder.resolve("a/b"));
    Files.createSymbolicLink(folder.resolve("short"), Path.of("a/b"));
    // Above the folder that "short" points at, and not above "short".
    Path link = Files.createSymbolicLink(folder.resolve("link"), Path.of("short/../real"));
    OutputFiles.write(link, text("new"));
    assertEquals("new", Files.readString(folder.resolve("a/real")));
  }

  @Test
  void aSymbolicLinkThatLeadsNowhere() throws IOException {
    Path self = Files.createSymbolicLink(folder.resolve("self"), Path.of("self"));
    assertEquals(
        "Cannot write \"" + self + "\": its symbolic links lead in a circle.", error(self));
    Path link = Files.createSymbolicLink(folder.resolve("link"), Path.of("none/real"));
    assertEquals("Cannot write \"" + link + "\": the folder \"" + folder.resolve("none")
        + "\" does not exist.", error(link));
    Files.createDirectory(folder.resolve("folder"));
    Path other = Files.createSymbolicLink(folder.resolve("other"), Path.of("folder"));
    assertEquals("Cannot write \"" + other + "\": it is a folder.", error(other));
    assertEquals(List.of("folder", "link", "other", "self"), files());
  }

  @Test
  void aFolderIsMadeWhereItsLinkLeads() throws IOException {
    Path link = Files.createSymbolicLink(folder.resolve("link"), Path.of("real"));
    try (OutputFiles files = new OutputFiles()) {
      files.makeFolder(link);
      files.stage(link.resolve("a"), text("new"));
      files.commit();
    }
    assertEquals("new", Files.readString(folder.resolve("real/a")));
    assertTrue(Files.isSymbolicLink(link));
  }

  @Test
  void aSetOfFilesGoesThroughItsLinks() throws IOException {
    Files.createSymbolicLink(folder.resolve("a"), Path.of("real a"));
    Files.writeString(folder.resolve("real b"), "old");
    Files.createSymbolicLink(folder.resolve("b"), Path.of("real b"));
    try (OutputFiles files = new OutputFiles()) {
      files.stage(folder.resolve("a"), text("new a"));
      files.stage(folder.resolve("b"), text("new b"));
      files.commit();
    }
    assertEquals("new a", Files.readString(folder.resolve("real a")));
    assertEquals("new b", Files.readString(folder.resolve("real b")));
    assertEquals(List.of("a", "b", "real a", "real b"), files());
  }

  @Test
  void theLongestNameThereCanBe() throws IOException {
    Path file = folder.resolve("n".repeat(251) + ".png");
    OutputFiles.write(file, text("x"));
    assertEquals("x", Files.readString(file));
    assertTrue(error(folder.resolve("n".repeat(256))).endsWith("File name too long."));
    assertEquals(1, files().size());
  }
}
