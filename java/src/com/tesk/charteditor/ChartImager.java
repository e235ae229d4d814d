// SPDX-License-Identifier: Apache-2.0
package com.tesk.charteditor;

import java.io.IOException;
import java.io.UncheckedIOException;
import java.nio.ByteBuffer;
import java.nio.file.Path;
import java.util.function.Supplier;
import org.chartbridge.chart.Chart;
import org.chartbridge.chart.ChartException;
import org.chartbridge.data.ChartData;
import org.chartbridge.draw.ChartDrawing;
import org.chartbridge.draw.DrawOptions;
import org.chartbridge.histogram.HistogramEmbedding;
import org.chartbridge.image.Blocks;
import org.chartbridge.image.ImageMap;
import org.chartbridge.image.ImageType;
import org.chartbridge.image.OutputFiles;
import org.chartbridge.image.Picture;
import org.chartbridge.image.PictureEncoder;
import org.chartbridge.image.input.ImageConversion;
import org.chartbridge.stylesheet.StyleSheet;
import org.chartbridge.template.TemplatedChart;

/**
 * Renders charts. The native chart editor makes one of these and calls it by name and signature.
 *
 * <p>What all methods share:
 *
 * <ul>
 *   <li>{@code chart}: chart XML, current or older, or graph language. A template that it names is
 *       applied ({@link TemplatedChart}).
 *   <li>{@code data}: CSV in UTF-8. A direct buffer is the host's own memory; it is read during
 *       the call only and never copied as a whole. Null or empty stands for the chart's own data.
 *   <li>{@code imageType}: 1 JPEG, 2 PNG, 3 BMP, 4 GIF, 5 SVG, 6 PDF, 7 image map.
 *   <li>{@code size}: in percent of the chart's own size, more than 0 and at most 10000.
 *   <li>{@code language}: a BCP 47 tag such as {@code de} or {@code pt-BR} for numbers and dates;
 *       null or empty for neutral ones.
 *   <li>{@code texts}: a properties file in UTF-8 whose entries replace texts of the chart; null or
 *       empty for none.
 *   <li>{@code style}: the name of a built-in style; null or empty for the one that the chart names.
 *   <li>{@code styleDocument}: a style document that changes single settings of that style; null or
 *       empty for none.
 * </ul>
 *
 * <p>Every failure is a {@link ChartException} with a message for the person who asked for the
 * chart. An object of this class has no state: any thread may use it.
 */
public final class ChartImager {
  static {
    // Before the first class that looks for a display.
    if (System.getProperty("java.awt.headless") == null) {
      System.setProperty("java.awt.headless", "true");
    }
  }

  /** A chart that is laid out, with the picture that draws it. */
  private record Rendering(ChartDrawing drawing, Picture picture, String title) {
    /** The map of the picture, which must have been drawn. */
    ImageMap map(boolean tooltips) {
      return new ImageMap(picture, drawing.marks(), tooltips);
    }
  }

  /**
   * Writes a chart to a file, which appears whole or not at all. Type 7 writes the map's files too,
   * with tooltips.
   *
   * @param path the file; its folder must exist
   * @return true: the file is there
   */
  public boolean RenderToFile(byte[] chart, ByteBuffer data, String path, int imageType,
      double size, String language, byte[] texts, String style, byte[] styleDocument) {
    if (ImageType.of(imageType) == ImageType.IMAGE_MAP) {
      return RenderImageMapToFile(
          chart, data, path, imageType, size, true, language, texts, style, styleDocument);
    }
    return guarded(() -> {
      Path target = OutputFiles.path(path);
      Picture picture =
          rendering(chart, data, size, language, texts, style, styleDocument).picture();
      ImageType type = ImageType.of(imageType);
      OutputFiles.write(target, out -> PictureEncoder.write(picture, type, out));
      return true;
    });
  }

  /** The same with the data in an array. */
  public boolean RenderToFile(byte[] chart, byte[] data, String path, int imageType, double size,
      String language, byte[] texts, String style, byte[] styleDocument) {
    return RenderToFile(chart, data == null ? null : ByteBuffer.wrap(data), path, imageType, size,
        language, texts, style, styleDocument);
  }

  /**
   * Writes a PNG and, beside it, its map: the path with the ending {@code .html} is a page that
   * shows the picture with its map, the path with the ending {@code .json} says the same as JSON.
   * All three appear together or none does.
   *
   * @param imageType must be 7
   * @param tooltips whether areas say what they show
   * @return true: the files are there
   */
  public boolean RenderImageMapToFile(byte[] chart, ByteBuffer data, String path, int imageType,
      double size, boolean tooltips, String language, byte[] texts, String style,
      byte[] styleDocument) {
    return guarded(() -> {
      if (ImageType.of(imageType) != ImageType.IMAGE_MAP) {
        throw new ChartException("An image map is image type 7, not " + imageType + " ("
            + ImageType.of(imageType) + ").");
      }
      Path target = OutputFiles.path(path);
      MapPaths beside = MapPaths.of(target);
      Rendering rendering = rendering(chart, data, size, language, texts, style, styleDocument);
      try (OutputFiles files = new OutputFiles()) {
        files.stage(
            target, out -> PictureEncoder.write(rendering.picture(), ImageType.IMAGE_MAP, out));
        ImageMap map = rendering.map(tooltips);
        byte[] page = map.page(target.getFileName().toString(), rendering.title());
        files.stage(beside.html(), out -> out.write(page));
        files.stage(beside.json(), out -> out.write(map.json()));
        files.commit();
      }
      return true;
    });
  }

  /**
   * Renders a chart to memory.
   *
   * @return the bytes of the picture; for type 7 what {@link #RenderImageMapToMemory} returns, with
   *     tooltips
   */
  public byte[] RenderToMem(byte[] chart, ByteBuffer data, int imageType, double size,
      String language, byte[] texts, String style, byte[] styleDocument) {
    if (ImageType.of(imageType) == ImageType.IMAGE_MAP) {
      return RenderImageMapToMemory(
          chart, data, imageType, size, true, language, texts, style, styleDocument);
    }
    return guarded(() -> {
      ImageType type = ImageType.of(imageType);
      Rendering rendering = rendering(chart, data, size, language, texts, style, styleDocument);
      return PictureEncoder.encode(rendering.picture(), type);
    });
  }

  /**
   * Renders a chart to memory as blocks, each a length in four bytes, most significant first, and
   * that many bytes: the picture; for type 7 a PNG, the HTML {@code map} element and the map as
   * JSON.
   *
   * @param tooltips whether areas say what they show
   */
  public byte[] RenderImageMapToMemory(byte[] chart, ByteBuffer data, int imageType, double size,
      boolean tooltips, String language, byte[] texts, String style, byte[] styleDocument) {
    return guarded(() -> {
      ImageType type = ImageType.of(imageType);
      Rendering rendering = rendering(chart, data, size, language, texts, style, styleDocument);
      byte[] picture = PictureEncoder.encode(rendering.picture(), type);
      if (type != ImageType.IMAGE_MAP) {
        return Blocks.join(picture);
      }
      ImageMap map = rendering.map(tooltips);
      return Blocks.join(picture, map.html(), map.json());
    });
  }

  /**
   * Puts a histogram that was counted elsewhere into a chart, behind its other elements.
   *
   * @param histogram how it looks: a {@code <histogram>} element of the chart namespace with {@code
   *     fill} and {@code opacity}; empty for the defaults
   * @param numbers the {@code count + 1} edges of the bins, ascending, then the {@code count}
   *     heights, as IEEE 754 doubles in the machine's own byte order; the host's own memory, which
   *     is read during the call only
   * @param count how many bins, 1 to 10000
   * @return chart XML of the current version
   */
  public byte[] EmbedHistogramInGraph(
      byte[] chart, byte[] histogram, ByteBuffer numbers, int count) {
    return guarded("The histogram cannot be embedded, by a fault of this library: ", () -> {
      checkGiven(chart);
      return HistogramEmbedding.embed(chart, histogram, numbers, count);
    });
  }

  /**
   * Writes an image as another type.
   *
   * @param image PNG, JPEG, BMP, GIF or SVG, told by its first bytes
   * @param path the file to write, which appears whole or not at all
   * @param imageType 1 JPEG, 2 PNG, 3 BMP or 4 GIF; for SVG also 6 PDF
   * @return true: the file is there
   */
  public boolean ConvertImage(byte[] image, String path, int imageType) {
    return guarded("The image cannot be converted, by a fault of this library: ", () -> {
      ImageConversion.convert(image, OutputFiles.path(path), ImageType.of(imageType));
      return true;
    });
  }

  /**
   * Applies a style sheet.
   *
   * @param document XML, or a chart in the graph language, which becomes chart XML first
   * @param styleSheet XSLT 1.0; it can load nothing and call no Java
   * @return what the style sheet puts out, in its output encoding; empty for nothing, never null
   */
  public byte[] ApplyStyleSheet(byte[] document, byte[] styleSheet) {
    return guarded("The style sheet cannot be applied, by a fault of this library: ",
        () -> StyleSheet.apply(document, styleSheet));
  }

  private static void checkGiven(byte[] chart) {
    if (chart == null || chart.length == 0) {
      throw new ChartException("The chart is empty; chart XML or graph language is expected.");
    }
  }

  private static Rendering rendering(byte[] chartBytes, ByteBuffer data, double size,
      String language, byte[] texts, String style, byte[] styleDocument) {
    checkGiven(chartBytes);
    Chart chart = TemplatedChart.read(chartBytes);
    DrawOptions options = RenderOptions.of(chart, language, texts, style, styleDocument);
    // Checked before the work is done, not after.
    Picture.ofPercent(chart.size().width(), chart.size().height(), size, graphics -> {});
    ChartDrawing drawing = ChartDrawing.prepare(chart, ChartData.read(data, chart), options);
    Picture picture = Picture.ofPercent(drawing.width(), drawing.height(), size, drawing::draw);
    String title = chart.titles().title();
    return new Rendering(
        drawing, picture, title == null ? null : options.messages().getOrDefault(title, title));
  }

  /**
   * What goes wrong inside a library still ends as a message, with the cause attached for whoever
   * looks for the fault.
   */
  private static <T> T guarded(Supplier<T> work) {
    return guarded("The chart cannot be drawn, by a fault of the drawing: ", work);
  }

  /** @param fault what a mistake of this library is called in the message */
  private static <T> T guarded(String fault, Supplier<T> work) {
    try {
      return work.get();
    } catch (ChartException e) {
      throw e;
    } catch (UncheckedIOException e) {
      IOException cause = e.getCause();
      throw new ChartException("The picture cannot be written: " + cause.getMessage() + ".", e);
    } catch (RuntimeException e) {
      throw new ChartException(fault + e, e);
    } catch (StackOverflowError e) {
      throw ChartException.tooLittleStack(e);
    } catch (OutOfMemoryError e) {
      throw new ChartException(
          "The Java heap is full; choose a smaller size or less data, or give the JVM more memory"
              + " (-Xmx).",
          e);
    }
  }
}
