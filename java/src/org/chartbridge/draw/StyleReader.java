// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.draw;

import java.io.ByteArrayInputStream;
import java.util.ArrayList;
import java.util.List;
import javax.xml.stream.Location;
import javax.xml.stream.XMLInputFactory;
import javax.xml.stream.XMLStreamConstants;
import javax.xml.stream.XMLStreamException;
import javax.xml.stream.XMLStreamReader;
import org.chartbridge.chart.ChartException;

/** Reads style documents (docs/chart-style.xsd). */
final class StyleReader {
  static final String NAMESPACE = "urn:chartbridge:style:1";
  private static final int MAX_BYTES = 1 << 20;
  private static final int MAX_COLORS = 100;

  private final XMLStreamReader reader;
  private Style.Builder style;

  private StyleReader(XMLStreamReader reader, Style base) {
    this.reader = reader;
    this.style = new Style.Builder(base);
  }

  static Style read(byte[] xml, Style base) {
    if (xml.length > MAX_BYTES) {
      throw new ChartException("The style document is larger than " + MAX_BYTES + " bytes.");
    }
    XMLInputFactory factory = XMLInputFactory.newDefaultFactory();
    factory.setProperty(XMLInputFactory.SUPPORT_DTD, false);
    factory.setProperty(XMLInputFactory.IS_SUPPORTING_EXTERNAL_ENTITIES, false);
    factory.setProperty(XMLInputFactory.IS_COALESCING, true);
    try {
      XMLStreamReader reader = factory.createXMLStreamReader(new ByteArrayInputStream(xml));
      return new StyleReader(reader, base).document();
    } catch (XMLStreamException e) {
      Location at = e.getLocation();
      String where = at == null ? ""
          : "line " + at.getLineNumber() + ", column " + at.getColumnNumber() + ": ";
      throw new ChartException("The style document is not well-formed: " + where + reason(e), e);
    }
  }

  private static String reason(XMLStreamException e) {
    String text = e.getMessage() == null ? "no reason given" : e.getMessage();
    int message = text.indexOf("Message: ");
    return message < 0 ? text : text.substring(message + "Message: ".length());
  }

  private Style document() throws XMLStreamException {
    while (next() != XMLStreamConstants.START_ELEMENT) {
      continue;
    }
    if (!reader.getLocalName().equals("style") || !NAMESPACE.equals(reader.getNamespaceURI())) {
      throw error("found <" + reader.getLocalName() + ">, expected <style xmlns=\"" + NAMESPACE
          + "\">");
    }
    allow("base", "name");
    String base = reader.getAttributeValue(null, "base");
    if (base != null) {
      style = new Style.Builder(named(base));
    }
    String name = reader.getAttributeValue(null, "name");
    if (name != null) {
      style.name = name;
    }
    for (int event = next(); event != XMLStreamConstants.END_ELEMENT; event = next()) {
      if (event == XMLStreamConstants.START_ELEMENT) {
        setting();
      }
    }
    while (reader.hasNext()) {
      next();
    }
    return style.build();
  }

  private int next() throws XMLStreamException {
    int event = reader.next();
    if (event == XMLStreamConstants.DTD) {
      throw error("a document type declaration is not allowed");
    }
    boolean text = event == XMLStreamConstants.CHARACTERS && !reader.isWhiteSpace();
    if (text) {
      throw error("found text, expected an element");
    }
    return event;
  }

  private Style named(String base) {
    try {
      return Style.named(base);
    } catch (ChartException e) {
      throw error(e.getMessage());
    }
  }

  private void setting() throws XMLStreamException {
    switch (reader.getLocalName()) {
      case "font" -> font();
      case "sizes" -> sizes();
      case "colors" -> colors();
      case "grid" -> grid();
      case "axes" -> axes();
      case "marks" -> marks();
      case "palette" -> style.palette = colorList("palette", 1);
      case "sequential" -> style.sequential = colorList("sequential", 2);
      default -> throw error("found <" + reader.getLocalName()
          + ">, expected one of font, sizes, colors, grid, axes, marks, palette, sequential");
    }
  }

  private void font() throws XMLStreamException {
    allow("family");
    String family = reader.getAttributeValue(null, "family");
    if (family == null || family.isBlank()) {
      throw error("<font> needs the attribute family, the name of a font family");
    }
    style.fontFamily = family.trim();
    end();
  }

  private void sizes() throws XMLStreamException {
    allow("title", "subtitle", "heading", "axis-title", "ticks", "legend", "labels", "caption");
    style.titleSize = number("title", style.titleSize, 4, 200);
    style.subtitleSize = number("subtitle", style.subtitleSize, 4, 200);
    style.headingSize = number("heading", style.headingSize, 4, 200);
    style.axisTitleSize = number("axis-title", style.axisTitleSize, 4, 200);
    style.tickSize = number("ticks", style.tickSize, 4, 200);
    style.legendSize = number("legend", style.legendSize, 4, 200);
    style.labelSize = number("labels", style.labelSize, 4, 200);
    style.captionSize = number("caption", style.captionSize, 4, 200);
    end();
  }

  private void colors() throws XMLStreamException {
    allow("background", "plot", "text", "muted");
    style.background = color("background", style.background);
    style.plotBackground = color("plot", style.plotBackground);
    style.text = color("text", style.text);
    style.mutedText = color("muted", style.mutedText);
    end();
  }

  private void grid() throws XMLStreamException {
    allow("color", "width");
    style.gridColor = color("color", style.gridColor);
    style.gridWidth = number("width", style.gridWidth, 0, 20);
    end();
  }

  private void axes() throws XMLStreamException {
    allow("color", "width");
    style.axisColor = color("color", style.axisColor);
    style.axisWidth = number("width", style.axisWidth, 0, 20);
    end();
  }

  private void marks() throws XMLStreamException {
    allow("line-width", "marker-size", "patterns", "shapes");
    style.lineWidth = number("line-width", style.lineWidth, 0.1, 50);
    style.markerSize = number("marker-size", style.markerSize, 1, 100);
    style.patterns = flag("patterns", style.patterns);
    style.shapes = flag("shapes", style.shapes);
    end();
  }

  private List<java.awt.Color> colorList(String name, int least) throws XMLStreamException {
    allow();
    List<java.awt.Color> colors = new ArrayList<>();
    for (int event = next(); event != XMLStreamConstants.END_ELEMENT; event = next()) {
      if (event != XMLStreamConstants.START_ELEMENT) {
        continue;
      }
      if (!reader.getLocalName().equals("color")) {
        throw error("found <" + reader.getLocalName() + "> in <" + name + ">, expected <color>");
      }
      allow("value");
      if (reader.getAttributeValue(null, "value") == null) {
        throw error("<color> needs the attribute value, a colour as #rrggbb");
      }
      colors.add(color("value", null));
      if (colors.size() > MAX_COLORS) {
        throw error("<" + name + "> has more than " + MAX_COLORS + " colours");
      }
      end();
    }
    if (colors.size() < least) {
      throw error("<" + name + "> needs at least " + least + (least == 1 ? " colour" : " colours"));
    }
    return colors;
  }

  private void end() throws XMLStreamException {
    for (int event = next(); event != XMLStreamConstants.END_ELEMENT; event = next()) {
      if (event == XMLStreamConstants.START_ELEMENT) {
        throw error("found <" + reader.getLocalName() + "> where no element is allowed");
      }
    }
  }

  private void allow(String... names) {
    if (!NAMESPACE.equals(reader.getNamespaceURI())) {
      throw error("<" + reader.getLocalName() + "> is not in the namespace " + NAMESPACE);
    }
    for (int i = 0; i < reader.getAttributeCount(); i++) {
      String name = reader.getAttributeLocalName(i);
      if (reader.getAttributeNamespace(i) == null && !List.of(names).contains(name)) {
        String expected = names.length == 0 ? "no attributes" : "one of " + String.join(", ", names);
        throw error("<" + reader.getLocalName() + "> has the attribute " + name + ", expected "
            + expected);
      }
    }
  }

  private double number(String attribute, double otherwise, double least, double most) {
    String text = reader.getAttributeValue(null, attribute);
    if (text == null) {
      return otherwise;
    }
    double value;
    try {
      value = Double.parseDouble(text.trim());
    } catch (NumberFormatException e) {
      value = Double.NaN;
    }
    if (!(value >= least && value <= most)) {
      throw error("attribute " + attribute + " of <" + reader.getLocalName() + ">: found \"" + text
          + "\", expected a number from " + Formats.plain(least) + " to " + Formats.plain(most));
    }
    return value;
  }

  private boolean flag(String attribute, boolean otherwise) {
    String text = reader.getAttributeValue(null, attribute);
    if (text == null) {
      return otherwise;
    }
    return switch (text.trim()) {
      case "true", "1" -> true;
      case "false", "0" -> false;
      default -> throw error("attribute " + attribute + " of <" + reader.getLocalName()
          + ">: found \"" + text + "\", expected true or false");
    };
  }

  private java.awt.Color color(String attribute, java.awt.Color otherwise) {
    String text = reader.getAttributeValue(null, attribute);
    if (text == null) {
      return otherwise;
    }
    if (!text.trim().matches("#[0-9a-fA-F]{6}")) {
      throw error("attribute " + attribute + " of <" + reader.getLocalName() + ">: found \"" + text
          + "\", expected a colour as #rrggbb");
    }
    return Style.color(text.trim());
  }

  private ChartException error(String text) {
    Location at = reader.getLocation();
    return new ChartException("Style document, line " + at.getLineNumber() + ", column "
        + at.getColumnNumber() + ": " + text + ".");
  }
}
