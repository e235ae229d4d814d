// SPDX-License-Identifier: Apache-2.0
package com.tesk.vizconverter;

import org.chartbridge.chart.ChartException;
import org.chartbridge.format.ChartUpgrade;
import org.chartbridge.format.ChartWriter;
import org.chartbridge.language.GraphLanguage;

/**
 * What the native converter calls: the graph language to chart XML, and older chart XML to the
 * current version. Nothing is thrown at native code; a failure is null, and {@link
 * #getErrorMessage} has its reason. One conversion at a time.
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
    return convert(gpl, source -> ChartWriter.write(GraphLanguage.read(source)));
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
    } catch (RuntimeException | StackOverflowError e) {
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
