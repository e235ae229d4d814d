// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.fuzz;

import static java.nio.charset.StandardCharsets.UTF_8;
import static org.junit.jupiter.api.Assertions.assertNull;
import static org.junit.jupiter.api.Assertions.assertTrue;

import com.tesk.charteditor.ChartImager;
import com.tesk.treemodeleditor.TreeImager;
import com.tesk.vizconverter.VizConverter;
import java.lang.management.ManagementFactory;
import java.lang.management.ThreadMXBean;
import java.nio.ByteBuffer;
import java.util.List;
import java.util.Locale;
import java.util.stream.Collectors;
import java.util.stream.IntStream;
import org.chartbridge.chart.ChartException;
import org.chartbridge.document.export.LineBreaks;
import org.chartbridge.image.input.SvgPicture;
import org.junit.jupiter.api.Test;

/**
 * Inputs that are large in one way take a time that grows no faster than they do. What is bounded
 * is processor time, which says the same on a busy machine; each bound is many times what is
 * needed, and a fraction of what the square of the size would take.
 */
class LargeInputsTest {
  private static final double MOST_SECONDS = 3;

  private static void quick(Runnable work) {
    ThreadMXBean threads = ManagementFactory.getThreadMXBean();
    long begin = threads.getCurrentThreadCpuTime();
    work.run();
    double seconds = (threads.getCurrentThreadCpuTime() - begin) / 1e9;
    assertTrue(seconds < MOST_SECONDS, seconds + " s");
  }

  private static String joined(int count, String prefix, String separator) {
    return IntStream.range(0, count).mapToObj(i -> prefix + i)
        .collect(Collectors.joining(separator));
  }

  private static void render(String chart, String data) {
    new ChartImager().RenderToMem(chart.getBytes(UTF_8), ByteBuffer.wrap(data.getBytes(UTF_8)), 5,
        100, null, null, null, null);
  }

  @Test
  void dataOfManyColumns() {
    int count = 200_000;
    String data = joined(count, "c", ",") + "\n" + joined(count, "", ",") + "\n";
    quick(() -> render("draw point: x c0, y c" + (count - 1), data));
  }

  @Test
  void manyTextsOnOneLine() {
    String chart = "column a: category \"x\"\npalette " + joined(70_000, "\"k", "\", ") + "\"";
    quick(() -> new VizConverter().ConvertGPL(chart.getBytes(UTF_8)));
  }

  @Test
  void columnsInAnOrderOfManyTexts() {
    String order = joined(70_000, "\"k", "\" < ") + "\"";
    String chart = "column a: category " + order + "\ndraw bar: x a\n";
    quick(() -> {
      VizConverter converter = new VizConverter();
      converter.ConvertGPL(chart.getBytes(UTF_8));
      assertNull(converter.getErrorMessage());
    });
  }

  @Test
  void labelsOfManyWords() {
    String data = "a,b\n" + "x ".repeat(1_000_000) + ",1\n";
    quick(() -> render("draw bar: x a, y b", data));
  }

  private static String model(String field, String tree) {
    return "<PMML xmlns=\"http://www.dmg.org/PMML-4_4\" version=\"4.4\"><DataDictionary>" + field
        + "<DataField name=\"t\" optype=\"categorical\" dataType=\"string\"/></DataDictionary>"
        + "<TreeModel functionName=\"classification\"><MiningSchema>"
        + "<MiningField name=\"t\" usageType=\"target\"/></MiningSchema>" + tree
        + "</TreeModel></PMML>";
  }

  private static void draw(String model) {
    new TreeImager().renderToMemory(model.getBytes(UTF_8), null, 5, 100);
  }

  private static String set(String operator, String members) {
    return "<SimpleSetPredicate field=\"c\" booleanOperator=\"" + operator + "\">"
        + "<Array type=\"string\">" + members + "</Array></SimpleSetPredicate>";
  }

  /** One node below the other, each with a branch for some values and one for all others. */
  private static String splits(int count, String members) {
    String others = "<Node score=\"B\">" + set("isNotIn", members) + "</Node>";
    String inner = "<Node score=\"A\">" + set("isIn", members);
    return "<Node score=\"A\"><True/>" + (others + inner).repeat(count)
        + "</Node>".repeat(count + 1);
  }

  @Test
  void treesThatSplitByManyLevels() {
    String values = IntStream.range(0, 1_500).mapToObj(i -> "<Value value=\"level " + i + "\"/>")
        .collect(Collectors.joining());
    String field = "<DataField name=\"c\" optype=\"categorical\" dataType=\"string\">" + values
        + "</DataField>";
    String members = "\"" + joined(1_000, "level ", "\" \"") + "\"";
    quick(() -> draw(model(field, splits(30, members))));
  }

  @Test
  void treesWithABranchForEachLevel() {
    String field = "<DataField name=\"c\" optype=\"categorical\" dataType=\"string\"/>";
    String members = "\"" + joined(990, "level ", "\" \"") + "\"";
    String branches = IntStream.range(0, 1_000).mapToObj(i -> "<Node score=\"A\"><SimplePredicate"
        + " field=\"c\" operator=\"equal\" value=\"level " + i + "\"/></Node>")
        .collect(Collectors.joining());
    String node = "<Node score=\"A\"><True/>" + branches + "<Node score=\"B\">"
        + set("isNotIn", members) + "</Node></Node>";
    quick(() -> draw(model(field, node)));
  }

  @Test
  void numbersOfManyDigits() {
    String digits = "7".repeat(1_000_000) + "0".repeat(1_000_000);
    String field = "<DataField name=\"c\" optype=\"categorical\" dataType=\"integer\">"
        + "<Value value=\"" + digits + "\"/></DataField>";
    quick(() -> draw(model(field, "<Node score=\"A\"><True/><Node score=\"B\"><SimplePredicate"
        + " field=\"c\" operator=\"equal\" value=\"" + digits + "\"/></Node></Node>")));
  }

  @Test
  void textOfManySigns() {
    for (String text : List.of("-".repeat(50_000) + "a1", "1" + "-".repeat(50_000),
        "1,".repeat(50_000), "1".repeat(50_000))) {
      quick(() -> new LineBreaks(text, Locale.ENGLISH).pieces(LineBreaks.Detail.ANYWHERE));
    }
  }

  private static void convert(String attributes) {
    byte[] image = ("<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"10\" height=\"10\" "
        + attributes + "/>").getBytes(UTF_8);
    try {
      SvgPicture.read(image);
    } catch (ChartException e) {
      // What it says of the value is tested elsewhere.
    }
  }

  @Test
  void imagesWithLongValues() {
    for (String box : List.of("1".repeat(50_000), "0 0 1 " + "1".repeat(50_000) + "x",
        ",".repeat(50_000), "0 " + ",".repeat(50_000) + "x", "1 ".repeat(50_000))) {
      quick(() -> convert("viewBox=\"" + box + "\""));
    }
    quick(() -> convert("style=\"" + "a".repeat(50_000) + "\""));
  }
}
