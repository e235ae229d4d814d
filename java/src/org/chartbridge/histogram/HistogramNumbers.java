// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.histogram;

import java.nio.ByteBuffer;
import java.nio.ByteOrder;
import java.util.ArrayList;
import java.util.List;
import org.chartbridge.chart.Bin;
import org.chartbridge.chart.ChartException;
import org.chartbridge.chart.ChartRules;

/**
 * The numbers of a histogram as a host keeps them: the edges of the bins, one more than there are
 * bins, ascending; then the height of each bin. All are IEEE 754 doubles in the machine's own byte
 * order.
 */
final class HistogramNumbers {
  private final ByteBuffer numbers;
  private final int count;

  private HistogramNumbers(ByteBuffer numbers, int count) {
    this.numbers = numbers;
    this.count = count;
  }

  /**
   * @param buffer read from its position to its limit and left as it is; direct or not
   * @param count how many bins
   * @throws ChartException when the buffer has another length or its numbers make no histogram
   */
  static List<Bin> read(ByteBuffer buffer, int count) {
    if (buffer == null) {
      throw new ChartException("There is no buffer with the numbers of the histogram.");
    }
    checkCount(count);
    checkLength(buffer.remaining(), count);
    // A slice starts at the position; the buffer's own order is that of whoever made it.
    return new HistogramNumbers(buffer.slice().order(ByteOrder.nativeOrder()), count).bins();
  }

  private static void checkCount(int count) {
    if (count < 1 || count > ChartRules.MAX_OWN_BINS) {
      throw new ChartException("The histogram has " + Integer.toUnsignedString(count)
          + " bins; expected 1 to " + ChartRules.MAX_OWN_BINS + ".");
    }
  }

  private static void checkLength(int bytes, int count) {
    int doubles = 2 * count + 1;
    if (bytes != doubles * Double.BYTES) {
      throw new ChartException("The buffer of the histogram has " + bytes + " bytes; " + count
          + (count == 1 ? " bin takes " : " bins take ") + doubles * Double.BYTES + ": "
          + (count + 1) + " edges and " + count + (count == 1 ? " height" : " heights")
          + " of 8 bytes each.");
    }
  }

  private List<Bin> bins() {
    List<Bin> bins = new ArrayList<>(count);
    for (int i = 0; i < count; i++) {
      bins.add(new Bin(edge(i), edge(i + 1), height(i)));
      checkOrder(i, bins.get(i));
    }
    return bins;
  }

  private double edge(int index) {
    return finite("Edge ", index, count + 1, numbers.getDouble(index * Double.BYTES));
  }

  private double height(int index) {
    double height = numbers.getDouble((count + 1 + index) * Double.BYTES);
    finite("The height of bin ", index, count, height);
    if (height < 0) {
      throw new ChartException(place("The height of bin ", index, count) + height
          + "; heights are 0 or more.");
    }
    return height;
  }

  private static double finite(String what, int index, int of, double value) {
    if (!Double.isFinite(value)) {
      throw new ChartException(place(what, index, of) + value
          + "; the edges and heights of a histogram are finite numbers. Is the byte order that of"
          + " this machine?");
    }
    return value;
  }

  private static void checkOrder(int index, Bin bin) {
    if (bin.from() >= bin.to()) {
      throw new ChartException("Edge " + (index + 2) + " of the histogram is " + bin.to()
          + ", which is not above edge " + (index + 1) + ", " + bin.from() + "; edges ascend.");
    }
  }

  private static String place(String what, int index, int of) {
    return what + (index + 1) + " of " + of + " is ";
  }
}
