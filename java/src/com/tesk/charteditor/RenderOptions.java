// SPDX-License-Identifier: Apache-2.0
package com.tesk.charteditor;

import java.io.IOException;
import java.io.StringReader;
import java.nio.ByteBuffer;
import java.nio.charset.CharacterCodingException;
import java.nio.charset.StandardCharsets;
import java.util.HashMap;
import java.util.IllformedLocaleException;
import java.util.Locale;
import java.util.Map;
import java.util.Properties;
import org.chartbridge.chart.Chart;
import org.chartbridge.chart.ChartException;
import org.chartbridge.draw.DrawOptions;
import org.chartbridge.draw.Style;

/**
 * Reads the two pairs of a text and bytes that come with every request: the language and the
 * style.
 */
final class RenderOptions {
  private static final String BYTE_ORDER_MARK = "\uFEFF";

  private RenderOptions() {}

  static DrawOptions of(
      Chart chart, String language, byte[] texts, String style, byte[] styleDocument) {
    return new DrawOptions(locale(language), style(chart, style, styleDocument), messages(texts));
  }

  private static Locale locale(String tag) {
    if (tag == null || tag.isBlank()) {
      return Locale.ROOT;
    }
    try {
      return new Locale.Builder().setLanguageTag(tag.trim().replace('_', '-')).build();
    } catch (IllformedLocaleException e) {
      throw new ChartException(
          "The language \"" + tag + "\" is no BCP 47 tag; expected one such as de or pt-BR.", e);
    }
  }

  private static Style style(Chart chart, String name, byte[] document) {
    Style named = name == null || name.isBlank() ? Style.of(chart) : Style.named(name.trim());
    return document == null || document.length == 0 ? named : Style.parse(document, named);
  }

  private static Map<String, String> messages(byte[] texts) {
    Map<String, String> messages = new HashMap<>();
    if (texts == null || texts.length == 0) {
      return messages;
    }
    Properties properties = new Properties();
    try {
      properties.load(new StringReader(decoded(texts)));
    } catch (CharacterCodingException e) {
      throw new ChartException("The chart texts (properties) are not UTF-8.", e);
    } catch (IOException | IllegalArgumentException e) {
      throw new ChartException(
          "The chart texts are no properties file: " + e.getMessage(), e);
    }
    for (String key : properties.stringPropertyNames()) {
      messages.put(key, properties.getProperty(key));
    }
    return messages;
  }

  private static String decoded(byte[] bytes) throws CharacterCodingException {
    String text = StandardCharsets.UTF_8.newDecoder().decode(ByteBuffer.wrap(bytes)).toString();
    return text.startsWith(BYTE_ORDER_MARK) ? text.substring(1) : text;
  }
}
