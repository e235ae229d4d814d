// SPDX-License-Identifier: Apache-2.0
package com.tesk.charteditor.template;

/**
 * Applies chart templates in native code: the one method that Java calls there.
 *
 * <p>The host's process binds it. Whoever wants messages instead of an empty answer or a missing
 * function uses {@link org.chartbridge.template.TemplatedChart}.
 */
public final class ApplyTemplate {
  private ApplyTemplate() {}

  /**
   * Merges a template into a chart. Takes no lock; any number of threads may call it at once.
   *
   * <p>Neither argument may be null: today's JVMs give native code no chance to look. Under the
   * guard that is a {@link NullPointerException}, without it the end of the process.
   *
   * @param chartXml chart XML of version 2
   * @param templateXml a chart template
   * @return the whole merged chart XML; empty when a text cannot be read, and when native code fails
   *     otherwise
   * @throws UnsatisfiedLinkError when the process has no native code for it
   */
  public static native String apply(String chartXml, String templateXml);
}
