// SPDX-License-Identifier: Apache-2.0
package com.tesk.java_client.core.documents.output.export;

import java.io.IOException;
import java.io.UncheckedIOException;
import java.nio.file.Path;
import java.util.ArrayList;
import java.util.List;
import java.util.function.Supplier;
import org.chartbridge.chart.Chart;
import org.chartbridge.chart.ChartException;
import org.chartbridge.image.OutputFiles;
import org.chartbridge.template.TemplatedChart;
import org.chartbridge.vega.DataLink;
import org.chartbridge.vega.GeoJson;
import org.chartbridge.vega.InteractiveOptions;
import org.chartbridge.vega.JsonText;
import org.chartbridge.vega.OptionsReader;
import org.chartbridge.vega.VegaLiteChart;

/**
 * Writes charts as Vega-Lite documents. The native JSON editor makes one of these and calls it by
 * name and signature.
 *
 * <p>What both exports share:
 *
 * <ul>
 *   <li>{@code codepage}: the charset of the files; null or empty for UTF-8. Characters that do not
 *       fit it are escaped.
 *   <li>{@code chart}: chart XML, current or older, or graph language. It brings its own data. A
 *       template that it names is applied ({@link TemplatedChart}).
 *   <li>{@code filePath}: the document, which appears whole or not at all; its folder must exist.
 *   <li>{@code imageFormat}: how viewers draw the document: 2 as pixels, 5 as SVG.
 * </ul>
 *
 * <p>Every failure is a {@link ChartException} with a message for the person who asked for the
 * chart. One export at a time; the object can be used for as many as needed.
 */
public final class JsonImager {
  private static final int PNG = 2;
  private static final int SVG = 5;

  static {
    // Before the first class that looks for a display.
    if (System.getProperty("java.awt.headless") == null) {
      System.setProperty("java.awt.headless", "true");
    }
  }

  private final List<byte[]> geoJson = new ArrayList<>();

  /** The native side makes its object with this constructor. */
  public JsonImager() {}

  /**
   * Adds a map layer to the next interactive export, above those added before.
   *
   * @param document GeoJSON (RFC 7946) in UTF-8; it is read by the export
   */
  public void addGeoJson(byte[] document) {
    geoJson.add(document == null ? new byte[0] : document.clone());
  }

  /**
   * Writes a chart that stands still, with its data inside.
   *
   * @param isTemplate whether to leave the data out, to be supplied by whoever shows the chart
   * @return true: the file is there
   */
  public boolean exportChartJsonToFile(
      String codepage, byte[] chart, boolean isTemplate, String filePath, int imageFormat) {
    return guarded(() -> {
      JsonText text = JsonText.in(codepage);
      String renderer = renderer(imageFormat);
      Path target = OutputFiles.path(filePath);
      Chart source = read(chart);
      VegaLiteChart made = isTemplate ? VegaLiteChart.template(source, renderer)
                                      : VegaLiteChart.still(source, renderer);
      Object json = made.json();
      OutputFiles.write(target, out -> text.writeDocument(json, out));
      return true;
    });
  }

  /**
   * Writes a chart with tooltips, selection and zoom, over the map layers that were added since the
   * last such export, if any. They belong to this export alone, also when it fails.
   *
   * @param jsonPath the file of the chart's rows, which the document refers to by a relative URL;
   *     both files appear together or neither does. Not used when the options put the rows into the
   *     document
   * @param options a JSON object; null or empty for the defaults
   * @return true: the files are there
   */
  public boolean exportInteractiveJsonToFile(String codepage, byte[] chart, String jsonPath,
      String options, String filePath, int imageFormat) {
    List<byte[]> documents = List.copyOf(geoJson);
    geoJson.clear();
    return guarded(() -> {
      JsonText text = JsonText.in(codepage);
      String renderer = renderer(imageFormat);
      InteractiveOptions wanted = OptionsReader.read(options);
      Path target = OutputFiles.path(filePath);
      Path data = wanted.separateData() ? dataPath(jsonPath) : null;
      String url = data == null ? null : DataLink.between(target, data);
      List<GeoJson> maps = new ArrayList<>();
      for (byte[] document : documents) {
        maps.add(GeoJson.read(document, maps.size() + 1));
      }
      VegaLiteChart made =
          VegaLiteChart.interactive(read(chart), wanted, maps, url, renderer);
      Object json = made.json();
      try (OutputFiles files = new OutputFiles()) {
        if (data != null) {
          files.stage(data, out -> text.writeData(made.rows(), out));
        }
        files.stage(target, out -> text.writeDocument(json, out));
        files.commit();
      }
      return true;
    });
  }

  private static Path dataPath(String jsonPath) {
    if (jsonPath == null || jsonPath.isEmpty()) {
      throw new ChartException("The JSON path is empty; name the file for the chart's rows, or put "
          + "them into the chart with the option \"data\": \"inline\".");
    }
    return OutputFiles.path(jsonPath);
  }

  private static Chart read(byte[] chart) {
    if (chart == null || chart.length == 0) {
      throw new ChartException("The chart is empty; chart XML or graph language is expected.");
    }
    return TemplatedChart.read(chart);
  }

  private static String renderer(int imageFormat) {
    return switch (imageFormat) {
      case PNG -> "canvas";
      case SVG -> "svg";
      default -> throw new ChartException("The image format " + imageFormat
          + " has no form in chart JSON, which is drawn as 2 (pixels) or 5 (SVG).");
    };
  }

  /**
   * What goes wrong inside a library still ends as a message, with the cause attached for whoever
   * looks for the fault.
   */
  private static boolean guarded(Supplier<Boolean> work) {
    try {
      return work.get();
    } catch (ChartException e) {
      throw e;
    } catch (UncheckedIOException e) {
      IOException cause = e.getCause();
      throw new ChartException("The chart cannot be written: " + cause.getMessage() + ".", e);
    } catch (StackOverflowError e) {
      throw ChartException.tooLittleStack(e);
    } catch (RuntimeException e) {
      throw new ChartException("The chart cannot be exported, by a fault of the export: " + e, e);
    } catch (OutOfMemoryError e) {
      throw new ChartException(
          "The Java heap is full; use less data, or give the JVM more memory (-Xmx).", e);
    }
  }
}
