// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.chart;

/**
 * One bar of a histogram whose bins were counted before the chart was made.
 *
 * @param from where it begins along the x axis
 * @param to where it ends
 * @param value its height
 */
public record Bin(double from, double to, double value) {
  public Bin {
    // A zero is a zero: -0 would be written as a text that looks negative.
    from += 0.0;
    to += 0.0;
    value += 0.0;
  }
}
