// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.image;

import java.net.URI;
import java.net.URISyntaxException;

/** How a page refers to a picture beside it. */
final class PictureLink {
  private PictureLink() {}

  /** The file name as a relative URL. */
  static String to(String fileName) {
    try {
      // "./" keeps a colon in the name from looking like a scheme.
      return new URI(null, null, "./" + fileName, null).toASCIIString();
    } catch (URISyntaxException e) {
      throw new IllegalArgumentException(fileName, e);
    }
  }
}
