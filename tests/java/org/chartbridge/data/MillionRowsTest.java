// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.data;

import static java.nio.charset.StandardCharsets.UTF_8;
import static org.junit.jupiter.api.Assertions.assertEquals;
import static org.junit.jupiter.api.Assertions.assertTrue;

import java.io.IOException;
import java.lang.management.ManagementFactory;
import java.lang.management.ThreadMXBean;
import java.nio.ByteBuffer;
import java.nio.file.Path;
import java.util.List;
import java.util.concurrent.TimeUnit;
import org.junit.jupiter.api.Test;

/**
 * A million rows fit into little memory: the data themselves are outside the Java heap and stay
 * there.
 */
class MillionRowsTest {
  private static final int ROWS = 1_000_000;
  private static final String[] REGIONS = {"North", "South", "East", "West"};

  /** Runs in a JVM of its own, whose heap is smaller than the data. */
  public static final class Reader {
    private Reader() {}

    public static void main(String[] arguments) {
      ByteBuffer csv = csv();
      long heap = Runtime.getRuntime().maxMemory();
      if (csv.remaining() < heap) {
        throw new IllegalStateException(
            "the data (" + csv.remaining() + " bytes) would fit into the heap (" + heap + ")");
      }
      Table table = CsvReader.read(csv, List.of(), null);
      check(table);
      System.out.println("rows " + table.rowCount());
    }
  }

  static ByteBuffer csv() {
    ByteBuffer csv = ByteBuffer.allocateDirect(90 * ROWS);
    csv.put("region,time,sales,remark\n".getBytes(UTF_8));
    for (int i = 0; i < ROWS; i++) {
      String row = REGIONS[i % 4] + ",2024-01-" + (10 + i % 20) + "T12:00:00Z," + i + ".25,"
          + "\"a remark that is the same on every line, quoted\"\n";
      csv.put(row.getBytes(UTF_8));
    }
    return csv.flip();
  }

  private static void check(Table table) {
    assertEquals(ROWS, table.rowCount());
    for (int i = 0; i < ROWS; i += 9973) {
      assertEquals(i % 4, table.column("region").category(i));
      assertEquals(i + 0.25, table.column("sales").number(i));
    }
    assertEquals(List.of(REGIONS), table.column("region").categories());
    assertEquals("2024-01-29 12:00", table.column("time").text(ROWS - 1));
  }

  @Test
  void fitIntoAHeapSmallerThanTheData() throws IOException, InterruptedException {
    Path java = Path.of(System.getProperty("java.home"), "bin", "java");
    Process process = new ProcessBuilder(java.toString(), "-Xmx64m", "-XX:MaxDirectMemorySize=128m",
        "-cp", System.getProperty("java.class.path"), Reader.class.getName())
                          .redirectErrorStream(true)
                          .start();
    String output = new String(process.getInputStream().readAllBytes(), UTF_8);
    process.waitFor(60, TimeUnit.SECONDS);
    assertEquals("rows " + ROWS, output.strip());
    assertEquals(0, process.exitValue());
  }

  /** Processor time, which other work on the machine does not stretch; 0.1 to 0.3 s are normal. */
  @Test
  void takeAFractionOfASecond() {
    ByteBuffer csv = csv();
    ThreadMXBean thread = ManagementFactory.getThreadMXBean();
    long start = thread.getCurrentThreadCpuTime();
    check(CsvReader.read(csv, List.of(), null));
    long millis = (thread.getCurrentThreadCpuTime() - start) / 1_000_000;
    assertTrue(millis < 2000, millis + " ms");
  }

  @Test
  void ofDistinctTextsAreTold() {
    StringBuilder csv = new StringBuilder("id,n\n");
    for (int i = 0; i < 300_000; i++) {
      csv.append("customer ").append(i).append(",1\n");
    }
    Table table = CsvReader.read(csv.toString().getBytes(UTF_8));
    assertEquals(300_000, table.column("id").categories().size());
    assertEquals("customer 299999", table.column("id").text(299_999));
  }
}
