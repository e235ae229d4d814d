// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.json;

import com.fasterxml.jackson.core.JsonFactory;
import com.fasterxml.jackson.core.JsonParser;
import com.fasterxml.jackson.core.JsonProcessingException;
import java.io.IOException;

/**
 * The one place where parsers of JSON come from. They refuse what costs more than it can mean:
 * values that nest without end, which exhaust the stack of whoever walks down, and numbers of
 * endless digits, whose conversion takes the square of their length.
 */
public final class SafeJson {
  /** Objects and arrays stand within each other this deep at most. */
  public static final int MAX_DEPTH = 512;

  /** A number has so many characters at most; a double needs 25. */
  public static final int MAX_NUMBER_LENGTH = 1000;

  private SafeJson() {}

  /** A new factory, to be set up further; its parsers of texts and bytes keep to the limits. */
  public static JsonFactory factory() {
    return new LimitedFactory();
  }

  /**
   * Why a text was refused.
   *
   * @param malformed what messages about a text that is no JSON begin with
   */
  public static String reason(JsonProcessingException e, String malformed) {
    return e instanceof JsonLimitException ? e.getOriginalMessage()
                                           : malformed + e.getOriginalMessage();
  }

  private static final class LimitedFactory extends JsonFactory {
    private static final long serialVersionUID = 1L;

    @Override
    public JsonParser createParser(String content) throws IOException {
      return new LimitedParser(super.createParser(content));
    }

    @Override
    public JsonParser createParser(byte[] content) throws IOException {
      return new LimitedParser(super.createParser(content));
    }
  }
}
