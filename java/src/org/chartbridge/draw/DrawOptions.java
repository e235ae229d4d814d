// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.draw;

import java.util.Locale;
import java.util.Map;

/**
 * How to draw a chart.
 *
 * @param locale how numbers and dates are written; null for {@link Locale#ROOT}
 * @param style the style; null for the one that the chart names, else "print"
 * @param messages texts that replace texts of the chart: the key is the text as it stands in the
 *     chart; null for none
 */
public record DrawOptions(Locale locale, Style style, Map<String, String> messages) {
  /** The chart's own style, neutral numbers and dates, no replaced texts. */
  public static final DrawOptions DEFAULT = new DrawOptions(Locale.ROOT, null, Map.of());

  public DrawOptions {
    locale = locale == null ? Locale.ROOT : locale;
    messages = messages == null ? Map.of() : Map.copyOf(messages);
  }
}
