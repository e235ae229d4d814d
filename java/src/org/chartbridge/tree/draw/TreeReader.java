// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.tree.draw;

import java.io.UncheckedIOException;
import java.util.function.Supplier;
import org.chartbridge.chart.ChartException;
import org.chartbridge.draw.Style;
import org.chartbridge.tree.SamplePaths;
import org.chartbridge.tree.TreeDocument;
import org.chartbridge.tree.TreeException;
import org.chartbridge.tree.pmml.PmmlBytes;
import org.chartbridge.tree.pmml.PmmlReader;
import org.chartbridge.tree.pmml.SchemaFolder;

/**
 * Reads the documents of a request, and checks them by the schemas that the host supplies.
 * Thread-safe.
 */
public final class TreeReader {
  private volatile SchemaFolder schemas = new SchemaFolder(null);

  /**
   * @param path a folder with schemas such as {@code pmml-4-4.xsd} and {@code
   *     tree-display.xsd}; null or empty for none
   * @throws TreeException when there is no such folder; what was set before stays
   */
  public void setSchemaPath(String path) {
    schemas = new SchemaFolder(path);
  }

  public TreeDocument model(byte[] pmml) {
    if (pmml == null || pmml.length == 0) {
      throw new TreeException("The PMML document is empty.");
    }
    TreeDocument document = PmmlReader.read(pmml);
    if (!document.version().isEmpty()) {
      String file = SchemaFolder.pmmlSchema(document.version());
      schemas.check(file, PmmlBytes.expand(pmml), "PMML document");
    }
    return document;
  }

  public TreeDisplay display(byte[] xml) {
    if (xml == null || xml.length == 0) {
      return TreeDisplay.DEFAULT;
    }
    TreeDisplay display = TreeDisplay.parse(xml);
    schemas.check("tree-display.xsd", xml, "Display data");
    return display;
  }

  /** The style of the display data with what a style document changes in it. */
  public static Style style(TreeDisplay display, byte[] document) {
    Style named = Style.named(display.style());
    return document == null || document.length == 0 ? named : Style.parse(document, named);
  }

  public static SamplePaths samples(TreeDocument model, byte[] csv) {
    return csv == null ? SamplePaths.NONE : SamplePaths.of(model, csv);
  }

  /**
   * What goes wrong inside a library still ends as a message, with the cause attached for whoever
   * looks for the fault.
   */
  public static <T> T guarded(Supplier<T> work) {
    try {
      return work.get();
    } catch (ChartException e) {
      throw e;
    } catch (UncheckedIOException e) {
      throw new TreeException(
          "The picture cannot be written: " + e.getCause().getMessage() + ".", e);
    } catch (StackOverflowError e) {
      throw ChartException.tooLittleStack(e);
    } catch (RuntimeException e) {
      throw new TreeException("The tree cannot be drawn, by a fault of the drawing: " + e, e);
    } catch (OutOfMemoryError e) {
      throw new TreeException("The Java heap is full; show less of the tree, or give the JVM more"
          + " memory (-Xmx).", e);
    }
  }
}
