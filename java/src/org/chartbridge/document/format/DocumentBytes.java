// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.document.format;

import java.io.ByteArrayInputStream;
import java.io.ByteArrayOutputStream;
import java.io.EOFException;
import java.io.IOException;
import java.io.InputStream;
import java.io.UncheckedIOException;
import java.util.zip.GZIPInputStream;
import java.util.zip.GZIPOutputStream;
import org.chartbridge.chart.ChartException;
import org.chartbridge.xml.SafeXml;

/** Documents compressed with gzip (RFC 1952) or not. */
public final class DocumentBytes {
  private static final int BUFFER = 1 << 16;

  private DocumentBytes() {}

  public static boolean isCompressed(byte[] bytes) {
    return bytes.length >= 2 && (bytes[0] & 0xFF) == 0x1F && (bytes[1] & 0xFF) == 0x8B;
  }

  /**
   * The document itself.
   *
   * @throws ChartException when compressed bytes are damaged or the document is too large
   */
  public static byte[] expand(byte[] bytes) {
    return isCompressed(bytes) ? inflate(bytes) : bytes;
  }

  private static byte[] inflate(byte[] bytes) {
    ByteArrayOutputStream out = new ByteArrayOutputStream(Math.max(BUFFER, bytes.length));
    byte[] buffer = new byte[BUFFER];
    try (InputStream in = new GZIPInputStream(new ByteArrayInputStream(bytes), BUFFER)) {
      for (int n = in.read(buffer); n >= 0; n = in.read(buffer)) {
        out.write(buffer, 0, n);
        if (out.size() > SafeXml.MAX_BYTES) {
          throw new ChartException("the compressed document is larger than "
              + (SafeXml.MAX_BYTES >> 20) + " MB, the most that is read");
        }
      }
    } catch (EOFException e) {
      throw new ChartException("the compressed document is cut off", e);
    } catch (IOException e) {
      throw new ChartException("the compressed document is damaged: " + e.getMessage(), e);
    }
    return out.toByteArray();
  }

  /** The same, compressed. */
  public static byte[] compress(byte[] document) {
    ByteArrayOutputStream out = new ByteArrayOutputStream(document.length / 4 + 64);
    try (GZIPOutputStream gzip = new GZIPOutputStream(out, BUFFER)) {
      gzip.write(document);
    } catch (IOException e) {
      throw new UncheckedIOException(e);
    }
    return out.toByteArray();
  }
}
