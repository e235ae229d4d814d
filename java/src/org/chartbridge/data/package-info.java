// SPDX-License-Identifier: Apache-2.0
/**
 * The data of a chart: named columns read from CSV. Numbers and times are kept as primitive arrays
 * and categories as indices into their distinct texts, so that a million rows fit into a few dozen
 * megabytes.
 */
package org.chartbridge.data;
