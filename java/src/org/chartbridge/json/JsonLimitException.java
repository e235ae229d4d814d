// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.json;

import com.fasterxml.jackson.core.JsonLocation;
import com.fasterxml.jackson.core.JsonProcessingException;

/** JSON that may be right but is more than is read. */
final class JsonLimitException extends JsonProcessingException {
  private static final long serialVersionUID = 1L;

  JsonLimitException(String message, JsonLocation place) {
    super(message, place);
  }
}
