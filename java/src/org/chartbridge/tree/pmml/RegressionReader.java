// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.tree.pmml;

import java.util.ArrayList;
import java.util.List;
import org.chartbridge.tree.Embedded;
import org.chartbridge.tree.FieldCatalog;
import org.chartbridge.tree.Remark;

/** Reads regressions that stand within nodes. */
final class RegressionReader {
  private final PmmlCursor in;
  private final FieldMentions mentions;

  RegressionReader(PmmlCursor in, FieldMentions mentions) {
    this.in = in;
    this.mentions = mentions;
  }

  /** Reads the current {@code Regression}. */
  Embedded.Regression read(FieldCatalog fields) {
    int offset = in.offset();
    in.required("functionName");
    boolean classification = in.choice("functionName", 0, "classification", "regression") == 0;
    String normalization = in.attribute("normalizationMethod");
    List<Embedded.Table> tables = new ArrayList<>();
    List<Remark> remarks = new ArrayList<>();
    while (in.nextChild()) {
      switch (in.name()) {
        case "RegressionTable" -> tables.add(table());
        case "Targets" -> remarks.addAll(TargetsReader.of(new TargetsReader(in).read(), null));
        case "LocalTransformations" -> new FieldReader(in).read(fields);
        default -> in.skip();
      }
    }
    if (tables.isEmpty()) {
      throw in.error(offset, "<Regression> has no <RegressionTable>");
    }
    return new Embedded.Regression(
        classification, normalization == null ? "none" : normalization, tables, remarks);
  }

  private Embedded.Table table() {
    String category = in.attribute("targetCategory");
    in.required("intercept");
    double intercept = in.number("intercept", 0);
    List<Embedded.Term> terms = new ArrayList<>();
    while (in.nextChild()) {
      switch (in.name()) {
        case "NumericPredictor", "CategoricalPredictor" -> terms.add(predictor());
        case "PredictorTerm" -> terms.add(product());
        default -> in.skip();
      }
    }
    return new Embedded.Table(category, intercept, terms);
  }

  private double coefficient() {
    in.required("coefficient");
    return in.number("coefficient", 0);
  }

  private Embedded.Term predictor() {
    boolean numeric = in.name().equals("NumericPredictor");
    // Both names of the attribute are in use.
    String field = in.attribute("field") == null && in.attribute("name") != null
        ? in.attribute("name") : in.required("field");
    mentions.add(field);
    double coefficient = coefficient();
    Embedded.Factor factor = numeric
        ? new Embedded.Factor(field, in.number("exponent", 1), null)
        : new Embedded.Factor(field, 1, in.required("value"));
    in.skip();
    return new Embedded.Term(coefficient, List.of(factor));
  }

  private Embedded.Term product() {
    double coefficient = coefficient();
    List<Embedded.Factor> factors = new ArrayList<>();
    while (in.nextChild()) {
      if (in.name().equals("FieldRef")) {
        String field = in.required("field");
        mentions.add(field);
        factors.add(new Embedded.Factor(field, 1, null));
      }
      in.skip();
    }
    return new Embedded.Term(coefficient, factors);
  }
}
