// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.tree;

import java.math.BigDecimal;
import java.time.DateTimeException;
import java.time.LocalDate;
import java.time.LocalDateTime;
import java.time.LocalTime;

/**
 * Tells whether two texts are the same value of a PMML data type: {@code 0.0} and {@code 0} are one
 * number, but two strings.
 */
final class ValueIdentity {
  /** Longer texts are no numbers of use, and reading them takes the square of their length. */
  private static final int MOST_DIGITS = 1000;

  private ValueIdentity() {}

  /** Whether values of a type are numbers; such are also the types that count days or seconds. */
  static boolean isNumeric(String dataType) {
    return switch (dataType) {
      case "integer", "float", "double", "timeSeconds" -> true;
      default ->
          dataType.startsWith("dateDaysSince") || dataType.startsWith("dateTimeSecondsSince");
    };
  }

  /** A text that is equal for equal values; a text that is none of the type stays as it is. */
  static String of(String dataType, String text) {
    try {
      return switch (dataType) {
        case "integer" -> integer(text.strip());
        case "float" -> Float.toString(Float.parseFloat(text.strip()) + 0f);
        case "boolean" -> truth(text.strip());
        case "date" -> LocalDate.parse(text.strip()).toString();
        case "time" -> LocalTime.parse(text.strip()).toString();
        case "dateTime" -> LocalDateTime.parse(text.strip()).toString();
        // Adding zero makes one zero of the two.
        default -> isNumeric(dataType)
            ? Double.toString(Double.parseDouble(text.strip()) + 0.0) : text;
      };
    } catch (NumberFormatException | DateTimeException e) {
      return text;
    }
  }

  /** Integers may have more digits than a double. */
  private static String integer(String text) {
    return text.length() > MOST_DIGITS
        ? text : new BigDecimal(text).stripTrailingZeros().toString();
  }

  private static String truth(String text) {
    return switch (text) {
      case "1" -> "true";
      case "0" -> "false";
      default -> text;
    };
  }
}
