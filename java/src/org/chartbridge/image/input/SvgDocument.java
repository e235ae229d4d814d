// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.image.input;

import java.util.Map;
import java.util.Set;
import org.apache.batik.anim.dom.SVGDOMImplementation;
import org.chartbridge.chart.ChartException;
import org.chartbridge.xml.SafeXml;
import org.chartbridge.xml.XmlElement;
import org.chartbridge.xml.XmlNode;
import org.chartbridge.xml.XmlText;
import org.w3c.dom.Document;
import org.w3c.dom.Element;

/** Makes the document of the SVG library from one that was parsed safely. */
final class SvgDocument {
  private static final String SVG = "http://www.w3.org/2000/svg";
  private static final String XLINK = "http://www.w3.org/1999/xlink";
  private static final String XML = "http://www.w3.org/XML/1998/namespace";

  /** What could act rather than show, and is nothing that a picture needs. */
  private static final Set<String> LEFT_OUT = Set.of("script", "foreignObject");

  private final Document document =
      SVGDOMImplementation.getDOMImplementation().createDocument(SVG, "svg", null);

  private SvgDocument() {}

  /**
   * @throws ChartException when the bytes are no SVG, or refer to something outside
   */
  static Document read(byte[] bytes) {
    try {
      XmlElement root = SafeXml.parse(bytes);
      if (!root.name().equals("svg") || !root.namespace().equals(SVG)) {
        throw root.error(
            "found <" + root.name() + ">, which is not SVG; expected <svg xmlns=\"" + SVG + "\">");
      }
      SvgReferences.check(root);
      SvgExpansion.check(root);
      SvgDocument made = new SvgDocument();
      made.fill(made.document.getDocumentElement(), root);
      return made.document;
    } catch (ChartException e) {
      throw new ChartException("The SVG image: " + e.getMessage(), e);
    }
  }

  private void fill(Element target, XmlElement source) {
    for (Map.Entry<String, String> attribute : source.attributes().entrySet()) {
      setAttribute(target, attribute.getKey(), attribute.getValue());
    }
    for (XmlNode node : source.content()) {
      if (node instanceof XmlText text) {
        target.appendChild(document.createTextNode(text.text()));
      } else if (node instanceof XmlElement child && isShown(child)) {
        Element element = document.createElementNS(SVG, child.name());
        fill(element, child);
        target.appendChild(element);
      }
    }
  }

  /** Editors leave elements of their own in the document. */
  private static boolean isShown(XmlElement element) {
    return element.namespace().equals(SVG) && !LEFT_OUT.contains(element.name());
  }

  private static void setAttribute(Element target, String name, String value) {
    int brace = name.lastIndexOf('}');
    if (brace < 0) {
      target.setAttributeNS(null, name, value);
      // SVG 2 has the attribute without a namespace; the library knows SVG 1.1.
      if (name.equals("href") && !target.hasAttributeNS(XLINK, "href")) {
        target.setAttributeNS(XLINK, "xlink:href", value);
      }
      return;
    }
    String uri = name.substring(1, brace);
    String local = name.substring(brace + 1);
    if (uri.equals(XLINK)) {
      target.setAttributeNS(XLINK, "xlink:" + local, value);
    } else if (uri.equals(XML) && !local.equals("base")) {
      target.setAttributeNS(XML, "xml:" + local, value);
    }
  }
}
