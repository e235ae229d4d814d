// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.vega;

/**
 * What an interactive chart can do.
 *
 * @param tooltips whether marks say their values when they are pointed at
 * @param zoom whether axes and maps can be zoomed and moved
 * @param selection how marks are picked
 * @param separateData whether the rows stand in a file of their own
 * @param map how the map looks
 */
public record InteractiveOptions(
    boolean tooltips, boolean zoom, Selection selection, boolean separateData, MapOptions map) {
  /** How marks are picked. */
  public enum Selection {
    /** By clicking on marks and on entries of the legend. */
    POINT,
    /** By drawing a range. */
    INTERVAL,
    /** Not at all. */
    NONE
  }

  /**
   * How the map under the marks looks.
   *
   * @param projection the name of a projection as Vega-Lite calls it
   * @param fill the colour of its areas, {@code #rrggbb}, or null for one that suits the style
   * @param stroke the colour of its lines, likewise
   * @param label the property of a feature that its tooltip shows, or null for none
   */
  public record MapOptions(String projection, String fill, String stroke, String label) {}

  public static final InteractiveOptions DEFAULT = new InteractiveOptions(
      true, true, Selection.POINT, true, new MapOptions("mercator", null, null, null));
}
