// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.bench;

import com.tesk.charteditor.template.ApplyTemplate;

/** Calls native code as the chart classes do. */
public final class TemplateCalls {
  private TemplateCalls() {}

  public static void call(String chart, String template) {
    if (ApplyTemplate.apply(chart, template).isEmpty()) {
      throw new IllegalStateException("the template was not applied");
    }
  }
}
