// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.vega;

import com.fasterxml.jackson.databind.node.ObjectNode;
import java.util.List;
import org.chartbridge.draw.ElementFacts.Intervals;

/** Steps that put values into bins. */
final class BinSteps {
  /** Of a bin's width, so that a value on an edge is not taken for one just below it. */
  private static final double SLACK = 1e-9;

  private BinSteps() {}

  /** The ends of the bin that holds a value, for bins that are known. */
  static List<ObjectNode> of(Intervals bins, String field, String from, String to) {
    String value = Expr.datum(field);
    String start = Expr.number(bins.start());
    String width = Expr.number(bins.width());
    double end = bins.start() + bins.width() * bins.count();
    // The last bin holds its upper end too.
    String index = "floor((" + value + " - " + start + ") / " + width + " + "
        + Expr.number(SLACK) + ") - (abs(" + value + " - " + Expr.number(end) + ") < "
        + Expr.number(bins.width() * SLACK) + " ? 1 : 0)";
    String lower = start + " + " + width + " * (" + index + ")";
    return List.of(Transforms.calculate(lower, from),
        Transforms.calculate(exact(Expr.datum(from) + " + " + width, bins), to),
        Transforms.calculate(exact(Expr.datum(from), bins), from));
  }

  /** An edge next to nothing is at zero. */
  private static String exact(String edge, Intervals bins) {
    return "abs(" + edge + ") < " + Expr.number(bins.width() * SLACK) + " ? 0 : " + edge;
  }

  /** Round bins, at most so many, over whatever the data turn out to be. */
  static List<ObjectNode> open(
      Fields fields, String field, double most, String from, String to) {
    String start = fields.unique("bin");
    String end = fields.unique("bin");
    ObjectNode step = Json.object("bin", Json.object("maxbins", Json.node(most)));
    step.put("field", field);
    step.set("as", Json.array(start, end));
    // The compiler takes its own bins for numbers, also where they are times.
    return List.of(step, Transforms.calculate("+" + Expr.datum(start), from),
        Transforms.calculate("+" + Expr.datum(end), to));
  }
}
