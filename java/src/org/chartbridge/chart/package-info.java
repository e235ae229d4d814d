// SPDX-License-Identifier: Apache-2.0
/**
 * The chart model: immutable values that say what a chart shows, independent of the text it was
 * read from and of the library that draws it. The readers of the chart XML and of the graph
 * language build it; the drawing reads it.
 */
package org.chartbridge.chart;
