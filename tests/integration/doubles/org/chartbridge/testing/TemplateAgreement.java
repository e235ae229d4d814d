// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.testing;

import java.lang.reflect.InvocationTargetException;
import java.lang.reflect.Method;
import java.nio.charset.StandardCharsets;
import java.util.List;
import java.util.Random;

/**
 * Damages chart templates at random and asks Java's reader and native code what they think of them.
 * What Java lets through, native code must apply, and the result must be a chart that its schema
 * allows: a failure there has no message.
 */
public final class TemplateAgreement {
  private static final List<String> CHARTS = List.of(
      "<chart xmlns=\"urn:chartbridge:chart:2\" template=\"t\"><elements><bar fill=\"#000000\">"
          + "<x column=\"a\"/></bar><histogram><bin from=\"0\" to=\"1\" value=\"2\"/></histogram>"
          + "</elements><facet column=\"f\"/></chart>",
      "<c:chart xmlns:c=\"urn:chartbridge:chart:2\" width=\"300\"><c:titles title='\"&#65;'/>"
          + "<c:axes><c:x scale=\"category\"/></c:axes><c:elements><c:pie><c:x column=\"a\"/>"
          + "</c:pie></c:elements><c:legend position=\"top\"/></c:chart>",
      "<chart xmlns=\"urn:chartbridge:chart:2\"><data>a,b</data><palette/><elements><line>"
          + "<x column=\"a\"/><y column=\"b\"/><color column=\"c\"/></line><area><x column=\"a\"/>"
          + "<y column=\"b\"/></area></elements></chart>");
  private static final List<String> PIECES = List.of("<x/>", "<bar/>", "<legend/>", "<", ">", "/",
      "\"", "'", "&", "&amp;", "&#65;", "&#0;", " ", "=", "1", "-", ".", "e", "#", "0072b2",
      "true", "log", "category", "override=\"true\"", "min=\"3\"", "xmlns=\"\"", "<!-- -->",
      "<![CDATA[", "]]>", "<?p?>", "\uD83D\uDE00", "\u00E4", "\t", "\n", "\u0001", "title=\"t\"");

  private final Method apply;
  private final Method check;
  private final Method parse;
  private final Object chartSchema;
  private final Method firstError;
  private final Random random;
  private int accepted;
  private int refused;

  private TemplateAgreement(long seed) throws Exception {
    random = new Random(seed);
    apply = Class.forName("com.tesk.charteditor.template.ApplyTemplate")
        .getMethod("apply", String.class, String.class);
    check = Class.forName("org.chartbridge.template.TemplateCheck")
        .getDeclaredMethod("check", byte[].class);
    check.setAccessible(true);
    parse = Class.forName("org.chartbridge.xml.SafeXml").getMethod("parse", byte[].class);
    Class<?> schema = Class.forName("org.chartbridge.format.SchemaCheck");
    chartSchema = schema.getConstructor(String.class).newInstance("chart-format.xsd");
    firstError = schema.getMethod("firstError", parse.getReturnType());
  }

  /**
   * Damages each of the templates {@code rounds} times.
   *
   * @param templates separated by zero characters
   * @return the first disagreement, or how many templates were accepted and refused
   */
  public static String run(String templates, int rounds, long seed) throws Exception {
    TemplateAgreement test = new TemplateAgreement(seed);
    for (String template : templates.split("\u0000")) {
      for (int round = 0; round < rounds; round++) {
        String wrong = test.disagreement(round == 0 ? template : test.damaged(template));
        if (wrong != null) {
          return wrong;
        }
      }
    }
    return test.accepted + " accepted, " + test.refused + " refused";
  }

  private String damaged(String template) {
    StringBuilder text = new StringBuilder(template);
    for (int count = 1 + random.nextInt(2); count > 0; count--) {
      int at = random.nextInt(text.length() + 1);
      int end = Math.min(text.length(), at + random.nextInt(4));
      String piece = random.nextBoolean() ? "" : PIECES.get(random.nextInt(PIECES.size()));
      text.replace(at, end, piece);
    }
    return text.toString();
  }

  private String disagreement(String template) throws Exception {
    byte[] bytes = template.getBytes(StandardCharsets.UTF_8);
    try {
      check.invoke(null, (Object) bytes);
    } catch (InvocationTargetException e) {
      refused++;
      return e.getCause().getClass().getSimpleName().equals("ChartException")
          ? null
          : "check threw " + e.getCause() + " for " + template;
    }
    accepted++;
    String read = new String(bytes, StandardCharsets.UTF_8);
    for (String chart : CHARTS) {
      String merged = (String) apply.invoke(null, chart, read);
      if (merged.isEmpty()) {
        return "native code refuses what Java accepts: " + template;
      }
      Object root = parse.invoke(null, (Object) merged.getBytes(StandardCharsets.UTF_8));
      Object error = firstError.invoke(chartSchema, root);
      if (error != null) {
        return "the schema refuses " + merged + "\n" + error + "\n" + template;
      }
    }
    return null;
  }
}
