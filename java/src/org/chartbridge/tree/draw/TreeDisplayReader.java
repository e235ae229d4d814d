// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.tree.draw;

import java.util.ArrayList;
import java.util.IllformedLocaleException;
import java.util.List;
import java.util.Locale;
import java.util.regex.Pattern;
import org.chartbridge.chart.ChartException;
import org.chartbridge.chart.Suggestions;
import org.chartbridge.draw.Style;
import org.chartbridge.tree.TreeException;
import org.chartbridge.xml.SafeXml;
import org.chartbridge.xml.XmlElement;
import org.chartbridge.xml.XmlNode;
import org.chartbridge.xml.XmlText;

/** Reads display data (docs/tree-display.xsd). */
final class TreeDisplayReader {
  static final String NAMESPACE = "urn:chartbridge:tree-display:1";
  private static final Pattern PATH = Pattern.compile("1(\\.[1-9]\\d{0,8})*");
  private static final int MAX_DEPTH = 1000;

  private final byte[] xml;

  TreeDisplayReader(byte[] xml) {
    this.xml = xml;
  }

  TreeDisplay read() {
    try {
      return display(SafeXml.parse(xml));
    } catch (TreeException e) {
      throw e;
    } catch (ChartException e) {
      String message = e.getMessage();
      throw new TreeException("Display data, " + message + (message.endsWith(".") ? "" : "."), e);
    }
  }

  private static TreeDisplay display(XmlElement root) {
    if (!root.name().equals("tree-display") || !root.namespace().equals(NAMESPACE)) {
      throw root.error("found <" + root.name() + ">, expected <tree-display xmlns=\"" + NAMESPACE
          + "\">");
    }
    check(root, List.of("orientation", "depth", "tree", "style", "font-size"),
        List.of("title", "numbers", "show", "collapsed", "open"));
    TreeDisplay defaults = TreeDisplay.DEFAULT;
    boolean leftToRight = orientation(root);
    int tree = whole(root, "tree", defaults.tree(), 0, Integer.MAX_VALUE);
    String title = defaults.title();
    Locale locale = defaults.locale();
    int digits = defaults.digits();
    TreeDisplay.Parts show = defaults.show();
    List<NodeReference> collapsed = new ArrayList<>();
    List<NodeReference> open = new ArrayList<>();
    for (XmlElement child : root.children()) {
      switch (child.name()) {
        case "title" -> title = title(child);
        case "numbers" -> {
          check(child, List.of("digits", "locale"), List.of());
          digits = whole(child, "digits", digits, 1, 15);
          locale = locale(child, locale);
        }
        case "show" -> show = parts(child);
        case "collapsed" -> collapsed.add(node(child, tree));
        default -> open.add(node(child, tree));
      }
    }
    return new TreeDisplay(leftToRight, whole(root, "depth", defaults.depth(), 0, MAX_DEPTH), tree,
        style(root), number(root, "font-size", defaults.fontSize(), 6, 48), title, locale, digits,
        show, collapsed, open);
  }

  /** Only these attributes and elements; text only where there are no elements to come. */
  private static void check(XmlElement element, List<String> attributes, List<String> children) {
    for (String attribute : element.attributes().keySet()) {
      if (!attribute.startsWith("{") && !attributes.contains(attribute)) {
        String expected = attributes.isEmpty()
            ? "expected none" : Suggestions.expected(attribute, attributes);
        throw element.error(attribute,
            "<" + element.name() + "> has the attribute " + attribute + ", " + expected);
      }
    }
    for (XmlNode node : element.content()) {
      if (node instanceof XmlText text && !text.text().isBlank() && !isTitle(element)) {
        throw element.error("<" + element.name() + "> has text in it, where none is expected");
      }
      if (node instanceof XmlElement child
          && (!children.contains(child.name()) || !child.namespace().equals(NAMESPACE))) {
        String expected = children.isEmpty()
            ? "expected nothing" : Suggestions.expected(child.name(), children);
        throw child.error("found <" + child.name() + "> in <" + element.name() + ">, " + expected);
      }
    }
  }

  private static boolean isTitle(XmlElement element) {
    return element.name().equals("title");
  }

  private static String title(XmlElement element) {
    check(element, List.of(), List.of());
    return element.text().strip();
  }

  private static boolean orientation(XmlElement root) {
    String text = root.attribute("orientation");
    if (text == null) {
      return TreeDisplay.DEFAULT.leftToRight();
    }
    return switch (text.strip()) {
      case "top-down" -> false;
      case "left-to-right" -> true;
      default -> throw found(root, "orientation", "top-down or left-to-right");
    };
  }

  private static String style(XmlElement root) {
    String name = root.attribute("style");
    if (name == null || name.isBlank()) {
      return TreeDisplay.DEFAULT.style();
    }
    if (!Style.NAMES.contains(name.strip())) {
      throw found(root, "style", "one of " + String.join(", ", Style.NAMES));
    }
    return name.strip();
  }

  private static Locale locale(XmlElement element, Locale otherwise) {
    String tag = element.attribute("locale");
    if (tag == null || tag.isBlank()) {
      return otherwise;
    }
    try {
      return new Locale.Builder().setLanguageTag(tag.strip()).build();
    } catch (IllformedLocaleException e) {
      throw found(element, "locale", "a language tag such as en or de-CH");
    }
  }

  private static TreeDisplay.Parts parts(XmlElement element) {
    check(element, List.of("counts", "shares", "distribution", "legend", "missing"), List.of());
    return new TreeDisplay.Parts(flag(element, "counts"), flag(element, "shares"),
        flag(element, "distribution"), flag(element, "legend"), flag(element, "missing"));
  }

  private static NodeReference node(XmlElement element, int shownTree) {
    check(element, List.of("id", "path", "tree"), List.of());
    String id = element.attribute("id");
    String path = element.attribute("path");
    if ((id == null) == (path == null)) {
      throw element.error("<" + element.name() + "> needs one of the attributes id and path");
    }
    if (path != null && !PATH.matcher(path).matches()) {
      throw found(element, "path", "the path of a node, such as 1 for the root or 1.2");
    }
    int tree = whole(element, "tree", Math.max(1, shownTree), 1, Integer.MAX_VALUE);
    return new NodeReference(tree, id, path);
  }

  private static boolean flag(XmlElement element, String attribute) {
    String text = element.attribute(attribute);
    if (text == null) {
      return true;
    }
    return switch (text.strip()) {
      case "true", "1" -> true;
      case "false", "0" -> false;
      default -> throw found(element, attribute, "true or false");
    };
  }

  private static int whole(
      XmlElement element, String attribute, int otherwise, int least, int most) {
    String text = element.attribute(attribute);
    if (text == null) {
      return otherwise;
    }
    String expected = most == Integer.MAX_VALUE
        ? "a whole number, at least " + least
        :
        "a whole number from " + least + " to " + most;
        try {
          int value = Integer.parseInt(text.strip());
          if (value >= least && value <= most) {
            return value;
          }
    } catch (NumberFormatException e) {
      throw found(element, attribute, expected);
    }
    throw found(element, attribute, expected);
  }

  private static double number(
      XmlElement element, String attribute, double otherwise, int least, int most) {
    String text = element.attribute(attribute);
    if (text == null) {
      return otherwise;
    }
    String expected = "a number from " + least + " to " + most;
    try {
      double value = Double.parseDouble(text.strip());
      if (value >= least && value <= most) {
        return value;
      }
    } catch (NumberFormatException e) {
      throw found(element, attribute, expected);
    }
    throw found(element, attribute, expected);
  }

  private static ChartException found(XmlElement element, String attribute, String expected) {
    return element.error(attribute, "attribute " + attribute + " of <" + element.name()
        + ">: found \"" + element.attribute(attribute) + "\", expected " + expected);
  }
}
