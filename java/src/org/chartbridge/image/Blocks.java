// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.image;

import java.nio.ByteBuffer;
import org.chartbridge.chart.ChartException;

/**
 * Several byte sequences in one: each as its length in four bytes, most significant first, and its
 * bytes.
 */
public final class Blocks {
  private Blocks() {}

  /**
   * @throws ChartException when the blocks do not fit into one Java array
   */
  public static byte[] join(byte[]... blocks) {
    long length = 0;
    for (byte[] block : blocks) {
      length += Integer.BYTES + block.length;
    }
    if (length > Integer.MAX_VALUE - 8) {
      throw new ChartException(
          "The picture and its map take " + length + " bytes, more than a Java array can hold.");
    }
    ByteBuffer joined = ByteBuffer.allocate((int) length);
    for (byte[] block : blocks) {
      joined.putInt(block.length);
      joined.put(block);
    }
    return joined.array();
  }
}
