// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.json;

import com.fasterxml.jackson.core.JsonParser;
import com.fasterxml.jackson.core.JsonProcessingException;
import com.fasterxml.jackson.core.JsonToken;
import com.fasterxml.jackson.core.util.JsonParserDelegate;
import java.io.IOException;

/** Counts levels and digits on the way. Every other way to the next token leads through here. */
final class LimitedParser extends JsonParserDelegate {
  private int depth;

  LimitedParser(JsonParser parser) {
    super(parser);
  }

  @Override
  public JsonToken nextToken() throws IOException {
    JsonToken token = next();
    if (token == null) {
      return null;
    }
    if (token.isStructStart() && ++depth > SafeJson.MAX_DEPTH) {
      throw new JsonLimitException(
          "nested more than " + SafeJson.MAX_DEPTH + " levels deep", getTokenLocation());
    }
    if (token.isStructEnd()) {
      depth--;
    }
    if (token.isNumeric() && getTextLength() > SafeJson.MAX_NUMBER_LENGTH) {
      throw new JsonLimitException("a number of more than " + SafeJson.MAX_NUMBER_LENGTH
          + " characters", getTokenLocation());
    }
    return token;
  }

  /** Some versions of the library have a limit of their own for numbers, and no place for it. */
  private JsonToken next() throws IOException {
    try {
      return super.nextToken();
    } catch (JsonProcessingException e) {
      if (e.getLocation() != null) {
        throw e;
      }
      throw new JsonLimitException(e.getOriginalMessage(), getCurrentLocation());
    }
  }

  @Override
  public JsonToken nextValue() throws IOException {
    JsonToken token = nextToken();
    return token == JsonToken.FIELD_NAME ? nextToken() : token;
  }

  @Override
  public String nextFieldName() throws IOException {
    return nextToken() == JsonToken.FIELD_NAME ? currentName() : null;
  }

  @Override
  public String nextTextValue() throws IOException {
    return nextToken() == JsonToken.VALUE_STRING ? getText() : null;
  }

  @Override
  public JsonParser skipChildren() throws IOException {
    JsonToken token = currentToken();
    if (token == null || !token.isStructStart()) {
      return this;
    }
    for (int outside = depth - 1; depth > outside;) {
      if (nextToken() == null) {
        return this;
      }
    }
    return this;
  }
}
