// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.document.format;

import java.util.List;
import org.chartbridge.chart.ChartException;
import org.chartbridge.document.model.Figure;
import org.chartbridge.document.model.FigureContent;
import org.chartbridge.document.model.FigureContent.Part;
import org.chartbridge.document.model.ImageData;
import org.chartbridge.format.AttributeReader;
import org.chartbridge.xml.XmlElement;

/** Reads charts, tree models and images. Charts and models are taken as they are, not yet read. */
final class FigureReader {
  private static final double MAX_WIDTH = 10_000;

  private final PartReader parts;

  FigureReader(PartReader parts) {
    this.parts = parts;
  }

  Figure chart(XmlElement element) {
    AttributeReader in = new AttributeReader(element);
    String style = in.text("style");
    List<XmlElement> children = children(in, "description", "data");
    Part description = part(children, "description", PartReader.Kind.XML_OR_TEXT);
    if (description == null) {
      throw element.error("<chart> needs <description>, which holds chart XML or graph language");
    }
    Part data = part(children, "data", PartReader.Kind.TEXT);
    return figure(element, in, new FigureContent.ChartContent(description, data, style));
  }

  Figure tree(XmlElement element) {
    AttributeReader in = new AttributeReader(element);
    List<XmlElement> children = children(in, "model", "display");
    Part model = part(children, "model", PartReader.Kind.XML_OR_BINARY);
    if (model == null) {
      throw element.error("<tree> needs <model>, which holds PMML");
    }
    Part display = part(children, "display", PartReader.Kind.XML);
    return figure(element, in, new FigureContent.TreeContent(model, display));
  }

  Figure image(XmlElement element) {
    AttributeReader in = new AttributeReader(element);
    in.text(SourceFolder.SRC);
    Part part = parts.read(element, PartReader.Kind.BINARY);
    ImageData image;
    try {
      image = ImageReader.read(part.bytes());
    } catch (ChartException e) {
      throw element.error("the image" + (part.origin().isEmpty() ? "" : " " + part.origin())
          + " cannot be used: " + e.getMessage());
    }
    return figure(element, in, new FigureContent.ImageContent(image));
  }

  private static List<XmlElement> children(AttributeReader in, String first, String second) {
    List<XmlElement> children = in.children(List.of(first, second, Finisher.PICTURE), false);
    for (int i = 1; i < children.size(); i++) {
      String name = children.get(i).name();
      if (name.equals(first) || children.get(i - 1).name().equals(Finisher.PICTURE)) {
        throw children.get(i).error("<" + name + "> comes in front of <"
            + children.get(i - 1).name() + ">");
      }
    }
    return children;
  }

  private Part part(List<XmlElement> children, String name, PartReader.Kind kind) {
    for (XmlElement child : children) {
      if (child.name().equals(name)) {
        PartReader.checkAttributes(child);
        return parts.read(child, kind);
      }
    }
    return null;
  }

  private static Figure figure(XmlElement element, AttributeReader in, FigureContent content) {
    String caption = in.text("caption");
    String alternative = in.text("alt");
    double width = in.number("width", 0);
    if (in.text("width") != null && !(width >= 1 && width <= MAX_WIDTH)) {
      throw in.unexpected("width", in.text("width"), "a number of pixels from 1 to 10000");
    }
    in.finish();
    return new Figure(content, caption, alternative, width, element.position());
  }
}
