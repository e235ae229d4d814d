// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.document.export;

import static org.junit.jupiter.api.Assertions.assertEquals;
import static org.junit.jupiter.api.Assertions.assertTrue;

import java.util.HashMap;
import java.util.List;
import java.util.Locale;
import java.util.Map;
import java.util.stream.IntStream;
import org.junit.jupiter.api.Test;

class InstalledFontsTest {
  /** The same document gives the same pages, whatever was exported before it. */
  @Test
  void theFontOfACharacterDoesNotDependOnWhatWasAskedForBefore() {
    List<Integer> characters = IntStream.rangeClosed(0x2000, 0x2E7F)
        .filter(c -> Character.isDefined(c) && InstalledFonts.isSet(c)).boxed().toList();
    // No language has a preference here, and each name has a memory of its own.
    Map<Integer, Typeface> forwards = new HashMap<>();
    for (int character : characters) {
      forwards.put(character, InstalledFonts.find(character, Locale.forLanguageTag("qaa")));
    }
    assertTrue(forwards.values().stream().distinct().count() > 2, "several fonts are installed");
    for (int i = characters.size() - 1; i >= 0; i--) {
      int character = characters.get(i);
      assertEquals(forwards.get(character),
          InstalledFonts.find(character, Locale.forLanguageTag("qab")),
          Integer.toHexString(character));
    }
  }
}
