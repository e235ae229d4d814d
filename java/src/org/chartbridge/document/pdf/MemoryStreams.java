// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.document.pdf;

import javax.imageio.ImageIO;

/**
 * While one of these is open, the JVM's image streams keep what they read in memory. The formatter
 * opens one for each image; by default that makes a file in the temporary folder, which may be full
 * or not there. The setting is one for the JVM, so that the last one closed puts it back.
 */
final class MemoryStreams implements AutoCloseable {
  private static int open;
  private static boolean before;

  MemoryStreams() {
    synchronized (MemoryStreams.class) {
      if (open++ == 0) {
        before = ImageIO.getUseCache();
        ImageIO.setUseCache(false);
      }
    }
  }

  @Override
  public void close() {
    synchronized (MemoryStreams.class) {
      if (--open == 0) {
        ImageIO.setUseCache(before);
      }
    }
  }
}
