// SPDX-License-Identifier: Apache-2.0
/**
 * Charts as Vega-Lite documents. {@link org.chartbridge.draw.ChartFacts} says what the drawn
 * picture shows; the classes here say the same in Vega-Lite's words.
 */
package org.chartbridge.vega;
