// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.client;

import java.util.ArrayList;
import java.util.List;
import java.util.regex.Pattern;
import org.chartbridge.chart.AxisLimit;
import org.chartbridge.chart.ChartException;
import org.chartbridge.chart.ColumnKind;
import org.chartbridge.chart.Suggestions;
import org.chartbridge.chart.Words;

/** A named place in a template that takes a value of one kind. */
final class Slot {
  private static final Pattern COLOR = Pattern.compile("#[0-9a-fA-F]{6}");

  final String name;
  final SlotKind kind;
  /** For columns, what they have to hold; null when that does not matter. */
  final ColumnKind holds;
  /** Where the slot is declared. */
  final JsonValue place;
  private final Double min;
  private final Double max;
  private final boolean whole;
  private final List<String> choices = new ArrayList<>();
  private final boolean optional;
  private final JsonValue standard;

  /**
   * @throws ChartException when it is no slot, or its default does not fit it
   */
  Slot(JsonValue declaration) {
    place = declaration;
    Members in = new Members(declaration, "a slot");
    name = in.name("name");
    kind = word(SlotKind.class, in.needed("kind", JsonValue.Kind.TEXT), "kind");
    in.text("label");
    in.text("description");
    optional = in.flag("optional");
    standard = in.value("default");
    JsonValue held = kind == SlotKind.COLUMN ? in.value("holds") : null;
    holds = held == null ? null : word(ColumnKind.class, held, "holds");
    boolean number = kind == SlotKind.NUMBER;
    min = number ? in.number("min") : null;
    max = number ? in.number("max") : null;
    whole = number && in.flag("whole");
    if (kind == SlotKind.CHOICE) {
      readChoices(in);
    }
    in.finish();
    if (standard != null) {
      checked(standard);
    }
  }

  private <E extends Enum<E>> E word(Class<E> type, JsonValue value, String member) {
    value.expect(JsonValue.Kind.TEXT, member + " of slot \"" + name + "\"");
    E constant = Words.find(type, value.text());
    if (constant == null) {
      throw value.error(member + " of slot \"" + name + "\" is " + value.shown() + "; "
          + Suggestions.expected(value.text(), Words.all(type)));
    }
    return constant;
  }

  private void readChoices(Members in) {
    for (JsonValue choice : in.needed("choices", JsonValue.Kind.ARRAY).items()) {
      choices.add(choice.expect(JsonValue.Kind.TEXT, "a choice of slot \"" + name + "\"").text());
    }
    if (choices.isEmpty()) {
      throw place.error("slot \"" + name + "\" offers no choices");
    }
  }

  /**
   * The value that the slot has.
   *
   * @param given what was given for it: null for nothing; JSON's null for "none", even where there
   *     is a default
   * @return null when the slot is left empty, which only an optional one can be
   * @throws ChartException when the value does not fit, or is missing
   */
  String value(JsonValue given) {
    boolean none = given != null && given.is(JsonValue.Kind.NULL);
    JsonValue chosen = given == null ? standard : given;
    if (chosen != null && !none) {
      return checked(chosen);
    }
    if (optional) {
      return null;
    }
    throw (given == null ? place : given).error(
        "slot \"" + name + "\" has no value; expected " + expectation());
  }

  boolean hasDefault() {
    return standard != null;
  }

  private String checked(JsonValue value) {
    boolean scalar = value.is(JsonValue.Kind.TEXT) || value.is(JsonValue.Kind.NUMBER)
        || value.is(JsonValue.Kind.BOOLEAN);
    if (!scalar || !fits(value)) {
      throw value.error("the value of slot \"" + name + "\" is " + value.shown() + "; expected "
          + expectation());
    }
    return value.text();
  }

  /** Numbers and booleans may come as texts too, as people type them. */
  private boolean fits(JsonValue value) {
    String text = value.text();
    boolean isText = value.is(JsonValue.Kind.TEXT);
    return switch (kind) {
      case COLUMN -> isText && !text.isBlank();
      case NUMBER -> !value.is(JsonValue.Kind.BOOLEAN) && fitsRange(AxisLimit.parseNumber(text));
      case TEXT -> isText;
      case BOOLEAN -> !value.is(JsonValue.Kind.NUMBER)
          && (text.equals("true") || text.equals("false"));
      case COLOR -> isText && COLOR.matcher(text).matches();
      case CHOICE -> isText && choices.contains(text);
    };
  }

  private boolean fitsRange(Double number) {
    boolean outside = number == null || min != null && number < min || max != null && number > max;
    return !outside && (!whole || number == Math.rint(number));
  }

  private String expectation() {
    return switch (kind) {
      case COLUMN -> "the name of a column" + (holds == null ? "" : switch (holds) {
        case NUMBER -> " of numbers";
        case CATEGORY -> " of categories";
        case TIME -> " of times";
      });
      case NUMBER -> (whole ? "a whole number" : "a number") + range();
      case TEXT -> "a text";
      case BOOLEAN -> "true or false";
      case COLOR -> "a colour such as #0072b2";
      case CHOICE -> Suggestions.oneOf(choices).replaceFirst("^expected ", "");
    };
  }

  private String range() {
    String from = min == null ? null : AxisLimit.numberText(min);
    String to = max == null ? null : AxisLimit.numberText(max);
    if (from != null && to != null) {
      return " from " + from + " to " + to;
    }
    if (from != null) {
      return " of at least " + from;
    }
    return to == null ? "" : " of at most " + to;
  }
}
