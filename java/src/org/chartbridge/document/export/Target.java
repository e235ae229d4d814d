// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.document.export;

import java.util.Arrays;
import java.util.List;
import java.util.Locale;

/** What a document can be exported to. */
public enum Target {
  HTML("html", ".html", ".htm"),
  PDF("pdf", ".pdf"),
  ODT("odt", ".odt"),
  CSV("csv", ".csv"),
  TEXT("text", ".txt", ".text"),
  /** No file: only whether everything in the document can be exported. */
  CHECK("check");

  private final String word;
  private final List<String> endings;

  Target(String word, String... endings) {
    this.word = word;
    this.endings = List.of(endings);
  }

  /** What a request calls it. */
  public String word() {
    return word;
  }

  /** What requests can call them, in the order of their declaration. */
  static List<String> words() {
    return Arrays.stream(values()).map(Target::word).toList();
  }

  /** The target of that word, or null. */
  static Target named(String word) {
    for (Target target : values()) {
      if (target.word.equals(word)) {
        return target;
      }
    }
    return null;
  }

  /** The target whose files end like that one, or null. */
  static Target ofFile(String file) {
    String name = file.toLowerCase(Locale.ROOT);
    for (Target target : values()) {
      for (String ending : target.endings) {
        if (name.endsWith(ending)) {
          return target;
        }
      }
    }
    return null;
  }
}
