// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.language;

/** Leaves the statement that is being read. Never leaves this package. */
final class SyntaxError extends RuntimeException {
  private static final long serialVersionUID = 1L;

  final int offset;

  SyntaxError(int offset, String message) {
    super(message, null, false, false);
    this.offset = offset;
  }
}
