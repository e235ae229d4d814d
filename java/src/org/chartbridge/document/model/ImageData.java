// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.document.model;

/**
 * A picture as bytes.
 *
 * @param width its own width in pixels of which 96 make an inch
 * @param height its own height in such pixels
 */
public record ImageData(Format format, byte[] bytes, double width, double height) {
  /** The formats that pictures have in documents. */
  public enum Format {
    PNG("image/png", ".png"),
    JPEG("image/jpeg", ".jpg"),
    SVG("image/svg+xml", ".svg");

    private final String mediaType;
    private final String ending;

    Format(String mediaType, String ending) {
      this.mediaType = mediaType;
      this.ending = ending;
    }

    public String mediaType() {
      return mediaType;
    }

    /** The ending of a file's name, with its point. */
    public String ending() {
      return ending;
    }
  }
}
