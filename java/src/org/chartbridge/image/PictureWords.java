// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.image;

/**
 * What a picture shows, for readers who do not see it, for search, and for the title bar of a
 * viewer. SVG and PDF have room for it.
 *
 * @param title a few words; not empty
 * @param description more of it; may be empty
 * @param language the language of the texts in the picture, as a language tag such as {@code en}
 */
public record PictureWords(String title, String description, String language) {}
