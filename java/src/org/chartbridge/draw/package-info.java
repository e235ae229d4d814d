// SPDX-License-Identifier: Apache-2.0
/**
 * Turns a chart and its data into a picture. {@link org.chartbridge.draw.ChartDrawing} is the way
 * in: it sums up the data, lays the picture out and draws it on any {@link java.awt.Graphics2D};
 * the marks it drew come back as areas with their values.
 */
package org.chartbridge.draw;
