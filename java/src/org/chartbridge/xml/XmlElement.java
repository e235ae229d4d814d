// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.xml;

import java.util.ArrayList;
import java.util.HashMap;
import java.util.LinkedHashMap;
import java.util.List;
import java.util.Map;
import org.chartbridge.chart.ChartException;
import org.chartbridge.chart.TextPosition;

/**
 * One element: its name, attributes and content. Elements of a parsed document know their place in
 * it; elements that a program builds have none. Built by one thread, then only read.
 */
public final class XmlElement implements XmlNode {
  private final String namespace;
  private final String name;
  private final Map<String, String> attributes = new LinkedHashMap<>();
  private final List<XmlNode> content = new ArrayList<>();
  private final String source;
  private final int start;
  private final int end;
  /** Where attributes stand that are not written in a tag; null for none. */
  private Map<String, Integer> attributeOffsets;

  /** An element that stands in no document. */
  public XmlElement(String namespace, String name) {
    this(namespace, name, null, 0, 0);
  }

  /** An element whose start tag is {@code source.substring(start, end)}. */
  XmlElement(String namespace, String name, String source, int start, int end) {
    this.namespace = namespace;
    this.name = name;
    this.source = source;
    this.start = start;
    this.end = end;
  }

  /**
   * An element that is written in another notation, whose errors point there.
   *
   * @param source the whole text
   * @param offset where the element begins in it
   */
  public static XmlElement at(String namespace, String name, String source, int offset) {
    return new XmlElement(namespace, name, source, offset, offset);
  }

  /** An element of another name that stands at the same place, without attributes and content. */
  public XmlElement renamed(String newNamespace, String newName) {
    return new XmlElement(newNamespace, newName, source, start, end);
  }

  /** The namespace URI; empty for none. */
  public String namespace() {
    return namespace;
  }

  /** The local name. */
  public String name() {
    return name;
  }

  /**
   * Attribute names to values in document order; attributes of a foreign namespace as {@code
   * {uri}name}.
   */
  public Map<String, String> attributes() {
    return attributes;
  }

  /** The value of an attribute, or null. */
  public String attribute(String attribute) {
    return attributes.get(attribute);
  }

  /** Sets an attribute; null leaves it out. */
  public XmlElement with(String attribute, String value) {
    if (value != null) {
      attributes.put(attribute, value);
    }
    return this;
  }

  /** Sets an attribute that is written in another notation, at that offset of its text. */
  public XmlElement with(String attribute, String value, int offset) {
    if (attributeOffsets == null) {
      attributeOffsets = new HashMap<>();
    }
    attributeOffsets.put(attribute, offset);
    return with(attribute, value);
  }

  /** Appends to the content; null is left out. */
  public XmlElement with(XmlNode node) {
    if (node != null) {
      content.add(node);
    }
    return this;
  }

  /** Everything inside, in document order. */
  public List<XmlNode> content() {
    return content;
  }

  /** The elements inside, in document order. */
  public List<XmlElement> children() {
    List<XmlElement> children = new ArrayList<>();
    for (XmlNode node : content) {
      if (node instanceof XmlElement child) {
        children.add(child);
      }
    }
    return children;
  }

  /** The first child of that name, or null. */
  public XmlElement child(String childName) {
    for (XmlElement child : children()) {
      if (child.name.equals(childName)) {
        return child;
      }
    }
    return null;
  }

  /** The character data directly inside, joined. */
  public String text() {
    StringBuilder text = new StringBuilder();
    for (XmlNode node : content) {
      if (node instanceof XmlText characters) {
        text.append(characters.text());
      }
    }
    return text.toString();
  }

  /** Where the start tag begins; null for an element that stands in no document. */
  public TextPosition position() {
    return source == null ? null : TextPosition.of(source, start);
  }

  /** The line in which the start tag ends, 1-based; 0 for an element that stands in no document. */
  public int lastLineOfTag() {
    return source == null ? 0 : TextPosition.of(source, end).line();
  }

  /** Where the attribute's name stands; the element's position when it is not written there. */
  public TextPosition position(String attribute) {
    if (source == null) {
      return null;
    }
    if (attributeOffsets != null && attributeOffsets.containsKey(attribute)) {
      return TextPosition.of(source, attributeOffsets.get(attribute));
    }
    int offset = XmlTags.attributeOffset(source, start, end, attribute);
    return TextPosition.of(source, offset < 0 ? start : offset);
  }

  /** An error about this element, with its position in front. */
  public ChartException error(String message) {
    return new ChartException(prefix(position()) + message);
  }

  /** An error about an attribute, with its position in front. */
  public ChartException error(String attribute, String message) {
    return new ChartException(prefix(position(attribute)) + message);
  }

  private static String prefix(TextPosition position) {
    return position == null ? "" : position + ": ";
  }
}
