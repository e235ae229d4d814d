// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.tree.draw;

import java.io.ByteArrayOutputStream;
import java.util.List;
import java.util.Locale;
import javax.xml.stream.XMLOutputFactory;
import javax.xml.stream.XMLStreamException;
import javax.xml.stream.XMLStreamWriter;

/** Writes display data (docs/tree-display.xsd); what has its default value is left out. */
final class TreeDisplayWriter {
  private final TreeDisplay display;
  private final XMLStreamWriter out;

  private TreeDisplayWriter(TreeDisplay display, XMLStreamWriter out) {
    this.display = display;
    this.out = out;
  }

  static byte[] write(TreeDisplay display) {
    ByteArrayOutputStream bytes = new ByteArrayOutputStream();
    try {
      XMLStreamWriter out =
          XMLOutputFactory.newDefaultFactory().createXMLStreamWriter(bytes, "UTF-8");
      new TreeDisplayWriter(display, out).write();
      out.close();
    } catch (XMLStreamException e) {
      throw new IllegalStateException("display data cannot be written", e);
    }
    return bytes.toByteArray();
  }

  private void write() throws XMLStreamException {
    out.writeStartDocument("UTF-8", "1.0");
    out.writeCharacters("\n");
    out.writeStartElement("tree-display");
    out.writeDefaultNamespace(TreeDisplayReader.NAMESPACE);
    out.writeAttribute("orientation", display.leftToRight() ? "left-to-right" : "top-down");
    attribute("depth", display.depth(), TreeDisplay.DEFAULT.depth());
    attribute("tree", display.tree(), TreeDisplay.DEFAULT.tree());
    attribute("style", display.style(), TreeDisplay.DEFAULT.style());
    attribute("font-size", plain(display.fontSize()), plain(TreeDisplay.DEFAULT.fontSize()));
    if (display.title() != null) {
      line("  ");
      out.writeStartElement("title");
      out.writeCharacters(withoutControls(display.title()));
      out.writeEndElement();
    }
    line("  ");
    out.writeEmptyElement("numbers");
    attribute("digits", display.digits(), -1);
    attribute("locale", locale(display.locale()), "");
    line("  ");
    out.writeEmptyElement("show");
    attribute("counts", display.show().counts(), true);
    attribute("shares", display.show().shares(), true);
    attribute("distribution", display.show().distribution(), true);
    attribute("legend", display.show().legend(), true);
    attribute("missing", display.show().missing(), true);
    nodes("collapsed", display.collapsed());
    nodes("open", display.open());
    line("");
    out.writeEndElement();
    line("");
    out.writeEndDocument();
  }

  private static String locale(Locale locale) {
    return locale.equals(Locale.ROOT) ? "" : locale.toLanguageTag();
  }

  private static String plain(double value) {
    return new java.math.BigDecimal(Double.toString(value)).stripTrailingZeros().toPlainString();
  }

  private void nodes(String element, List<NodeReference> nodes) throws XMLStreamException {
    for (NodeReference node : nodes) {
      line("  ");
      out.writeEmptyElement(element);
      out.writeAttribute("tree", Integer.toString(node.tree()));
      if (node.id() == null) {
        out.writeAttribute("path", node.path());
      } else {
        out.writeAttribute("id", withoutControls(node.id()));
      }
    }
  }

  private void attribute(String name, Object value, Object otherwise) throws XMLStreamException {
    if (!value.equals(otherwise)) {
      out.writeAttribute(name, value.toString());
    }
  }

  private void line(String indent) throws XMLStreamException {
    out.writeCharacters("\n" + indent);
  }

  /** XML 1.0 has no way to write most control characters. */
  private static String withoutControls(String text) {
    return text.replaceAll("[\\x00-\\x08\\x0B\\x0C\\x0E-\\x1F\\uFFFE\\uFFFF]", " ");
  }
}
