// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.vega;

import com.fasterxml.jackson.core.JsonGenerator;
import com.fasterxml.jackson.core.util.DefaultIndenter;
import com.fasterxml.jackson.core.util.DefaultPrettyPrinter;
import com.fasterxml.jackson.databind.ObjectMapper;
import java.io.IOException;
import java.io.OutputStream;
import java.io.Writer;
import java.nio.charset.Charset;
import java.nio.charset.IllegalCharsetNameException;
import java.nio.charset.StandardCharsets;
import java.nio.charset.UnsupportedCharsetException;
import org.chartbridge.chart.ChartException;

/** Writes JSON in a charset. Characters that do not fit it are escaped. */
public final class JsonText {
  private static final ObjectMapper JSON = new ObjectMapper();

  private final Charset charset;

  private JsonText(Charset charset) {
    this.charset = charset;
  }

  /**
   * @param codepage the name of a charset; null or empty for UTF-8
   * @throws ChartException when there is no such charset, or when it cannot hold JSON
   */
  public static JsonText in(String codepage) {
    if (codepage == null || codepage.isBlank()) {
      return new JsonText(StandardCharsets.UTF_8);
    }
    try {
      Charset charset = Charset.forName(codepage.trim());
      if (charset.canEncode() && charset.newEncoder().canEncode("{}[]\":,\\u0123456789abcdef")) {
        return new JsonText(charset);
      }
    } catch (IllegalCharsetNameException | UnsupportedCharsetException e) {
      throw new ChartException("There is no codepage \"" + codepage
          + "\"; expected one such as UTF-8, windows-1252 or ISO-8859-1.", e);
    }
    throw new ChartException(
        "The codepage \"" + codepage + "\" cannot be written; choose one such as UTF-8.");
  }

  /** Writes a document, indented for readers. */
  public void writeDocument(Object node, OutputStream out) throws IOException {
    DefaultPrettyPrinter layout = new DefaultPrettyPrinter();
    layout.indentObjectsWith(new DefaultIndenter("  ", "\n"));
    write(node, out, new EscapingWriter(out, charset, false), layout);
  }

  /**
   * Writes data that a document refers to. Viewers take such a file for UTF-8 whatever it is in, so
   * that in another charset all but ASCII is escaped.
   */
  public void writeData(Object rows, OutputStream out) throws IOException {
    boolean unicode = charset.equals(StandardCharsets.UTF_8);
    write(rows, out, new EscapingWriter(out, charset, !unicode), null);
  }

  private static void write(Object value, OutputStream out, Writer writer,
      DefaultPrettyPrinter layout) throws IOException {
    JsonGenerator json = JSON.getFactory().createGenerator(writer);
    json.disable(JsonGenerator.Feature.AUTO_CLOSE_TARGET);
    if (layout != null) {
      json.setPrettyPrinter(layout);
    }
    JSON.writeValue(json, value);
    json.flush();
    writer.write('\n');
    writer.flush();
    out.flush();
  }
}
