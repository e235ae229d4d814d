// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.document.pdf;

import org.chartbridge.document.model.Alignment;
import org.chartbridge.document.model.TextDirection;

/** The container around a block that runs another way than its document; nothing around others. */
final class FoDirection {
  private static final String CONTAINER = "block-container";

  private final FoEvents out;
  private final boolean isOpen;

  private FoDirection(FoEvents out, boolean isOpen) {
    this.out = out;
    this.isOpen = isOpen;
  }

  /**
   * @param attributes names and values in turn, of the container
   */
  static FoDirection open(String text, PdfText setting, FoEvents out, String... attributes) {
    TextDirection direction = TextDirection.of(text, setting.direction());
    if (direction == setting.direction()) {
      return new FoDirection(out, false);
    }
    String[] all = java.util.Arrays.copyOf(attributes, attributes.length + 2);
    all[attributes.length] = "writing-mode";
    all[attributes.length + 1] = direction.writingMode();
    out.open(CONTAINER, all);
    return new FoDirection(out, true);
  }

  /**
   * Where text in the container stands that is to begin below other text of the document; null
   * where nothing has to be said.
   */
  String align(Alignment alignment, PdfText setting) {
    return isOpen ? PdfStyle.alignment(alignment, setting.direction()) : null;
  }

  void close() {
    if (isOpen) {
      out.close(CONTAINER);
    }
  }
}
