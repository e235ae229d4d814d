// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.image.input;

import java.util.HashMap;
import java.util.Map;
import org.chartbridge.xml.XmlElement;

/**
 * Works out how many elements an SVG document has once each {@code <use>} is replaced by what it
 * shows. A few lines can make billions.
 */
final class SvgExpansion {
  private static final long MOST = 1_000_000;
  private static final int DEEPEST = 50;

  /**
   * What an element comes to.
   *
   * @param elements how many elements
   * @param uses how many uses stand in each other
   */
  private record Size(long elements, int uses) {}

  private static final Size UNDER_WAY = new Size(0, 0);

  private final Map<String, XmlElement> byId = new HashMap<>();
  private final Map<XmlElement, Size> sizes = new HashMap<>();

  private SvgExpansion() {}

  /**
   * @throws org.chartbridge.chart.ChartException when there are too many
   */
  static void check(XmlElement root) {
    SvgExpansion expansion = new SvgExpansion();
    expansion.collect(root);
    expansion.size(root, 0);
  }

  private void collect(XmlElement element) {
    String id = element.attribute("id");
    if (id != null) {
      byId.putIfAbsent(id, element);
    }
    element.children().forEach(this::collect);
  }

  /** @param above how many uses stand around the element, as far as this walk came through them */
  private Size size(XmlElement element, int above) {
    Size known = sizes.get(element);
    if (known == UNDER_WAY) {
      throw element.error("<" + element.name() + "> contains itself by way of <use>");
    }
    if (known == null) {
      sizes.put(element, UNDER_WAY);
      known = sum(element, above);
      sizes.put(element, known);
    }
    if (above + known.uses > DEEPEST) {
      throw element.error("<use> is nested deeper than " + DEEPEST);
    }
    if (known.elements > MOST) {
      throw element.error("with all that <use> repeats there are more than " + MOST + " elements");
    }
    return known;
  }

  private Size sum(XmlElement element, int above) {
    long elements = 1;
    int uses = 0;
    for (XmlElement child : element.children()) {
      Size size = size(child, above);
      elements += size.elements;
      uses = Math.max(uses, size.uses);
    }
    XmlElement used = used(element);
    if (used == null) {
      return new Size(elements, uses);
    }
    if (above >= DEEPEST) {
      throw element.error("<use> is nested deeper than " + DEEPEST);
    }
    Size size = size(used, above + 1);
    return new Size(elements + size.elements, Math.max(uses, size.uses + 1));
  }

  private XmlElement used(XmlElement element) {
    String target = SvgReferences.target(element);
    boolean uses = element.name().equals("use") && target != null && target.startsWith("#");
    return uses ? byId.get(target.substring(1)) : null;
  }
}
