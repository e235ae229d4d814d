// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.chart;

/**
 * Something about a chart that makes no sense.
 *
 * @param path what it is about, for example {@code elements[1].color} or {@code x.min}
 * @param message what is wrong and what would be right, without the place
 */
public record Problem(String path, String message) {}
