// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.document.format;

import java.nio.charset.StandardCharsets;
import java.util.Base64;
import java.util.List;
import org.chartbridge.document.model.FigureContent.Part;
import org.chartbridge.format.AttributeReader;
import org.chartbridge.xml.XmlElement;

/** Reads what a figure is made of: text, XML or base64 in the document, or a file. */
final class PartReader {
  /** What the content of an element may be. */
  enum Kind {
    /** XML or text. */
    XML_OR_TEXT,
    /** XML or base64. */
    XML_OR_BINARY,
    /** XML only. */
    XML,
    /** Text only. */
    TEXT,
    /** Base64 only. */
    BINARY
  }

  /** The names of elements that can hold a file's content. */
  static final List<String> HOLDERS =
      List.of("description", "data", "model", "display", "image");

  private final XmlExtent extent;
  private final SourceFolder folder;

  PartReader(String text, SourceFolder folder) {
    this.extent = new XmlExtent(text);
    this.folder = folder;
  }

  Part read(XmlElement element, Kind kind) {
    boolean hasContent = !element.children().isEmpty() || !element.text().isBlank();
    if (element.attribute(SourceFolder.SRC) != null) {
      if (hasContent) {
        throw element.error("<" + element.name() + "> has both a file (src) and content");
      }
      byte[] bytes = folder.read(element);
      return new Part(bytes, element.attribute(SourceFolder.SRC) + ", ");
    }
    if (!hasContent) {
      throw element.error("<" + element.name() + "> is empty");
    }
    if (element.children().isEmpty()) {
      return text(element, kind);
    }
    return xml(element, kind);
  }

  private Part xml(XmlElement element, Kind kind) {
    XmlElement child = element.children().get(0);
    if (kind == Kind.TEXT || kind == Kind.BINARY) {
      throw child.error("<" + element.name() + "> holds text only, but found <" + child.name()
          + ">");
    }
    if (element.children().size() > 1) {
      throw element.children().get(1).error("<" + element.name() + "> holds one element only");
    }
    if (!element.text().isBlank()) {
      throw element.error("<" + element.name() + "> has both text and <" + child.name() + ">");
    }
    return new Part(extent.document(child), "");
  }

  private Part text(XmlElement element, Kind kind) {
    switch (kind) {
      case XML_OR_BINARY, BINARY -> {
        return new Part(base64(element), "");
      }
      case XML -> throw element.error("<" + element.name() + "> holds text; XML is expected");
      case TEXT -> {
        return new Part(element.text().getBytes(StandardCharsets.UTF_8), "");
      }
      default -> {
        return new Part(
            XmlExtent.padded(extent.contentPosition(element), element.text()), "");
      }
    }
  }

  /** Base64 with blanks and line ends wherever they help. */
  static byte[] base64(XmlElement element) {
    String digits = element.text().replaceAll("[ \\t\\r\\n]+", "");
    try {
      return Base64.getDecoder().decode(digits);
    } catch (IllegalArgumentException e) {
      throw element.error("the content of <" + element.name() + "> is no base64: "
          + e.getMessage());
    }
  }

  /** Only the attribute for a file is allowed. */
  static void checkAttributes(XmlElement element) {
    AttributeReader in = new AttributeReader(element);
    in.text(SourceFolder.SRC);
    in.finish();
  }
}
