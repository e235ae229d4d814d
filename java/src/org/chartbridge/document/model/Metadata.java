// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.document.model;

import java.util.ArrayList;
import java.util.List;
import java.util.Locale;

/**
 * What is said about a document.
 *
 * @param title the title, or null
 * @param subtitle the line below it, or null
 * @param author who wrote it, or null
 * @param date the day as ISO 8601 writes it, or null
 * @param locale its language, by which numbers and dates in charts are written too; {@link
 *     Locale#ROOT} when it is not given
 */
public record Metadata(String title, String subtitle, String author, String date, Locale locale) {
  /** Author and date, as they stand below the title; empty when there is neither. */
  public String byline() {
    List<String> parts = new ArrayList<>();
    if (author != null) {
      parts.add(author);
    }
    if (date != null) {
      parts.add(date);
    }
    return String.join(" \u00B7 ", parts);
  }

  public boolean isEmpty() {
    return title == null && subtitle == null && byline().isEmpty();
  }

  /** The language as a BCP 47 tag; English when it is not given. */
  public String language() {
    return locale.getLanguage().isEmpty() ? "en" : locale.toLanguageTag();
  }

  /** The same in another language. */
  public Metadata in(Locale other) {
    return new Metadata(title, subtitle, author, date, other);
  }
}
