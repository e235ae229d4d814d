// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.format;

import java.util.ArrayList;
import java.util.Collections;
import java.util.List;
import java.util.Random;
import org.chartbridge.chart.Aggregate;
import org.chartbridge.chart.Arrangement;
import org.chartbridge.chart.Axis;
import org.chartbridge.chart.Bin;
import org.chartbridge.chart.ChannelRules;
import org.chartbridge.chart.Channel;
import org.chartbridge.chart.Chart;
import org.chartbridge.chart.ChartRules;
import org.chartbridge.chart.ChartSize;
import org.chartbridge.chart.ColumnDeclaration;
import org.chartbridge.chart.ColumnKind;
import org.chartbridge.chart.Element;
import org.chartbridge.chart.ElementKind;
import org.chartbridge.chart.Facet;
import org.chartbridge.chart.Legend;
import org.chartbridge.chart.LegendPosition;
import org.chartbridge.chart.ScaleKind;
import org.chartbridge.chart.Titles;

/** Makes charts of every shape that the rules allow, the same ones for the same seed. */
public final class RandomCharts {
  private static final List<String> NAMES = List.of("sales", "größe", "net sales", "2024", "count",
      "sum", "of", "x", "a\"b", "x<y & z", "价格", "\uD83D\uDE00", "back\\slash", "a.b_c", " lead",
      "trail ", "l1\nl2", "tab\tbed", "cr\rlf", "//", "#0072b2", "it's", "title");
  private static final List<String> TEXTS = List.of("", "Sales", "in € & more", "<b>", "\"quoted\"",
      "two\nlines", "  spaces  ", "\uD83D\uDE80 up", "]]>", "--");

  private static final List<String> DATA =
      List.of("a,b\n1,2\n", "\n \na\r\n\"x\n  \"", "größe<&>\n]]>\n  ", " a \n\n\n", "a\n1", " ");

  private final Random random;
  private final boolean xmlOnly;

  /** Charts that can be written in every notation. */
  public RandomCharts(long seed) {
    this(seed, false);
  }

  private RandomCharts(long seed, boolean xmlOnly) {
    random = new Random(seed);
    this.xmlOnly = xmlOnly;
  }

  /** Charts with all that chart XML can say. */
  public static RandomCharts ofXml(long seed) {
    return new RandomCharts(seed, true);
  }

  /** A chart that the rules accept. */
  public Chart next() {
    while (true) {
      Chart chart = any();
      if (ChartRules.check(chart).isEmpty()) {
        return chart;
      }
    }
  }

  /** A chart that may break the rules. */
  public Chart any() {
    List<Element> elements = new ArrayList<>();
    int count = 1 + random.nextInt(3);
    for (int i = 0; i < count; i++) {
      elements.add(element());
    }
    List<String> palette = new ArrayList<>();
    while (random.nextInt(3) == 0) {
      palette.add(color());
    }
    return new Chart(random.nextBoolean()
            ? ChartSize.DEFAULT
            : new ChartSize(16 + random.nextInt(9985), 16 + random.nextInt(9985)),
        new Titles(text(), text(), text()), columns(), axis(), axis(), elements,
        new Legend(random.nextBoolean() ? null : pick(LegendPosition.values()), text()),
        random.nextInt(3) > 0 ? null
                              : new Facet(name(), maybe(1 + random.nextInt(100)), flip(), flip()),
        random.nextInt(3) > 0 ? null : pick(NAMES), palette, xmlOnly && flip() ? pick(DATA) : null,
        xmlOnly && flip() ? name() : null);
  }

  private List<ColumnDeclaration> columns() {
    List<String> names = new ArrayList<>(NAMES);
    Collections.shuffle(names, random);
    List<ColumnDeclaration> columns = new ArrayList<>();
    for (String name : names.subList(0, random.nextInt(4))) {
      ColumnKind kind = pick(ColumnKind.values());
      String pattern = kind == ColumnKind.TIME && flip()
          ? pick(List.of("yyyy", "dd.MM.yyyy", "yyyy-MM-dd'T'HH:mm"))
          : null;
      List<String> order = new ArrayList<>(NAMES);
      Collections.shuffle(order, random);
      int known = kind == ColumnKind.CATEGORY ? random.nextInt(4) : 0;
      columns.add(new ColumnDeclaration(name, kind, text(), pattern, order.subList(0, known)));
    }
    return columns;
  }

  private Axis axis() {
    if (random.nextInt(3) == 0) {
      return Axis.DEFAULT;
    }
    ScaleKind scale = pick(ScaleKind.values());
    String format = random.nextInt(3) > 0 ? null : scale == ScaleKind.TIME ? "MMM yyyy" : "#,##0.0";
    return new Axis(scale, text(), limit(scale), limit(scale), flip(), flip(), format);
  }

  private Double limit(ScaleKind scale) {
    double[] limits = {0, -0.0, 1, -5, 0.1, 1e-7, 1.5e300, -2.5e-300, 1e15, 123456789.125, Math.PI,
        random.nextGaussian()};
    double time = Math.rint(random.nextGaussian() * 1e13);
    return random.nextInt(3) > 0            ? null
        : scale == ScaleKind.TIME && flip() ? rounded(time)
                                            : limits[random.nextInt(12)];
  }

  /** A whole number of days, half days, minutes, seconds or milliseconds. */
  private double rounded(double time) {
    double unit = pick(List.of(86_400_000.0, 43_200_000.0, 60_000.0, 1_000.0, 1.0));
    return Math.rint(time / unit) * unit;
  }

  private Element element() {
    ElementKind kind = pick(ElementKind.values());
    List<Arrangement> arrangements = new ArrayList<>(Arrangement.of(kind));
    Arrangement arrangement = arrangements.isEmpty() || flip() ? null : pick(arrangements);
    Channel color = channel(kind, "color");
    if (xmlOnly && kind == ElementKind.HISTOGRAM && flip()) {
      return Element.histogram(bins(), flip() ? color() : null, random.nextInt(11) / 10.0);
    }
    boolean fill = color == null && kind != ElementKind.PIE && flip();
    return new Element(kind, channel(kind, "x"), channel(kind, "y"), color, channel(kind, "size"),
        channel(kind, "label"), arrangement,
        kind == ElementKind.HISTOGRAM ? maybe(1 + random.nextInt(500)) : null,
        fill ? color() : null, flip() ? 1 : random.nextInt(11) / 10.0);
  }

  private List<Bin> bins() {
    List<Bin> bins = new ArrayList<>();
    double from = random.nextGaussian() * 100;
    while (bins.isEmpty() || random.nextInt(4) > 0) {
      double width = random.nextInt(20) > 0 ? Math.abs(random.nextGaussian()) : -1;
      bins.add(new Bin(from, from + width, random.nextInt(1_000) / 8.0 - 1));
      from += width + (flip() ? 0 : random.nextDouble());
    }
    return bins;
  }

  private Channel channel(ElementKind kind, String name) {
    boolean required = ChannelRules.required(kind).contains(name);
    if (!ChannelRules.allowed(kind).contains(name) || (!required && flip())) {
      return null;
    }
    if (!ChannelRules.summing(kind).contains(name) || flip()) {
      return Channel.of(name());
    }
    Aggregate aggregate = pick(Aggregate.values());
    return aggregate == Aggregate.COUNT && flip() ? Channel.count()
                                                  : new Channel(name(), aggregate);
  }

  private String name() {
    return pick(NAMES);
  }

  private String text() {
    return flip() ? null : pick(TEXTS);
  }

  private String color() {
    return String.format("#%06x", random.nextInt(1 << 24));
  }

  private Integer maybe(int value) {
    return flip() ? null : Integer.valueOf(value);
  }

  private boolean flip() {
    return random.nextBoolean();
  }

  private <T> T pick(T[] values) {
    return values[random.nextInt(values.length)];
  }

  private <T> T pick(List<T> values) {
    return values.get(random.nextInt(values.size()));
  }
}
