// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.vega;

import java.io.IOException;
import java.io.OutputStream;
import java.io.OutputStreamWriter;
import java.io.Writer;
import java.nio.charset.Charset;
import java.nio.charset.CharsetEncoder;
import java.util.HexFormat;

/**
 * Writes JSON text in a charset. A character that the charset lacks can stand only within a text of
 * JSON, where an escape means the same.
 */
final class EscapingWriter extends Writer {
  private final Writer out;
  private final CharsetEncoder encoder;
  private final boolean asciiOnly;
  /** The first half of a character beyond the basic plane, or 0. */
  private char high;

  /** @param asciiOnly whether all other characters are escaped, too */
  EscapingWriter(OutputStream out, Charset charset, boolean asciiOnly) {
    this.out = new OutputStreamWriter(out, charset);
    this.asciiOnly = asciiOnly;
    encoder = charset.newEncoder();
  }

  @Override
  public void write(char[] text, int from, int length) throws IOException {
    int start = from;
    for (int i = from; i < from + length; i++) {
      if (text[i] < 0x80 && high == 0) {
        continue;
      }
      out.write(text, start, i - start);
      writeWide(text[i]);
      start = i + 1;
    }
    out.write(text, start, from + length - start);
  }

  private void writeWide(char c) throws IOException {
    if (high != 0) {
      char first = high;
      high = 0;
      if (Character.isLowSurrogate(c)) {
        writeCharacter(new String(new char[] {first, c}));
        return;
      }
      escape(first);
    }
    if (Character.isHighSurrogate(c)) {
      high = c;
    } else if (c < 0x80) {
      out.write(c);
    } else {
      writeCharacter(String.valueOf(c));
    }
  }

  private void writeCharacter(String character) throws IOException {
    if (!asciiOnly && encoder.canEncode(character)) {
      out.write(character);
      return;
    }
    for (int i = 0; i < character.length(); i++) {
      escape(character.charAt(i));
    }
  }

  private void escape(char c) throws IOException {
    out.write("\\u" + HexFormat.of().toHexDigits(c));
  }

  @Override
  public void flush() throws IOException {
    out.flush();
  }

  @Override
  public void close() throws IOException {
    out.close();
  }
}
