// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.stylesheet;

import java.io.ByteArrayOutputStream;
import org.chartbridge.chart.ChartException;

/** Collects a result, up to a size that no sensible document has. */
final class LimitedBytes extends ByteArrayOutputStream {
  private static final int MAX_BYTES = 64 << 20;

  @Override
  public synchronized void write(int b) {
    check(1);
    super.write(b);
  }

  @Override
  public synchronized void write(byte[] bytes, int offset, int length) {
    check(length);
    super.write(bytes, offset, length);
  }

  private void check(int more) {
    if (count + (long) more > MAX_BYTES) {
      throw new ChartException(
          "The style sheet: its result has more than " + MAX_BYTES + " bytes.");
    }
  }
}
