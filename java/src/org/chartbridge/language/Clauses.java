// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.language;

import java.util.HashMap;
import java.util.LinkedHashMap;
import java.util.Map;

/**
 * The clauses of a statement: each starts with a word, and a comma or a line break stands between
 * two.
 */
final class Clauses {
  private final Cursor cursor;
  private final Map<String, Runnable> actions = new LinkedHashMap<>();
  private final Map<String, Token> seen = new HashMap<>();

  Clauses(Cursor cursor) {
    this.cursor = cursor;
  }

  /** A clause that may stand once; the action reads what follows the word. */
  Clauses add(String word, Runnable action) {
    return add(word, word, action);
  }

  /** A clause of which, with the others of its group, one may stand. */
  Clauses add(String word, String group, Runnable action) {
    actions.put(word, () -> {
      once(group);
      cursor.take();
      action.run();
    });
    return this;
  }

  /**
   * A clause that checks by itself how often it stands; its action finds its word not yet taken.
   */
  Clauses addRepeated(String word, Runnable action) {
    actions.put(word, action);
    return this;
  }

  /** Reports the next token when something of this name was given before. */
  void once(String what) {
    Token before = seen.putIfAbsent(what, cursor.peek());
    if (before != null) {
      String message = what + " is already given at " + cursor.position(before.offset());
      throw new SyntaxError(cursor.peek().offset(), message);
    }
  }

  /** Reads all clauses up to the end of the statement. */
  void read() {
    cursor.takeBreak();
    do {
      Token token = cursor.peek();
      Runnable action = token.kind() == TokenKind.WORD ? actions.get(token.text()) : null;
      if (action == null) {
        throw cursor.expected(actions.keySet());
      }
      action.run();
    } while (cursor.takeSeparator());
  }

}
