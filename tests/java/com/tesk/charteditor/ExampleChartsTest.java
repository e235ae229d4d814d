// SPDX-License-Identifier: Apache-2.0
package com.tesk.charteditor;

import static org.junit.jupiter.api.Assertions.assertEquals;
import static org.junit.jupiter.api.Assertions.assertFalse;
import static org.junit.jupiter.api.Assertions.assertNotNull;
import static org.junit.jupiter.api.Assertions.assertTrue;

import com.fasterxml.jackson.databind.ObjectMapper;
import java.awt.image.BufferedImage;
import java.io.ByteArrayInputStream;
import java.io.IOException;
import java.nio.ByteBuffer;
import java.nio.file.Files;
import java.nio.file.Path;
import java.util.ArrayList;
import java.util.EnumSet;
import java.util.List;
import java.util.Set;
import java.util.TreeSet;
import java.util.regex.Matcher;
import java.util.regex.Pattern;
import java.util.stream.Stream;
import javax.imageio.ImageIO;
import org.chartbridge.chart.Aggregate;
import org.chartbridge.chart.Arrangement;
import org.chartbridge.chart.Chart;
import org.chartbridge.chart.ColumnKind;
import org.chartbridge.chart.Element;
import org.chartbridge.chart.ElementKind;
import org.chartbridge.chart.ScaleKind;
import org.chartbridge.data.CsvReader;
import org.chartbridge.format.ChartSource;
import org.junit.jupiter.api.Test;
import org.junit.jupiter.params.ParameterizedTest;
import org.junit.jupiter.params.provider.MethodSource;

/** The examples draw, and show what there is to show. */
class ExampleChartsTest {
  private static final Path EXAMPLES =
      Path.of(System.getProperty("chartbridge.source"), "examples");
  private static final Pattern DATA = Pattern.compile("data: (\\w+\\.csv)");

  private static List<Path> charts() throws IOException {
    try (Stream<Path> files = Files.list(EXAMPLES.resolve("charts"))) {
      return files.filter(file -> file.toString().matches(".*\\.(gpl|xml)")).sorted().toList();
    }
  }

  private static ByteBuffer data(Path chart) throws IOException {
    Matcher matcher = DATA.matcher(Files.readString(chart));
    assertTrue(matcher.find(), chart + " names its data");
    return ByteBuffer.wrap(Files.readAllBytes(EXAMPLES.resolve("data").resolve(matcher.group(1))));
  }

  @ParameterizedTest
  @MethodSource("charts")
  void draws(Path path) throws IOException {
    byte[] bytes = Files.readAllBytes(path);
    Chart chart = ChartSource.read(bytes);
    assertNotNull(chart.titles().title());
    assertTrue(chart.titles().caption().startsWith("Data: "), "names its source");
    ByteBuffer blocks = ByteBuffer.wrap(new ChartImager().RenderImageMapToMemory(
        bytes, data(path), 7, 100, true, "en-US", null, "", null));
    BufferedImage image = ImageIO.read(new ByteArrayInputStream(block(blocks)));
    assertEquals(chart.size().width(), image.getWidth());
    assertEquals(chart.size().height(), image.getHeight());
    Set<Integer> colors = new TreeSet<>();
    for (int y = 0; y < image.getHeight(); y++) {
      for (int x = 0; x < image.getWidth(); x++) {
        colors.add(image.getRGB(x, y));
      }
    }
    assertTrue(colors.size() > 20, "a picture with something on it");
    block(blocks);
    assertFalse(new ObjectMapper().readTree(block(blocks)).get("areas").isEmpty(), "has marks");
  }

  private static byte[] block(ByteBuffer blocks) {
    byte[] block = new byte[blocks.getInt()];
    blocks.get(block);
    return block;
  }

  @Test
  void showEveryKindOfMark() throws IOException {
    Set<ElementKind> kinds = EnumSet.noneOf(ElementKind.class);
    Set<Arrangement> arrangements = EnumSet.noneOf(Arrangement.class);
    Set<ScaleKind> scales = EnumSet.noneOf(ScaleKind.class);
    Set<ColumnKind> columns = EnumSet.noneOf(ColumnKind.class);
    Set<Aggregate> aggregates = EnumSet.noneOf(Aggregate.class);
    List<Path> panels = new ArrayList<>();
    for (Path path : charts()) {
      Chart chart = ChartSource.read(Files.readAllBytes(path));
      for (Element element : chart.elements()) {
        kinds.add(element.kind());
        if (element.arrangement() != null) {
          arrangements.add(element.arrangement());
        }
        if (element.y() != null) {
          aggregates.add(element.y().aggregate());
        }
      }
      scales.add(chart.y().scale());
      chart.columns().forEach(column -> columns.add(column.kind()));
      if (chart.facet() != null) {
        panels.add(path);
      }
    }
    assertEquals(EnumSet.allOf(ElementKind.class), kinds);
    assertTrue(arrangements.containsAll(
        EnumSet.of(Arrangement.GROUPED, Arrangement.STACKED, Arrangement.FILLED)));
    assertTrue(scales.contains(ScaleKind.LOG));
    assertEquals(EnumSet.allOf(ColumnKind.class), columns);
    assertTrue(aggregates.containsAll(EnumSet.of(Aggregate.SUM, Aggregate.MEAN, Aggregate.MEDIAN)));
    assertFalse(panels.isEmpty());
  }

  @Test
  void everyDataFileIsReadableAndItsOriginIsTold() throws IOException {
    String readme = Files.readString(EXAMPLES.resolve("data/README.md"));
    try (Stream<Path> files = Files.list(EXAMPLES.resolve("data"))) {
      for (Path file : files.filter(f -> f.toString().endsWith(".csv")).toList()) {
        int rows = CsvReader.read(Files.readAllBytes(file)).rowCount();
        String entry = "| `" + file.getFileName() + "` | " + rows + " |";
        assertTrue(readme.contains(entry), entry);
      }
    }
  }
}
