// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.image.input;

import java.util.ArrayList;
import java.util.HashMap;
import java.util.IdentityHashMap;
import java.util.List;
import java.util.Map;
import java.util.Set;
import org.apache.batik.bridge.CSSUtilities;
import org.apache.batik.css.engine.CSSStylableElement;
import org.apache.batik.css.engine.SVGCSSEngine;
import org.apache.batik.css.engine.value.Value;
import org.chartbridge.xml.SafeXml;
import org.chartbridge.xml.XmlElement;
import org.w3c.dom.Element;
import org.w3c.dom.Node;
import org.w3c.dom.css.CSSPrimitiveValue;
import org.w3c.dom.css.CSSValue;

/**
 * Works out how many elements an SVG document has, and how deep they nest, once each reference is
 * replaced by what it shows: {@code <use>}, patterns, masks, clip paths, markers and images of
 * filters. A few lines can make billions, or a drawing that never ends.
 */
final class SvgExpansion {
  private static final String XLINK = "http://www.w3.org/1999/xlink";
  private static final long MOST = 1_000_000;
  private static final int MOST_REFERENCES = 50;

  /** Elements whose {@code href} has something else drawn in their place. */
  private static final Set<String> SHOWING = Set.of("use", "feImage", "pattern", "tref");

  /** What is drawn for each element that refers to it by one of its properties. */
  private static final Set<String> DRAWN = Set.of("pattern", "mask", "clipPath", "marker", "filter");

  private static final Set<String> SHAPES = Set.of("path", "rect", "circle", "ellipse", "line",
      "polyline", "polygon", "text", "tspan", "textPath", "tref");
  private static final int[] OF_SHAPES = {SVGCSSEngine.FILL_INDEX, SVGCSSEngine.STROKE_INDEX,
      SVGCSSEngine.MARKER_START_INDEX, SVGCSSEngine.MARKER_MID_INDEX,
      SVGCSSEngine.MARKER_END_INDEX};
  private static final int[] OF_ALL = {
      SVGCSSEngine.FILTER_INDEX, SVGCSSEngine.MASK_INDEX, SVGCSSEngine.CLIP_PATH_INDEX};

  /**
   * What an element comes to.
   *
   * @param elements how many elements
   * @param references how many references lead into each other
   * @param depth how many elements stand in each other
   */
  private record Size(long elements, int references, int depth) {}

  private static final Size UNDER_WAY = new Size(0, 0, 0);

  private final SvgDocument document;
  private final Map<String, Element> byId = new HashMap<>();
  private final Map<Element, Size> sizes = new IdentityHashMap<>();

  private SvgExpansion(SvgDocument document) {
    this.document = document;
  }

  /**
   * @param document whose styles are known to the SVG library
   * @throws org.chartbridge.chart.ChartException when there are too many, or they nest too deep
   */
  static void check(SvgDocument document) {
    SvgExpansion expansion = new SvgExpansion(document);
    Element root = document.document().getDocumentElement();
    expansion.collect(root);
    expansion.size(root, 0, 1);
  }

  private void collect(Element element) {
    String id = element.getAttributeNS(null, "id");
    if (!id.isEmpty()) {
      byId.putIfAbsent(id, element);
    }
    children(element).forEach(this::collect);
  }

  private static List<Element> children(Element element) {
    List<Element> children = new ArrayList<>();
    for (Node node = element.getFirstChild(); node != null; node = node.getNextSibling()) {
      if (node instanceof Element child) {
        children.add(child);
      }
    }
    return children;
  }

  /**
   * @param above how many references lead to the element, as far as this walk came through them
   * @param depth how many elements stand around it with itself, likewise
   */
  private Size size(Element element, int above, int depth) {
    XmlElement place = document.place(element);
    Size known = sizes.get(element);
    if (known == UNDER_WAY) {
      throw place.error(
          "<" + place.name() + "> contains itself by way of what it refers to");
    }
    if (known == null) {
      if (depth > SafeXml.MAX_DEPTH) {
        throw place.error(SafeXml.TOO_DEEP);
      }
      sizes.put(element, UNDER_WAY);
      known = sum(element, above, depth);
      sizes.put(element, known);
    }
    if (above + known.references > MOST_REFERENCES) {
      throw tooManyReferences(place);
    }
    if (depth + known.depth - 1 > SafeXml.MAX_DEPTH) {
      throw place.error("with all that references repeat, " + SafeXml.TOO_DEEP);
    }
    if (known.elements > MOST) {
      throw place.error(
          "with all that references repeat there are more than " + MOST + " elements");
    }
    return known;
  }

  private static RuntimeException tooManyReferences(XmlElement place) {
    return place.error("references lead into each other more than " + MOST_REFERENCES + " deep");
  }

  private Size sum(Element element, int above, int depth) {
    long elements = 1;
    int references = 0;
    int below = 0;
    for (Element child : children(element)) {
      Size size = size(child, above, depth + 1);
      elements += size.elements;
      references = Math.max(references, size.references);
      below = Math.max(below, size.depth);
    }
    for (Element shown : shown(element)) {
      if (above >= MOST_REFERENCES) {
        throw tooManyReferences(document.place(element));
      }
      Size size = size(shown, above + 1, depth + 1);
      elements += size.elements;
      references = Math.max(references, size.references + 1);
      below = Math.max(below, size.depth);
    }
    return new Size(elements, references, below + 1);
  }

  /** What is drawn on behalf of an element, without what stands in it. */
  private List<Element> shown(Element element) {
    List<Element> shown = new ArrayList<>();
    String name = element.getLocalName();
    if (SHOWING.contains(name)) {
      add(element.getAttributeNS(XLINK, "href").strip(), shown);
    }
    if (element instanceof CSSStylableElement && !name.equals("style")) {
      if (SHAPES.contains(name)) {
        addProperties(element, OF_SHAPES, shown);
      }
      addProperties(element, OF_ALL, shown);
    }
    return shown;
  }

  private void add(String reference, List<Element> shown) {
    int hash = reference.lastIndexOf('#');
    Element target = hash < 0 ? null : byId.get(reference.substring(hash + 1));
    if (target != null) {
      shown.add(target);
    }
  }

  private void addProperties(Element element, int[] properties, List<Element> shown) {
    for (int property : properties) {
      String reference = reference(CSSUtilities.getComputedStyle(element, property));
      if (reference == null) {
        continue;
      }
      List<Element> target = new ArrayList<>();
      add(reference, target);
      target.removeIf(found -> !DRAWN.contains(found.getLocalName()));
      shown.addAll(target);
    }
  }

  private static String reference(Value value) {
    Value first = value.getCssValueType() == CSSValue.CSS_VALUE_LIST && value.getLength() > 0
        ? value.item(0) : value;
    boolean isReference = first.getCssValueType() == CSSValue.CSS_PRIMITIVE_VALUE
        && first.getPrimitiveType() == CSSPrimitiveValue.CSS_URI;
    return isReference ? first.getStringValue() : null;
  }
}
