// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.draw;

import java.util.List;

/**
 * A place on an axis.
 *
 * @param value where
 * @param lines its text, or none for a tick without text
 */
record Tick(double value, List<String> lines) {
  static Tick of(double value, String text) {
    return new Tick(value, text.isEmpty() ? List.of() : List.of(text.split("\n")));
  }
}
