// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.document.figure;

import java.nio.ByteBuffer;
import java.nio.charset.StandardCharsets;
import java.util.Locale;
import java.util.function.Supplier;
import java.util.regex.Matcher;
import java.util.regex.Pattern;
import org.chartbridge.chart.Chart;
import org.chartbridge.chart.ChartException;
import org.chartbridge.data.ChartData;
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
  /** How messages begin that name a place in the description of a chart. */
  private static final Pattern PLACED = Pattern.compile("line [0-9]+, column [0-9]+: ");

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
      throw located(figure, e);
    } catch (StackOverflowError e) {
      throw new ChartException(
          place(figure) + ChartException.tooLittleStack(e).getMessage(), e);
    } catch (RuntimeException e) {
      throw new ChartException(
          place(figure) + "it cannot be drawn, by a fault of the drawing: " + e, e);
    }
  }

  /** The place within the figure, where it is known, counts more than that of the figure. */
  private static ChartException located(Figure figure, ChartException e) {
    Matcher placed = PLACED.matcher(e.getMessage());
    boolean inDocument = figure.content() instanceof FigureContent.ChartContent chart
        && chart.description().origin().isEmpty();
    if (!inDocument || !placed.lookingAt()) {
      return new ChartException(place(figure) + e.getMessage(), e);
    }
    String rest = e.getMessage().substring(placed.end());
    return new ChartException(placed.group() + name(figure) + rest, e);
  }

  private static String place(Figure figure) {
    return (figure.position() == null ? "" : figure.position() + ": ") + name(figure);
  }

  private static String name(Figure figure) {
    String caption = figure.caption() == null ? "" : " \"" + figure.caption() + "\"";
    return "the " + figure.content().kind() + caption + ": ";
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
    try {
      return drawn(chart, content);
    } catch (ChartException e) {
      // A place in the description, which may be a file of its own.
      boolean inFile = !content.description().origin().isEmpty();
      if (inFile && PLACED.matcher(e.getMessage()).lookingAt()) {
        throw new ChartException(content.description().origin() + e.getMessage(), e);
      }
      throw e;
    }
  }

  private Illustration drawn(Chart chart, FigureContent.ChartContent content) {
    String chosen = style != null ? style : content.style();
    Style drawn = chosen == null ? Style.of(chart) : Style.named(chosen);
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
      return ChartData.readCsv(ByteBuffer.wrap(csv.getBytes(StandardCharsets.UTF_8)), chart);
    } catch (ChartException e) {
      if (PLACED.matcher(e.getMessage()).lookingAt()) {
        throw e;
      }
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
