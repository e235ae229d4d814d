// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.document.text;

import java.io.IOException;
import java.io.OutputStream;
import java.nio.ByteBuffer;
import java.nio.CharBuffer;
import java.nio.charset.Charset;
import java.nio.charset.CharsetEncoder;
import java.nio.charset.CodingErrorAction;
import java.nio.charset.CharacterCodingException;
import org.chartbridge.chart.ChartException;

/** Writes text in an encoding, and says which character that encoding lacks. */
final class EncodedText {
  private EncodedText() {}

  static void write(String text, Charset charset, OutputStream out) throws IOException {
    if (!charset.canEncode()) {
      throw new ChartException("nothing can be written in the charset " + charset.name());
    }
    CharsetEncoder encoder = charset.newEncoder()
        .onMalformedInput(CodingErrorAction.REPORT)
        .onUnmappableCharacter(CodingErrorAction.REPORT);
    CharBuffer in = CharBuffer.wrap(text);
    try {
      ByteBuffer bytes = encoder.encode(in);
      out.write(bytes.array(), bytes.arrayOffset() + bytes.position(), bytes.remaining());
    } catch (CharacterCodingException e) {
      int character = text.codePointAt(in.position());
      throw new ChartException(String.format("the charset %s lacks the character \"%s\" (U+%04X);"
              + " another \"charset\", such as UTF-8, has it",
          charset.name(), Character.toString(character), character), e);
    }
  }
}
