// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.chart;

/**
 * One axis. Everything that is null is chosen by the drawing.
 *
 * @param scale how values map to positions
 * @param title the axis title, or null for the label of the column; empty for none
 * @param min lower end, in the units of the data
 * @param max upper end, in the units of the data
 * @param reversed whether values grow towards the origin
 * @param grid whether grid lines are drawn
 * @param format a {@link java.text.DecimalFormat} pattern for numbers or a date pattern for times
 */
public record Axis(
    ScaleKind scale,
    String title,
    Double min,
    Double max,
    boolean reversed,
    boolean grid,
    String format) {
  public static final Axis DEFAULT = new Axis(ScaleKind.AUTO, null, null, null, false, true, null);
}
