// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.image;

import java.io.IOException;
import java.nio.file.Files;
import java.nio.file.LinkOption;
import java.nio.file.Path;
import java.nio.file.StandardCopyOption;
import java.util.HexFormat;
import java.util.concurrent.ThreadLocalRandom;

/**
 * One file on its way to its target: written under a passing name beside it, then renamed, with the
 * file that was there before kept aside until it is sure that it is no longer wanted.
 */
final class StagedFile {
  private final Path passing;
  private final Path target;
  private Path aside;
  private boolean inPlace;

  StagedFile(Path target) {
    this.target = target;
    passing = besides(target);
  }

  private static Path besides(Path file) {
    String random = HexFormat.of().toHexDigits(ThreadLocalRandom.current().nextLong());
    return file.resolveSibling(".chart-" + random + ".part");
  }

  Path passing() {
    return passing;
  }

  Path target() {
    return target;
  }

  /** Sees that what is at the target now can be put back. */
  void keepOld() throws IOException {
    if (!Files.isRegularFile(target, LinkOption.NOFOLLOW_LINKS)) {
      return;
    }
    Path kept = besides(target);
    try {
      // With a second name for it there is no moment without a file at the target.
      Files.createLink(kept, target);
    } catch (IOException | UnsupportedOperationException e) {
      // Not every file system has links.
      Files.move(target, kept, StandardCopyOption.ATOMIC_MOVE);
    }
    aside = kept;
  }

  void putInPlace() throws IOException {
    Files.move(
        passing, target, StandardCopyOption.ATOMIC_MOVE, StandardCopyOption.REPLACE_EXISTING);
    inPlace = true;
  }

  /** The target is again what it was before {@link #keepOld}. */
  void undo() throws IOException {
    if (aside != null) {
      Files.move(
          aside, target, StandardCopyOption.ATOMIC_MOVE, StandardCopyOption.REPLACE_EXISTING);
      // Two names of one file both stay when one is renamed to the other.
      Files.deleteIfExists(aside);
      aside = null;
    } else if (inPlace) {
      Files.deleteIfExists(target);
    }
    inPlace = false;
  }

  /** Nothing can be undone after this. */
  void forgetOld() {
    if (aside != null) {
      // The new file is in place whether this works or not.
      aside.toFile().delete();
      aside = null;
    }
  }

  /** Removes what was written under the passing name. */
  void discard() {
    // Whether this works or not, the failure that led here is the one to tell.
    passing.toFile().delete();
  }
}
