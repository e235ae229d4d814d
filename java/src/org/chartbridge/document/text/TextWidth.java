// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.document.text;

/** How many columns of a terminal a text takes. */
final class TextWidth {
  private TextWidth() {}

  static int of(String text) {
    return text.codePoints().map(TextWidth::of).sum();
  }

  static int of(int character) {
    int type = Character.getType(character);
    if (type == Character.NON_SPACING_MARK || type == Character.ENCLOSING_MARK
        || type == Character.FORMAT || type == Character.CONTROL) {
      return 0;
    }
    return isWide(character) ? 2 : 1;
  }

  /** Scripts of full width, and pictographs. */
  private static boolean isWide(int c) {
    return c >= 0x1100 && c <= 0x115F
        || c >= 0x2E80 && c <= 0x303E
        || c >= 0x3041 && c <= 0x4DBF
        || c >= 0x4E00 && c <= 0xA4CF
        || c >= 0xAC00 && c <= 0xD7A3
        || c >= 0xF900 && c <= 0xFAFF
        || c >= 0xFE30 && c <= 0xFE6F
        || c >= 0xFF00 && c <= 0xFF60
        || c >= 0xFFE0 && c <= 0xFFE6
        || c >= 0x1F300 && c <= 0x1F64F
        || c >= 0x1F900 && c <= 0x1F9FF
        || c >= 0x20000 && c <= 0x3FFFD;
  }
}
