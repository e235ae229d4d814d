// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.chart;

/**
 * Small multiples: one panel for every category of a column.
 *
 * @param column the column
 * @param columns panels in a row, or null for a number that fits
 * @param sharedX whether all panels show the same horizontal range
 * @param sharedY whether all panels show the same vertical range
 */
public record Facet(String column, Integer columns, boolean sharedX, boolean sharedY) {}
