// SPDX-License-Identifier: Apache-2.0

import com.tesk.charteditor.ChartImager;
import java.awt.Color;
import java.awt.Graphics2D;
import java.awt.RenderingHints;
import java.awt.geom.Rectangle2D;
import java.awt.image.BufferedImage;
import java.nio.ByteBuffer;
import java.nio.charset.StandardCharsets;
import java.util.Arrays;
import java.util.List;
import java.util.Locale;
import java.util.Random;
import java.util.function.Function;
import java.util.function.Supplier;
import org.chartbridge.chart.Chart;
import org.chartbridge.data.CsvReader;
import org.chartbridge.data.Table;
import org.chartbridge.draw.ChartDrawing;
import org.chartbridge.draw.DrawOptions;
import org.chartbridge.format.ChartSource;
import org.chartbridge.image.ImageType;
import org.chartbridge.image.Picture;
import org.chartbridge.image.PictureEncoder;
import org.jfree.chart.ChartFactory;
import org.jfree.chart.JFreeChart;
import org.jfree.chart.plot.PlotOrientation;
import org.jfree.data.category.DefaultCategoryDataset;
import org.jfree.data.xy.XYSeriesCollection;

/**
 * Times of warm renders, each stage and the whole: median milliseconds of many rounds in one JVM.
 *
 * <p>{@code java -cp build/release/java/chartbridge-runtime.jar bench/java/RenderBench.java
 * [rounds]}
 *
 * <p>The floor of the bars is what the bare chart library takes to draw the same bars, already
 * summed up, with its own defaults, and the encoding of a blank picture. The floor of the scatter
 * is the bare library's empty plot, 10,000 stamps of a small image, and the encoding of a blank
 * picture: drawn through the library itself, so many points take 100 ms and more.
 */
public final class RenderBench {
  private static final int WIDTH = 800;
  private static final int HEIGHT = 600;
  private static final String[] REGIONS = {"North", "South", "East", "West"};
  private static final String[] PRODUCTS = {"Apples", "Pears", "Plums", "Cherries", "Quinces"};

  /** Keeps results alive, so that no work is optimised away. */
  private static long sink;

  private interface Work {
    Object run();
  }

  /** One timed work and what must be done before each of its rounds, untimed. */
  private record Stage(Supplier<ChartDrawing> setUp, Function<ChartDrawing, Object> work) {
    static Stage of(Work work) {
      return new Stage(() -> null, nothing -> work.run());
    }
  }

  private RenderBench() {}

  public static void main(String[] arguments) {
    System.setProperty("java.awt.headless", "true");
    int rounds = arguments.length > 0 ? Integer.parseInt(arguments[0]) : 400;
    String bars = "size 800 by 600\ntitle \"Sales\"\n"
        + "draw grouped bar: x product, y sum of sales, color region\n";
    String scatter = "size 800 by 600\ntitle \"Points\"\ndraw point: x u, y v, color group\n";
    System.out.println("median ms         chart      csv  prepare     draw   encode    whole    "
        + "floor  whole/floor     goal");
    report("1,000 rows, bars", bars, barData(1_000), RenderBench::bareBars, 15, rounds);
    report("10,000 points", scatter, pointData(10_000), RenderBench::barePoints, 30, rounds);
    report("1,000,000 rows", bars, barData(1_000_000), RenderBench::bareBars, 0, 12);
    if (sink == 42) {
      System.out.println();
    }
  }

  private static void report(
      String name, String chartText, ByteBuffer csv, Work floorWork, int goal, int rounds) {
    byte[] chartBytes = chartText.getBytes(StandardCharsets.UTF_8);
    Chart chart = ChartSource.read(chartBytes);
    Table table = CsvReader.read(csv, chart);
    ChartDrawing drawing = ChartDrawing.prepare(chart, table, DrawOptions.DEFAULT);
    BufferedImage drawn = draw(drawing);
    Picture copy = Picture.ofPercent(WIDTH, HEIGHT, 100, g -> g.drawImage(drawn, 0, 0, null));
    Picture blank = Picture.ofPercent(WIDTH, HEIGHT, 100, g -> {});
    ChartImager imager = new ChartImager();

    Stage[] stages = {Stage.of(() -> ChartSource.read(chartBytes)),
        Stage.of(() -> CsvReader.read(csv, chart)),
        Stage.of(() -> ChartDrawing.prepare(chart, table, DrawOptions.DEFAULT)),
        new Stage(() -> ChartDrawing.prepare(chart, table, DrawOptions.DEFAULT), RenderBench::draw),
        Stage.of(() -> PictureEncoder.encode(copy, ImageType.PNG)),
        Stage.of(() -> imager.RenderToMem(chartBytes, csv, 2, 100, "", null, "", null)),
        Stage.of(() -> List.of(floorWork.run(), PictureEncoder.encode(blank, ImageType.PNG)))};
    double[] medians = medians(stages, rounds);
    System.out.printf(Locale.ROOT, "%-16s", name);
    for (double median : medians) {
      System.out.printf(Locale.ROOT, " %8.2f", median);
    }
    double whole = medians[5];
    String verdict = goal == 0 ? "" : whole <= goal ? "  met" : "  MISSED";
    System.out.printf(Locale.ROOT, " %12.2f %8s%s%n", whole / medians[6],
        goal == 0 ? "-" : Integer.toString(goal), verdict);
  }

  /**
   * Runs the stages in turn, so that all meet the same state of the machine; the first half of the
   * rounds warms up.
   */
  private static double[] medians(Stage[] stages, int rounds) {
    double[][] times = new double[stages.length][rounds];
    for (int round = 0; round < rounds; round++) {
      for (int i = 0; i < stages.length; i++) {
        ChartDrawing drawing = stages[i].setUp().get();
        long start = System.nanoTime();
        sink += System.identityHashCode(stages[i].work().apply(drawing));
        times[i][round] = (System.nanoTime() - start) / 1e6;
      }
    }
    double[] medians = new double[stages.length];
    for (int i = 0; i < stages.length; i++) {
      double[] warm = Arrays.copyOfRange(times[i], rounds / 2, rounds);
      Arrays.sort(warm);
      medians[i] = warm[warm.length / 2];
    }
    return medians;
  }

  private static BufferedImage canvas() {
    return new BufferedImage(WIDTH, HEIGHT, BufferedImage.TYPE_INT_RGB);
  }

  private static BufferedImage draw(ChartDrawing drawing) {
    BufferedImage image = canvas();
    Graphics2D graphics = smooth(image);
    drawing.draw(graphics);
    graphics.dispose();
    return image;
  }

  private static Graphics2D smooth(BufferedImage image) {
    Graphics2D graphics = image.createGraphics();
    graphics.setRenderingHint(RenderingHints.KEY_ANTIALIASING, RenderingHints.VALUE_ANTIALIAS_ON);
    graphics.setRenderingHint(
        RenderingHints.KEY_TEXT_ANTIALIASING, RenderingHints.VALUE_TEXT_ANTIALIAS_ON);
    graphics.setRenderingHint(
        RenderingHints.KEY_FRACTIONALMETRICS, RenderingHints.VALUE_FRACTIONALMETRICS_ON);
    graphics.setColor(Color.WHITE);
    graphics.fillRect(0, 0, WIDTH, HEIGHT);
    return graphics;
  }

  private static Object bareBars() {
    DefaultCategoryDataset data = new DefaultCategoryDataset();
    for (int i = 0; i < REGIONS.length; i++) {
      for (int j = 0; j < PRODUCTS.length; j++) {
        data.addValue(1000 + 100 * i + 37 * j, REGIONS[i], PRODUCTS[j]);
      }
    }
    return drawBare(ChartFactory.createBarChart(
        "Sales", "product", "sales", data, PlotOrientation.VERTICAL, true, false, false));
  }

  private static Object barePoints() {
    BufferedImage image = drawBare(ChartFactory.createScatterPlot("Points", "u", "v",
        new XYSeriesCollection(), PlotOrientation.VERTICAL, true, false, false));
    BufferedImage stamp = new BufferedImage(9, 9, BufferedImage.TYPE_INT_ARGB_PRE);
    Graphics2D dot = stamp.createGraphics();
    dot.setRenderingHint(RenderingHints.KEY_ANTIALIASING, RenderingHints.VALUE_ANTIALIAS_ON);
    dot.setColor(new Color(0x0072B2));
    dot.fillOval(1, 1, 7, 7);
    dot.dispose();
    Graphics2D graphics = image.createGraphics();
    Random random = new Random(1);
    for (int i = 0; i < 10_000; i++) {
      graphics.drawImage(stamp, 60 + random.nextInt(700), 30 + random.nextInt(500), null);
    }
    graphics.dispose();
    return image;
  }

  private static BufferedImage drawBare(JFreeChart chart) {
    BufferedImage image = canvas();
    Graphics2D graphics = smooth(image);
    chart.draw(graphics, new Rectangle2D.Double(0, 0, WIDTH, HEIGHT));
    graphics.dispose();
    return image;
  }

  private static ByteBuffer barData(int rows) {
    Random random = new Random(1);
    StringBuilder csv = new StringBuilder("region,product,month,sales,cost\n");
    for (int i = 0; i < rows; i++) {
      csv.append(REGIONS[random.nextInt(REGIONS.length)]).append(',');
      csv.append(PRODUCTS[random.nextInt(PRODUCTS.length)]).append(",2024-0");
      csv.append(1 + random.nextInt(9)).append(',').append(random.nextInt(100_000) / 100.0);
      csv.append(',').append(random.nextInt(100_000) / 100.0).append('\n');
    }
    return direct(csv);
  }

  private static ByteBuffer pointData(int rows) {
    Random random = new Random(2);
    StringBuilder csv = new StringBuilder("u,v,group\n");
    for (int i = 0; i < rows; i++) {
      int group = random.nextInt(3);
      csv.append(String.format(Locale.ROOT, "%.4f,%.4f,Group %s\n", random.nextGaussian() + group,
          random.nextGaussian() * 2 - group, (char) ('A' + group)));
    }
    return direct(csv);
  }

  private static ByteBuffer direct(CharSequence csv) {
    byte[] bytes = csv.toString().getBytes(StandardCharsets.UTF_8);
    return ByteBuffer.allocateDirect(bytes.length).put(bytes).flip();
  }
}
