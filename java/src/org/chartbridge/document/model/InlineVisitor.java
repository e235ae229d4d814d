// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.document.model;

/** Follows running text from its beginning to its end. */
public interface InlineVisitor {
  void text(String text);

  void begin(TextStyle style);

  void end(TextStyle style);

  void beginLink(String target);

  void endLink(String target);

  void lineBreak();
}
