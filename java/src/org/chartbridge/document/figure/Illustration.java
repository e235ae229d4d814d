// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.document.figure;

import org.chartbridge.document.model.ImageData;
import org.chartbridge.image.Picture;

/**
 * A figure that can be shown: something to draw, or a picture as bytes; the other one is null.
 *
 * @param title what it calls itself, or null
 */
public record Illustration(Picture picture, ImageData image, String title) {
  static Illustration of(Picture picture, String title) {
    return new Illustration(picture, null, title);
  }

  static Illustration of(ImageData image) {
    return new Illustration(null, image, null);
  }

  /** Its own width in pixels of which 96 make an inch. */
  public double width() {
    return picture == null ? image.width() : picture.width();
  }

  /** Its own height in such pixels. */
  public double height() {
    return picture == null ? image.height() : picture.height();
  }
}
