// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.tree.pmml;

import java.util.Arrays;
import org.chartbridge.tree.FieldCatalog;
import org.chartbridge.tree.FieldUse;

/** Reads what a model's mining schema says about the fields that it uses. */
final class MiningFieldReader {
  private static final String[] OUTLIERS = {"asIs", "asMissingValues", "asExtremeValues"};
  private static final String[] INVALID = {"returnInvalid", "asIs", "asMissing", "asValue"};

  private final PmmlCursor in;

  MiningFieldReader(PmmlCursor in) {
    this.in = in;
  }

  /**
   * Reads the current {@code MiningSchema}.
   *
   * @return the field to predict, or null
   */
  String read(FieldCatalog fields) {
    String target = null;
    while (in.nextChild()) {
      if (in.name().equals("MiningField")) {
        String name = in.required("name");
        String usage = in.attribute("usageType");
        boolean isTarget = "target".equals(usage) || "predicted".equals(usage);
        target = isTarget && target == null ? name : target;
        if (!isTarget) {
          fields.use(name, use());
        }
      }
      in.skip();
    }
    return target;
  }

  private FieldUse use() {
    FieldUse.Outliers outliers =
        FieldUse.Outliers.values()[in.choice("outliers", 0, OUTLIERS)];
    FieldUse.Invalid invalid =
        FieldUse.Invalid.values()[in.choice("invalidValueTreatment", 0, INVALID)];
    String invalidReplacement = in.attribute("invalidValueReplacement");
    boolean rejectsMissing = "returnInvalid".equals(in.attribute("missingValueTreatment"));
    // The other treatments only tell where the replacement comes from.
    String replacement = rejectsMissing ? null : in.attribute("missingValueReplacement");
    return new FieldUse(replacement, rejectsMissing, outliers, in.number("lowValue", Double.NaN),
        in.number("highValue", Double.NaN), invalid, invalidReplacement);
  }
}
