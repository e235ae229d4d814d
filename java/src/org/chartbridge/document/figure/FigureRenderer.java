// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.document.figure;

import java.nio.ByteBuffer;
import java.nio.charset.StandardCharsets;
import java.util.Locale;
import java.util.function.Supplier;
import org.chartbridge.chart.Chart;
import org.chartbridge.chart.ChartException;
import org.chartbridge.data.CsvReader;
import org.chartbridge.data.Table;
import org.chartbridge.document.model.Figure;
import org.chartbridge.document.model.FigureContent;
import org.chartbridge.document.model.FigureContent.Part;
import org.chartbridge.document.model.ImageData;
import org.chartbridge.draw.ChartDrawing;
import org.chartbridge.draw.DrawOptions;
import org.chartbridge.draw.Style;
import org.chartbridge.image.Picture;
import org.chartbridge.image.input.SvgPicture;
import org.chartbridge.template.TemplatedChart;
import org.chartbridge.tree.TreeDocument;
import org.chartbridge.tree.draw.TreeDisplay;
import org.chartbridge.tree.draw.TreePicture;
import org.chartbridge.tree.draw.TreePictures;
import org.chartbridge.tree.draw.TreeReader;
import org.chartbridge.xml.XmlEncoding;

/**
 * Lays figures out so that they can be drawn. Messages about a figure begin with its place in the
 * document, or with the exact place within it.
 */
public final class FigureRenderer {
  private final Locale locale;
  private final String style;

  /**
   * @param locale how numbers and dates are written in charts
   * @param style the name of a built-in style for all figures; null for the one that each names
   */
  public FigureRenderer(Locale locale, String style) {
    this.locale = locale;
    this.style = style;
  }

  /**
   * @throws ChartException when the figure cannot be drawn
   */
  public Illustration render(Figure figure) {
    try {
      FigureContent content = figure.content();
      if (content instanceof FigureContent.ChartContent chart) {
        return chart(chart);
      }
      if (content instanceof FigureContent.TreeContent tree) {
        return tree(tree);
      }
      return image(((FigureContent.ImageContent) content).image());
    } catch (PlacedException e) {
      throw new ChartException(e.getMessage(), e);
    } catch (ChartException e) {
      throw new ChartException(place(figure) + e.getMessage(), e);
    } catch (StackOverflowError e) {
      throw new ChartException(
          place(figure) + ChartException.tooLittleStack(e).getMessage(), e);
    } catch (RuntimeException e) {
      throw new ChartException(
          place(figure) + "it cannot be drawn, by a fault of the drawing: " + e, e);
    }
  }

  private static String place(Figure figure) {
    String caption = figure.caption() == null ? "" : " \"" + figure.caption() + "\"";
    return (figure.position() == null ? "" : figure.position() + ": ") + "the "
        + figure.content().kind() + caption + ": ";
  }

  /** An SVG is built once, to find out whether it can be drawn and what it refers to. */
  private static Illustration image(ImageData image) {
    if (image.format() == ImageData.Format.SVG) {
      SvgPicture.read(image.bytes());
    }
    return Illustration.of(image);
  }

  private Illustration chart(FigureContent.ChartContent content) {
    Chart chart = described(content.description());
    if (content.data() != null) {
      chart = chart.withData(text(content.data()));
    }
    String chosen = style != null ? style : content.style();
    Style drawn = Style.named(chosen == null ? chart.style() : chosen);
    DrawOptions options = new DrawOptions(locale, drawn, null);
    ChartDrawing drawing = ChartDrawing.prepare(chart, table(chart, content.data()), options);
    Picture picture = new Picture(drawing.width(), drawing.height(), 1, drawing::draw);
    return Illustration.of(picture, chart.titles().title());
  }

  private static Chart described(Part description) {
    try {
      return TemplatedChart.read(description.bytes());
    } catch (ChartException e) {
      if (description.origin().isEmpty() && e.getMessage().startsWith("line ")) {
        throw new PlacedException(e.getMessage(), e);
      }
      throw new ChartException(description.origin() + e.getMessage(), e);
    }
  }

  private static String text(Part data) {
    try {
      return XmlEncoding.decodeUtf8(data.bytes());
    } catch (ChartException e) {
      throw new ChartException(data.origin() + e.getMessage(), e);
    }
  }

  private static Table table(Chart chart, Part data) {
    String csv = chart.data() == null ? "" : chart.data();
    try {
      return CsvReader.read(ByteBuffer.wrap(csv.getBytes(StandardCharsets.UTF_8)), chart);
    } catch (ChartException e) {
      throw new ChartException((data == null ? "" : data.origin()) + e.getMessage(), e);
    }
  }

  private Illustration tree(FigureContent.TreeContent content) {
    TreeReader reader = new TreeReader();
    TreeDocument model = read(content.model(), () -> reader.model(content.model().bytes()));
    TreeDisplay display = content.display() == null
        ? standardDisplay()
        : read(content.display(), () -> reader.display(content.display().bytes()));
    Style chosen = style == null ? null : Style.named(style);
    TreePicture tree = new TreePictures(
        model, display, chosen, TreeReader.samples(model, null)).shown();
    Picture picture = new Picture(tree.width(), tree.height(), 1, tree::draw);
    return Illustration.of(picture, display.title());
  }

  private TreeDisplay standardDisplay() {
    TreeDisplay d = TreeDisplay.DEFAULT;
    return new TreeDisplay(d.leftToRight(), d.depth(), d.tree(), d.style(), d.fontSize(),
        d.title(), locale, d.digits(), d.show(), d.collapsed(), d.open());
  }

  private static <T> T read(Part part, Supplier<T> reading) {
    try {
      return reading.get();
    } catch (ChartException e) {
      throw new ChartException(part.origin() + e.getMessage(), e);
    }
  }

  /** A message that begins with an exact place already. */
  private static final class PlacedException extends ChartException {
    private static final long serialVersionUID = 1L;

    PlacedException(String message, Throwable cause) {
      super(message, cause);
    }
  }
}
