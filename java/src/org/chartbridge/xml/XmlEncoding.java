// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.xml;

import java.nio.ByteBuffer;
import java.nio.charset.CharacterCodingException;
import java.nio.charset.Charset;
import java.nio.charset.CharsetDecoder;
import java.nio.charset.CodingErrorAction;
import java.nio.charset.StandardCharsets;
import java.nio.charset.UnsupportedCharsetException;
import java.nio.charset.IllegalCharsetNameException;
import java.util.regex.Matcher;
import java.util.regex.Pattern;
import org.chartbridge.chart.ChartException;

/**
 * Turns the bytes of a document into text: byte order mark first, then the XML declaration, then
 * UTF-8.
 */
public final class XmlEncoding {
  private static final Pattern DECLARED =
      Pattern.compile("^<\\?xml\\s[^>]*?encoding\\s*=\\s*[\"']([A-Za-z0-9._-]+)[\"']");
  private static final int DECLARATION_BYTES = 200;

  private XmlEncoding() {}

  /**
   * The text of a document, without a byte order mark.
   *
   * @throws ChartException when the bytes are not valid in their encoding, or the encoding is
   *     unknown
   */
  public static String decode(byte[] bytes) {
    Charset mark = byteOrderMark(bytes);
    if (mark != null) {
      return decode(bytes, mark, mark == StandardCharsets.UTF_8 ? 3 : 2);
    }
    Charset wide = wideWithoutMark(bytes);
    return decode(bytes, wide != null ? wide : declared(bytes), 0);
  }

  /** The text of bytes that are known to be UTF-8, without a byte order mark. */
  public static String decodeUtf8(byte[] bytes) {
    boolean marked = byteOrderMark(bytes) == StandardCharsets.UTF_8;
    return decode(bytes, StandardCharsets.UTF_8, marked ? 3 : 0);
  }

  /** The encoding that a byte order mark announces, or null. */
  public static Charset byteOrderMark(byte[] bytes) {
    if (startsWith(bytes, 0xEF, 0xBB, 0xBF)) {
      return StandardCharsets.UTF_8;
    }
    if (startsWith(bytes, 0xFE, 0xFF)) {
      return StandardCharsets.UTF_16BE;
    }
    return startsWith(bytes, 0xFF, 0xFE) ? StandardCharsets.UTF_16LE : null;
  }

  /** UTF-16 that starts with {@code <} and has no byte order mark, or null. */
  public static Charset wideWithoutMark(byte[] bytes) {
    if (startsWith(bytes, 0, '<')) {
      return StandardCharsets.UTF_16BE;
    }
    return startsWith(bytes, '<', 0) ? StandardCharsets.UTF_16LE : null;
  }

  private static Charset declared(byte[] bytes) {
    int length = Math.min(bytes.length, DECLARATION_BYTES);
    String head = new String(bytes, 0, length, StandardCharsets.ISO_8859_1);
    Matcher declared = DECLARED.matcher(head);
    if (!declared.find()) {
      return StandardCharsets.UTF_8;
    }
    try {
      return Charset.forName(declared.group(1));
    } catch (UnsupportedCharsetException | IllegalCharsetNameException e) {
      throw new ChartException("line 1, column 1: the encoding \"" + declared.group(1)
              + "\" is not known here; use UTF-8",
          e);
    }
  }

  private static String decode(byte[] bytes, Charset charset, int skip) {
    ByteBuffer in = ByteBuffer.wrap(bytes, skip, bytes.length - skip);
    CharsetDecoder decoder = charset.newDecoder().onMalformedInput(CodingErrorAction.REPORT);
    decoder.onUnmappableCharacter(CodingErrorAction.REPORT);
    try {
      return decoder.decode(in).toString();
    } catch (CharacterCodingException e) {
      String place =
          charset == StandardCharsets.UTF_8 ? "line " + line(bytes, in.position()) + ": " : "";
      throw new ChartException(
          place + "byte " + in.position() + " is not valid " + charset.name(), e);
    }
  }

  private static int line(byte[] bytes, int offset) {
    int line = 1;
    for (int i = 0; i < offset; i++) {
      line += bytes[i] == '\n' ? 1 : 0;
    }
    return line;
  }

  private static boolean startsWith(byte[] bytes, int... start) {
    if (bytes.length < start.length) {
      return false;
    }
    for (int i = 0; i < start.length; i++) {
      if ((bytes[i] & 0xFF) != start[i]) {
        return false;
      }
    }
    return true;
  }
}
