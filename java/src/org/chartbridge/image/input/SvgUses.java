// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.image.input;

import java.util.HashMap;
import java.util.Map;
import java.util.Set;
import org.apache.batik.bridge.CSSUtilities;
import org.apache.batik.bridge.SVGUtilities;
import org.apache.batik.bridge.UserAgent;
import org.w3c.dom.Document;
import org.w3c.dom.Element;
import org.w3c.dom.NodeList;

/**
 * Takes each {@code <use>} away that repeats what shows nothing by itself, such as a marker or an
 * element with {@code display="none"}: it shows nothing either, and the SVG library fails at it.
 */
final class SvgUses {
  private static final String XLINK = "http://www.w3.org/1999/xlink";
  private static final String USE = "use";
  private static final Set<String> SHOWN = Set.of("g", "svg", "symbol", USE, "path", "rect",
      "circle", "ellipse", "line", "polyline", "polygon", "text", "image", "switch", "a");

  private final UserAgent agent;
  private final Map<String, Element> byId = new HashMap<>();

  private SvgUses(UserAgent agent) {
    this.agent = agent;
  }

  /**
   * @param document of which no part contains itself
   * @param agent decides what elements with conditions show
   */
  static void removeEmpty(Document document, UserAgent agent) {
    SvgUses uses = new SvgUses(agent);
    NodeList all = document.getElementsByTagNameNS("*", "*");
    for (int i = 0; i < all.getLength(); i++) {
      Element element = (Element) all.item(i);
      uses.byId.putIfAbsent(element.getAttributeNS(null, "id"), element);
    }
    for (int i = all.getLength() - 1; i >= 0; i--) {
      Element element = (Element) all.item(i);
      if (element.getLocalName().equals(USE) && !uses.showsSomething(element)) {
        element.getParentNode().removeChild(element);
      }
    }
  }

  /** A reference to nothing is left to the library, which says so. */
  private boolean showsSomething(Element use) {
    String reference = use.getAttributeNS(XLINK, "href").strip();
    Element target = reference.startsWith("#") ? byId.get(reference.substring(1)) : null;
    if (target == null) {
      return true;
    }
    boolean shown = SHOWN.contains(target.getLocalName()) && CSSUtilities.convertDisplay(target)
        && SVGUtilities.matchUserAgent(target, agent);
    return shown && (!target.getLocalName().equals(USE) || showsSomething(target));
  }
}
