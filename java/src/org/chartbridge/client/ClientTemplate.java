// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.client;

import java.util.List;
import org.chartbridge.chart.Chart;
import org.chartbridge.chart.ChartException;
import org.chartbridge.format.ChartReader;
import org.chartbridge.format.ChartWriter;

/** Converts client templates to chart XML. */
public final class ClientTemplate {
  private static final String VERSION = "1";

  private ClientTemplate() {}

  /**
   * Fills the slots of a template.
   *
   * @param template JSON in UTF-8: a template and, behind it if wanted, an object with values for
   *     its slots
   * @return chart XML of the current version in UTF-8
   * @throws ChartException when it is no template, a value does not fit its slot, or the chart that
   *     comes out makes no sense; the message starts with line and column of the JSON text
   */
  public static byte[] toXml(byte[] template) {
    if (template == null || template.length == 0) {
      throw new ChartException("The template is empty.");
    }
    List<JsonValue> texts = JsonReader.read(template);
    if (texts.isEmpty()) {
      throw new ChartException("The template is empty.");
    }
    if (texts.size() > 2) {
      throw texts.get(2).error("a template and an object with values may stand here, nothing more");
    }
    return toXml(texts.get(0), texts.size() == 2 ? texts.get(1) : null);
  }

  private static byte[] toXml(JsonValue template, JsonValue values) {
    Members in = new Members(template, "the template");
    checkVersion(in.needed("version", JsonValue.Kind.NUMBER));
    in.text("$schema");
    in.text("name");
    in.text("description");
    SlotValues slots = new SlotValues(in.items("slots"));
    JsonValue stored = in.value("values");
    JsonValue chart = in.needed("chart", JsonValue.Kind.OBJECT);
    in.finish();
    if (stored != null) {
      slots.take(stored);
    }
    if (values != null) {
      slots.take(values);
    }
    return ChartWriter.write(chart(chart, slots));
  }

  private static void checkVersion(JsonValue version) {
    if (!version.text().equals(VERSION)) {
      throw version.error(
          "the template is of version " + version.text() + "; version 1 is known here");
    }
  }

  private static Chart chart(JsonValue chart, SlotValues slots) {
    ChartTree tree = new ChartTree(ChartReader.NAMESPACE, slots);
    try {
      return ChartReader.read(tree.chart(chart));
    } catch (ChartException e) {
      throw tree.explained(e);
    }
  }
}
