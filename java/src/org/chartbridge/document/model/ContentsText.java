// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.document.model;

import java.util.ArrayList;
import java.util.List;

/** Headings as the table of contents shows them: without links and line breaks of their own. */
public final class ContentsText {
  private ContentsText() {}

  public static List<Inline> of(Heading heading) {
    return plain(heading.text());
  }

  private static List<Inline> plain(List<Inline> content) {
    List<Inline> plain = new ArrayList<>();
    for (Inline inline : content) {
      if (inline instanceof Inline.Link link) {
        plain.addAll(plain(link.content()));
      } else if (inline instanceof Inline.Styled styled) {
        plain.add(new Inline.Styled(styled.style(), plain(styled.content())));
      } else if (inline instanceof Inline.LineBreak) {
        plain.add(new Inline.Text(" "));
      } else {
        plain.add(inline);
      }
    }
    return plain;
  }
}
