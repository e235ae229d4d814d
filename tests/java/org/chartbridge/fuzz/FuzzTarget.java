// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.fuzz;

import java.util.List;

/**
 * One kind of input.
 *
 * @param name what it is called in reports and on the command line
 * @param isText whether it is made of words
 * @param weight how often it is chosen in comparison with others; less for what is slow
 * @param seeds inputs that are right
 * @param reader hands an input to the classes as a host does
 */
record FuzzTarget(String name, boolean isText, int weight, List<byte[]> seeds, Reader reader) {
  /** Fails with a ChartException, or returns a message, when the input is wrong. */
  @FunctionalInterface
  interface Reader {
    /** @return why the input was refused, or null */
    String read(byte[] input) throws Exception;
  }
}
