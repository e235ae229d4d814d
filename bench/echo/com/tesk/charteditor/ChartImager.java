// SPDX-License-Identifier: Apache-2.0
package com.tesk.charteditor;

import java.nio.ByteBuffer;
import java.nio.ByteOrder;

/**
 * Reads all its data once, so that a measurement sees how the data reaches Java and not a rendering. Its pictures are
 * as large as a chart's and always the same.
 */
public final class ChartImager {
  private static final byte[] PICTURE = new byte[13_000];

  private volatile long sum;

  public boolean RenderToFile(
      byte[] chart, ByteBuffer data, String path, int type, double size, String auxText1,
      byte[] auxBytes1, String auxText2, byte[] auxBytes2) {
    return read(data);
  }

  public boolean RenderToFile(
      byte[] chart, byte[] data, String path, int type, double size, String auxText1,
      byte[] auxBytes1, String auxText2, byte[] auxBytes2) {
    return read(ByteBuffer.wrap(data));
  }

  public byte[] RenderImageMapToMemory(
      byte[] chart, ByteBuffer data, int type, double size, boolean notFlag, String auxText1,
      byte[] auxBytes1, String auxText2, byte[] auxBytes2) {
    return ByteBuffer.allocate(4 + PICTURE.length).putInt(PICTURE.length).put(PICTURE).array();
  }

  public byte[] EmbedHistogramInGraph(byte[] first, byte[] second, ByteBuffer histogram, int count) {
    return PICTURE;
  }

  private boolean read(ByteBuffer data) {
    data.order(ByteOrder.nativeOrder());
    long total = 0;
    int position = 0;
    for (; position + 8 <= data.limit(); position += 8) {
      total += data.getLong(position);
    }
    for (; position < data.limit(); position++) {
      total += data.get(position);
    }
    sum = total;
    return true;
  }
}
