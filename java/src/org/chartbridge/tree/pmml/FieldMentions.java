// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.tree.pmml;

import java.util.ArrayList;
import java.util.List;
import org.chartbridge.chart.Suggestions;
import org.chartbridge.tree.FieldCatalog;

/**
 * The names of fields that a model's conditions mention before the fields are known. A condition on
 * a field that there is not can never hold, so the picture would show branches that nothing takes.
 */
final class FieldMentions {
  private record Mention(int offset, String element, String field) {}

  private final PmmlCursor in;
  private final FieldCatalog fields;
  private final List<Mention> unknown = new ArrayList<>();

  /** @param fields what is known so far; it may grow until {@link #check} */
  FieldMentions(PmmlCursor in, FieldCatalog fields) {
    this.in = in;
    this.fields = fields;
  }

  /** Notes that the current element mentions a field. */
  void add(String field) {
    if (fields.find(field) == null) {
      unknown.add(new Mention(in.offset(), in.name(), field));
    }
  }

  /** @throws org.chartbridge.tree.TreeException when a mentioned field is still not known */
  void check() {
    for (Mention mention : unknown) {
      if (fields.find(mention.field()) == null) {
        String closest = Suggestions.closest(mention.field(), fields.names());
        throw in.error(mention.offset(), "<" + mention.element() + "> asks for the field \""
            + mention.field() + "\", which the document does not define"
            + (closest == null ? "; a <DataField> in the <DataDictionary> would"
                : "; the nearest that it defines is \"" + closest + "\""));
      }
    }
  }
}
