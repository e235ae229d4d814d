// SPDX-License-Identifier: Apache-2.0
package com.tesk.vizconverter;

import java.util.function.Supplier;
import org.chartbridge.chart.ChartException;
import org.chartbridge.client.ClientTemplate;
import org.chartbridge.format.ChartUpgrade;
import org.chartbridge.format.GraphConversion;
import org.chartbridge.stylesheet.StyleSheet;

/**
 * What the two native converters call. One conversion at a time.
 *
 * <p>The converter of charts keeps its object: the graph language to chart XML, and older chart XML
 * to the current version. Nothing is thrown at it; a failure is null, and {@link #getErrorMessage}
 * has its reason.
 *
 * <p>The converter of templates makes a new object for each conversion and can ask it nothing
 * afterwards. A failure is thrown at it, so that its reason gets into the host's exception dump.
 */
public final class VizConverter {
  private String errorMessage;

  /** The native side makes its object with this constructor. */
  public VizConverter() {
    errorMessage = null;
  }

  /**
   * Turns a graph-language text into chart XML.
   *
   * @param gpl the text in UTF-8
   * @return chart XML of the current version in UTF-8, or null on failure
   */
  public byte[] ConvertGPL(byte[] gpl) {
    return convert(gpl, GraphConversion::toXml);
  }

  /**
   * Upgrades chart XML.
   *
   * @param xml a chart of any known version
   * @return chart XML of the current version; a document that is current already comes back byte
   *     for byte. Null on failure
   */
  public byte[] ConvertXml(byte[] xml) {
    return convert(xml, ChartUpgrade::upgrade);
  }

  /**
   * Fills the slots of a client template.
   *
   * @param template JSON in UTF-8: the template and, behind it if wanted, an object with values for
   *     its slots
   * @return chart XML of the current version in UTF-8, never null
   * @throws ChartException when it fails; the message says where in the JSON text and why
   */
  public byte[] graphBoardConverterToXml(byte[] template) {
    return thrown(() -> ClientTemplate.toXml(template));
  }

  /**
   * Applies a style sheet to a chart.
   *
   * @param chart chart XML or another XML document, or a chart in the graph language, which becomes
   *     chart XML first
   * @param styleSheet XSLT 1.0; it can load nothing and call no Java
   * @return what the style sheet puts out, in its output encoding; empty for nothing, never null
   * @throws ChartException when it fails; the message says which of the two is wrong, where and why
   */
  public byte[] graphBoardApplyStyleSheet(byte[] chart, byte[] styleSheet) {
    return thrown(() -> StyleSheet.apply(chart, styleSheet));
  }

  /** What goes wrong inside a library still ends as one line for people. */
  private static byte[] thrown(Supplier<byte[]> conversion) {
    try {
      return conversion.get();
    } catch (ChartException e) {
      throw e;
    } catch (StackOverflowError e) {
      throw ChartException.tooLittleStack(e);
    } catch (RuntimeException e) {
      throw new ChartException("The conversion failed unexpectedly: " + e, e);
    } catch (OutOfMemoryError e) {
      throw new ChartException(
          "The Java heap is full; give the JVM more memory (-Xmx) for such a document.", e);
    }
  }

  /**
   * Why the last conversion failed, in a line for people; null when it did not, or when there was
   * none.
   */
  public String getErrorMessage() {
    return errorMessage;
  }

  private byte[] convert(byte[] source, Conversion conversion) {
    errorMessage = null;
    if (source == null) {
      errorMessage = "there is nothing to convert";
      return null;
    }
    try {
      return conversion.apply(source);
    } catch (ChartException e) {
      errorMessage = e.getMessage();
    } catch (StackOverflowError e) {
      errorMessage = ChartException.tooLittleStack(e).getMessage();
    } catch (OutOfMemoryError e) {
      errorMessage = "the Java heap is full; give the JVM more memory (-Xmx)";
    } catch (RuntimeException e) {
      // A mistake of this library; the host still gets an answer, and the name tells us where to
      // look.
      errorMessage = "the conversion failed unexpectedly: " + e;
    }
    return null;
  }

  private interface Conversion {
    byte[] apply(byte[] source);
  }
}
