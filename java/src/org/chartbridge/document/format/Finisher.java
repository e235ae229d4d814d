// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.document.format;

import java.util.Base64;
import java.util.Iterator;
import java.util.List;
import java.util.Map;
import java.util.regex.Matcher;
import java.util.regex.Pattern;
import org.chartbridge.chart.ChartException;
import org.chartbridge.chart.TextPosition;
import org.chartbridge.format.ChartSource;
import org.chartbridge.tree.pmml.PmmlBytes;
import org.chartbridge.xml.SafeXml;
import org.chartbridge.xml.XmlElement;
import org.chartbridge.xml.XmlEncoding;
import org.chartbridge.xml.XmlNode;
import org.chartbridge.xml.XmlText;

/** Makes documents complete: with the files that they refer to, with pictures of the figures. */
final class Finisher {
  /** The element that shows what a figure looks like. */
  static final String PICTURE = "picture";

  private static final Pattern NOT_XML =
      Pattern.compile("[\\x00-\\x08\\x0B\\x0C\\x0E-\\x1F\\uFFFE\\uFFFF]|\\p{Cs}");
  private static final Base64.Encoder BASE64 = Base64.getMimeEncoder(76, new byte[] {'\n'});

  /** The picture of one figure, as an SVG. */
  record FigurePicture(double width, double height, byte[] svg) {}

  private Finisher() {}

  /** Whether a document refers to files. */
  static boolean refersToFiles(XmlElement root) {
    for (XmlElement block : root.children()) {
      if (block.attribute(SourceFolder.SRC) != null) {
        return true;
      }
      for (XmlElement part : block.children()) {
        if (part.attribute(SourceFolder.SRC) != null) {
          return true;
        }
      }
    }
    return false;
  }

  /** The document with the contents of files in place of references to them. */
  static byte[] withFiles(XmlElement root, SourceFolder folder) {
    XmlElement finished = root.renamed(root.namespace(), root.name());
    finished.attributes().putAll(root.attributes());
    for (XmlNode node : root.content()) {
      finished.with(node instanceof XmlElement block ? withFiles(block, folder, 0) : node);
    }
    return PreservingXmlWriter.write(finished);
  }

  private static XmlElement withFiles(XmlElement element, SourceFolder folder, int depth) {
    boolean holder = PartReader.HOLDERS.contains(element.name());
    if (holder && element.attribute(SourceFolder.SRC) != null) {
      return filled(element, folder.read(element));
    }
    boolean figure = element.name().equals("chart") || element.name().equals("tree");
    if (depth > 0 || !figure) {
      return element;
    }
    XmlElement copy = copyOfTag(element);
    for (XmlNode node : element.content()) {
      copy.with(node instanceof XmlElement child ? withFiles(child, folder, depth + 1) : node);
    }
    return copy;
  }

  private static XmlElement copyOfTag(XmlElement element) {
    XmlElement copy = element.renamed(element.namespace(), element.name());
    for (Map.Entry<String, String> attribute : element.attributes().entrySet()) {
      if (!attribute.getKey().equals(SourceFolder.SRC)) {
        copy.with(attribute.getKey(), attribute.getValue());
      }
    }
    return copy;
  }

  private static XmlElement filled(XmlElement element, byte[] file) {
    XmlElement copy = copyOfTag(element);
    try {
      return copy.with(content(element.name(), file));
    } catch (ChartException e) {
      throw element.error(
          SourceFolder.SRC, element.attribute(SourceFolder.SRC) + ", " + e.getMessage());
    }
  }

  private static XmlNode content(String holder, byte[] file) {
    return switch (holder) {
      case "model" -> base64(PmmlBytes.compress(file));
      case "image" -> base64(file);
      case "data" -> text(file);
      case "display" -> SafeXml.parse(file);
      default -> ChartSource.isXml(file) ? SafeXml.parse(file) : text(file);
    };
  }

  private static XmlText base64(byte[] bytes) {
    return new XmlText("\n" + BASE64.encodeToString(bytes) + "\n");
  }

  private static XmlText text(byte[] file) {
    String text = XmlEncoding.decodeUtf8(file);
    Matcher refused = NOT_XML.matcher(text);
    if (refused.find()) {
      throw new ChartException(TextPosition.of(text, refused.start())
          + ": the character " + String.format("U+%04X", (int) refused.group().charAt(0))
          + " cannot stand in an XML document");
    }
    return new XmlText("\n" + text);
  }

  /**
   * The document with pictures of its charts and trees.
   *
   * @param pictures one for each chart and tree, in the order of the document
   */
  static byte[] withPictures(XmlElement root, List<FigurePicture> pictures) {
    Iterator<FigurePicture> next = pictures.iterator();
    XmlElement finished = copyOfTag(root);
    for (XmlNode node : root.content()) {
      boolean figure = node instanceof XmlElement block
          && (block.name().equals("chart") || block.name().equals("tree"));
      finished.with(figure ? withPicture((XmlElement) node, next.next()) : node);
    }
    return PreservingXmlWriter.write(finished);
  }

  private static XmlElement withPicture(XmlElement figure, FigurePicture picture) {
    XmlElement copy = copyOfTag(figure);
    for (XmlNode node : figure.content()) {
      boolean old = node instanceof XmlElement child && child.name().equals(PICTURE);
      copy.with(old ? null : node);
    }
    XmlElement element = new XmlElement(figure.namespace(), PICTURE);
    element.with("width", number(picture.width()));
    element.with("height", number(picture.height()));
    element.with(base64(picture.svg()));
    return copy.with(element);
  }

  private static String number(double value) {
    return Long.toString(Math.max(1, Math.round(value)));
  }
}
