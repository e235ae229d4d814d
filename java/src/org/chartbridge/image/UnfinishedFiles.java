// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.image;

import java.util.Collections;
import java.util.IdentityHashMap;
import java.util.Set;
import org.chartbridge.chart.ChartException;

/**
 * The files that are being written, so that a JVM that ends in the middle leaves none of them: when
 * it ends in order, by {@link System#exit} or by a signal that it handles, they are removed.
 */
final class UnfinishedFiles {
  /** Held for every change of files that the end of the JVM must not cut in two. */
  static final Object LOCK = new Object();

  private static final Set<OutputFiles> OPEN = Collections.newSetFromMap(new IdentityHashMap<>());
  private static boolean ended;

  static {
    try {
      Runtime.getRuntime().addShutdownHook(new Removal());
    } catch (IllegalStateException e) {
      ended = true;
    }
  }

  private UnfinishedFiles() {}

  private static final class Removal extends Thread {
    Removal() {
      super("chartbridge unfinished files");
    }

    @Override
    public void run() {
      synchronized (LOCK) {
        ended = true;
        for (OutputFiles files : OPEN) {
          files.discard();
        }
      }
    }
  }

  /**
   * From now until {@link #remove}, the end of the JVM discards these files. The caller holds the
   * lock.
   *
   * @throws ChartException when the JVM is ending already
   */
  static void add(OutputFiles files) {
    check();
    OPEN.add(files);
  }

  /** The caller holds the lock. */
  static void remove(OutputFiles files) {
    // While the JVM ends, its hook goes through the set.
    if (!ended) {
      OPEN.remove(files);
    }
  }

  /** The caller holds the lock. */
  static void check() {
    if (ended) {
      throw new ChartException("Cannot write files: Java is ending.");
    }
  }
}
