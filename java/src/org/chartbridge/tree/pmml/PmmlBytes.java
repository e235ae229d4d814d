// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.tree.pmml;

import java.io.ByteArrayInputStream;
import java.io.ByteArrayOutputStream;
import java.io.EOFException;
import java.io.IOException;
import java.io.InputStream;
import java.io.UncheckedIOException;
import java.util.zip.GZIPInputStream;
import java.util.zip.GZIPOutputStream;
import org.chartbridge.tree.TreeException;

/** PMML as bytes, compressed with gzip (RFC 1952) or not. */
public final class PmmlBytes {
  /**
   * Forests of some hundred deep trees take about this much; a compressed document that grows
   * larger is an attack.
   */
  public static final int MAX_BYTES = 256 << 20;

  private static final int BUFFER = 1 << 16;

  private PmmlBytes() {}

  public static boolean isCompressed(byte[] bytes) {
    return bytes.length >= 2 && (bytes[0] & 0xFF) == 0x1F && (bytes[1] & 0xFF) == 0x8B;
  }

  /**
   * The document itself.
   *
   * @throws TreeException when compressed bytes are damaged or the document is too large
   */
  public static byte[] expand(byte[] bytes) {
    byte[] document = isCompressed(bytes) ? inflate(bytes, MAX_BYTES) : bytes;
    if (document.length > MAX_BYTES) {
      throw tooLarge(MAX_BYTES);
    }
    return document;
  }

  static byte[] inflate(byte[] bytes, int limit) {
    ByteArrayOutputStream out = new ByteArrayOutputStream(Math.max(BUFFER, bytes.length));
    byte[] buffer = new byte[BUFFER];
    try (InputStream in = new GZIPInputStream(new ByteArrayInputStream(bytes), BUFFER)) {
      for (int n = in.read(buffer); n >= 0; n = in.read(buffer)) {
        out.write(buffer, 0, n);
        if (out.size() > limit) {
          throw tooLarge(limit);
        }
      }
    } catch (EOFException e) {
      throw new TreeException("The compressed PMML document is cut off.", e);
    } catch (IOException e) {
      throw new TreeException(
          "The compressed PMML document is damaged: " + e.getMessage() + ".", e);
    }
    return out.toByteArray();
  }

  /** The document compressed; what is compressed already is not compressed twice. */
  public static byte[] compress(byte[] bytes) {
    byte[] document = expand(bytes);
    ByteArrayOutputStream out = new ByteArrayOutputStream(document.length / 4 + 64);
    try (GZIPOutputStream gzip = new GZIPOutputStream(out, BUFFER)) {
      gzip.write(document);
    } catch (IOException e) {
      throw new UncheckedIOException(e);
    }
    return out.toByteArray();
  }

  private static TreeException tooLarge(int limit) {
    return new TreeException(
        "The PMML document is larger than " + (limit >> 20) + " MB, the most that is read.");
  }
}
