// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.format;

import java.util.ArrayList;
import java.util.Collection;
import java.util.LinkedHashSet;
import java.util.List;
import java.util.Map;
import java.util.Set;
import java.util.regex.Pattern;
import org.chartbridge.chart.AxisLimit;
import org.chartbridge.chart.ChartException;
import org.chartbridge.chart.Suggestions;
import org.chartbridge.chart.Words;
import org.chartbridge.xml.XmlElement;
import org.chartbridge.xml.XmlNode;
import org.chartbridge.xml.XmlText;

/**
 * Reads the typed attributes and the children of one element. Every error names element, attribute,
 * value and position.
 */
public final class AttributeReader {
  static final String SCHEMA_INSTANCE = "http://www.w3.org/2001/XMLSchema-instance";

  private static final Pattern WHOLE = Pattern.compile("[+-]?[0-9]{1,9}");

  private final XmlElement element;
  private final Set<String> known = new LinkedHashSet<>();

  public AttributeReader(XmlElement element) {
    this.element = element;
  }

  /** The value as it stands there; null when it is not given. */
  public String text(String name) {
    known.add(name);
    return element.attribute(name);
  }

  /** A value that must be given and not be blank. */
  public String name(String name) {
    String value = text(name);
    if (value == null) {
      throw missing(name);
    }
    if (value.isBlank()) {
      throw element.error(name, place(name) + " must not be empty");
    }
    return value;
  }

  public ChartException missing(String name) {
    return element.error("<" + element.name() + "> needs the attribute " + name);
  }

  /** A whole number, or null. */
  public Integer whole(String name) {
    String value = text(name);
    if (value == null) {
      return null;
    }
    if (!WHOLE.matcher(value.strip()).matches()) {
      throw unexpected(name, value, "a whole number");
    }
    return Integer.valueOf(value.strip());
  }

  public int whole(String name, int otherwise) {
    Integer value = whole(name);
    return value == null ? otherwise : value;
  }

  /** A decimal number that must be given. */
  public double number(String name) {
    if (text(name) == null) {
      throw missing(name);
    }
    return number(name, 0);
  }

  /** A decimal number. */
  public double number(String name, double otherwise) {
    String value = text(name);
    if (value == null) {
      return otherwise;
    }
    Double number = AxisLimit.parseNumber(value.strip());
    if (number == null) {
      throw unexpected(name, value, "a number");
    }
    return number;
  }

  /** A number or a date; null when it is not given. */
  public Double limit(String name) {
    String value = text(name);
    if (value == null) {
      return null;
    }
    Double limit = AxisLimit.parse(value.strip());
    if (limit == null) {
      throw unexpected(name, value, "a number or a date such as 2024-01-31");
    }
    return limit;
  }

  /** XML Schema's booleans: true, false, 1, 0. */
  public boolean flag(String name, boolean otherwise) {
    String value = text(name);
    if (value == null) {
      return otherwise;
    }
    return switch (value.strip()) {
      case "true", "1" -> true;
      case "false", "0" -> false;
      default -> throw unexpected(name, value, "true or false");
    };
  }

  /** One of the words of an enumeration. */
  public <E extends Enum<E>> E choice(String name, Class<E> type, E otherwise) {
    return choice(name, type, List.of(type.getEnumConstants()), otherwise);
  }

  /** One of the words of some constants of an enumeration. */
  public <E extends Enum<E>> E choice(
      String name, Class<E> type, Collection<E> allowed, E otherwise) {
    String value = text(name);
    if (value == null) {
      return otherwise;
    }
    E constant = Words.find(type, value.strip());
    if (constant == null || !allowed.contains(constant)) {
      String expected = Suggestions.expected(value.strip(), Words.all(allowed));
      throw element.error(name, place(name) + " is \"" + value + "\"; " + expected);
    }
    return constant;
  }

  /** One of the keys, as what it stands for. */
  String translated(String name, Map<String, String> words) {
    String value = text(name);
    if (value == null || words.containsKey(value.strip())) {
      return value == null ? null : words.get(value.strip());
    }
    String expected = Suggestions.expected(value.strip(), words.keySet());
    throw element.error(name, place(name) + " is \"" + value + "\"; " + expected);
  }

  public ChartException unexpected(String name, String value, String expected) {
    return element.error(name, place(name) + " is \"" + value + "\"; expected " + expected);
  }

  /** Call when all attributes are read: anything else that is written there is a mistake. */
  public void finish() {
    for (String name : element.attributes().keySet()) {
      if (known.contains(name) || isSchemaHint(name)) {
        continue;
      }
      String what = "<" + element.name() + "> has no attribute \"" + name + "\"";
      String rather = known.isEmpty() ? "" : "; " + Suggestions.expected(name, known);
      throw element.error(name.substring(name.lastIndexOf('}') + 1), what + rather);
    }
  }

  /**
   * The elements inside, all of the given names and, unless they may repeat, each at most once; no
   * text.
   */
  public List<XmlElement> children(Collection<String> names, boolean repeat) {
    Set<String> seen = new LinkedHashSet<>();
    List<XmlElement> children = new ArrayList<>();
    for (XmlNode node : element.content()) {
      if (node instanceof XmlText text && !text.text().isBlank()) {
        throw element.error(
            "<" + element.name() + "> cannot hold the text \"" + shorten(text.text()) + "\"");
      }
      if (node instanceof XmlElement child) {
        checkChild(child, names);
        if (!seen.add(child.name()) && !repeat) {
          throw child.error("<" + element.name() + "> has more than one <" + child.name() + ">");
        }
        children.add(child);
      }
    }
    return children;
  }

  /** The element holds text only. */
  public String textContent() {
    for (XmlElement child : element.children()) {
      throw child.error(
          "<" + element.name() + "> holds text only, but found <" + child.name() + ">");
    }
    return element.text();
  }

  private void checkChild(XmlElement child, Collection<String> names) {
    if (!child.namespace().equals(element.namespace())) {
      String what = "<" + child.name() + "> has the namespace \"" + child.namespace() + "\"";
      throw child.error(what + "; expected \"" + element.namespace() + "\"");
    }
    if (!names.contains(child.name())) {
      String what = "found <" + child.name() + "> inside <" + element.name() + ">";
      String rather = names.isEmpty()
          ? ", which holds no elements"
          : "; " + Suggestions.expected(child.name(), names);
      throw child.error(what + rather);
    }
  }

  private static boolean isSchemaHint(String name) {
    return name.equals("{" + SCHEMA_INSTANCE + "}schemaLocation");
  }

  private String place(String attribute) {
    return attribute + " of <" + element.name() + ">";
  }

  private static String shorten(String text) {
    String line = text.strip().replaceAll("\\s+", " ");
    return line.length() <= 40 ? line : line.substring(0, line.offsetByCodePoints(0, 30)) + "...";
  }
}
