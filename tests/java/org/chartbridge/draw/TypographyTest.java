// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.draw;

import static org.junit.jupiter.api.Assertions.assertEquals;

import java.util.List;
import org.junit.jupiter.api.Test;
import org.junit.jupiter.params.ParameterizedTest;
import org.junit.jupiter.params.provider.ValueSource;

class TypographyTest {
  private static final double WIDE = 10_000;

  private final Typography type = new Typography(Style.named("print"), 800, 600);

  @ParameterizedTest
  @ValueSource(strings = {
      "1990 - 2000", "km / h", "<!-- \uD83D\uDE00", "a/ b", "well-known / said", "/", "-", "- x"})
  void keepsTheSpacesAroundHyphensAndSlashes(String text) {
    assertEquals(List.of(text), type.wrap(text, type.title, WIDE, 3));
  }

  @Test
  void makesOneSpaceOfSeveral() {
    assertEquals(List.of("one two"), type.wrap("  one \t two ", type.title, WIDE, 3));
  }

  @Test
  void breaksAfterHyphensAndSlashesWithinWords() {
    double room = type.width("temperature-", type.title);
    assertEquals(
        List.of("temperature-", "controlled"),
        type.wrap("temperature-controlled", type.title, room, 3));
    assertEquals(
        List.of("temperature/", "pressure"),
        type.wrap("temperature/pressure", type.title, room, 3));
  }

  @Test
  void breaksAtSpacesBeforeHyphens() {
    double room = type.width("1990 -", type.title);
    assertEquals(List.of("1990 -", "2000"), type.wrap("1990 - 2000", type.title, room, 3));
  }
}
