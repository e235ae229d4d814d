// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.document.model;

/** What a figure shows. */
public sealed interface FigureContent
    permits FigureContent.ChartContent, FigureContent.TreeContent, FigureContent.ImageContent {
  /** What to call it in messages and in texts without pictures. */
  String kind();

  /**
   * A part of a figure, as its own reader takes it.
   *
   * @param origin where it was read from, in front of messages about it; empty for the document
   *     itself, whose positions it has
   */
  record Part(byte[] bytes, String origin) {}

  /**
   * A chart.
   *
   * @param description chart XML or graph language
   * @param data CSV in UTF-8, or null for the chart's own
   * @param style the name of a built-in style, or null for the one that the chart names
   */
  record ChartContent(Part description, Part data, String style) implements FigureContent {
    @Override
    public String kind() {
      return "chart";
    }
  }

  /**
   * A tree model.
   *
   * @param model PMML, as it is or compressed with gzip
   * @param display display data, or null for the defaults
   */
  record TreeContent(Part model, Part display) implements FigureContent {
    @Override
    public String kind() {
      return "tree";
    }
  }

  /** A picture. */
  record ImageContent(ImageData image) implements FigureContent {
    @Override
    public String kind() {
      return "image";
    }
  }
}
