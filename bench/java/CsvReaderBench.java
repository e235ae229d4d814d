// SPDX-License-Identifier: Apache-2.0

import java.io.IOException;
import java.io.InputStream;
import java.io.InputStreamReader;
import java.io.Reader;
import java.io.UncheckedIOException;
import java.nio.ByteBuffer;
import java.nio.charset.StandardCharsets;
import java.util.Arrays;
import java.util.HashMap;
import java.util.List;
import java.util.Locale;
import java.util.Map;
import java.util.Random;
import java.util.Set;
import org.apache.commons.csv.CSVFormat;
import org.apache.commons.csv.CSVParser;
import org.apache.commons.csv.CSVRecord;
import org.chartbridge.data.CsvReader;

/**
 * Reads two columns of labels and one of numbers out of five, from a direct buffer: this library's
 * reader against Apache Commons CSV with a map for the labels and Double.parseDouble.
 *
 * <p>{@code java -cp build/release/java/chartbridge-runtime.jar bench/java/CsvReaderBench.java}
 */
public final class CsvReaderBench {
  private static double sink;

  private interface Work {
    double read(ByteBuffer csv);
  }

  private CsvReaderBench() {}

  public static void main(String[] arguments) {
    System.out.println("rows       commons-csv (ms)  CsvReader (ms)  ratio");
    for (int rows : new int[] {1_000, 10_000, 1_000_000}) {
      ByteBuffer csv = data(rows);
      int rounds = rows > 100_000 ? 10 : 2_000_000 / rows;
      double library = median(CsvReaderBench::commons, csv, rounds);
      double own = median(
          b -> CsvReader.read(b, List.of(), Set.of("region", "product", "sales")).rowCount(), csv,
          rounds);
      System.out.printf(
          Locale.ROOT, "%-10d %16.2f %15.2f %6.1f%n", rows, library, own, library / own);
    }
    if (sink == 42) {
      System.out.println();
    }
  }

  private static double median(Work work, ByteBuffer csv, int rounds) {
    double[] times = new double[rounds];
    for (int i = 0; i < rounds; i++) {
      long start = System.nanoTime();
      sink += work.read(csv);
      times[i] = (System.nanoTime() - start) / 1e6;
    }
    double[] warm = Arrays.copyOfRange(times, rounds / 2, rounds);
    Arrays.sort(warm);
    return warm[warm.length / 2];
  }

  private static double commons(ByteBuffer csv) {
    CSVFormat format =
        CSVFormat.RFC4180.builder().setHeader().setSkipHeaderRecord(true).build();
    Map<String, Integer> regions = new HashMap<>();
    Map<String, Integer> products = new HashMap<>();
    double sum = 0;
    try (CSVParser parser = format.parse(reader(csv.duplicate()))) {
      for (CSVRecord row : parser) {
        sum += regions.computeIfAbsent(row.get(0), name -> regions.size());
        sum += products.computeIfAbsent(row.get(1), name -> products.size());
        sum += Double.parseDouble(row.get(3));
      }
    } catch (IOException e) {
      throw new UncheckedIOException(e);
    }
    return sum;
  }

  private static Reader reader(ByteBuffer csv) {
    InputStream in = new InputStream() {
      @Override
      public int read() {
        return csv.hasRemaining() ? csv.get() & 0xFF : -1;
      }

      @Override
      public int read(byte[] bytes, int offset, int length) {
        int count = Math.min(length, csv.remaining());
        csv.get(bytes, offset, count);
        return count == 0 ? -1 : count;
      }
    };
    return new InputStreamReader(in, StandardCharsets.UTF_8);
  }

  private static ByteBuffer data(int rows) {
    String[] regions = {"North", "South", "East", "West"};
    String[] products = {"Apples", "Pears", "Plums", "Cherries", "Quinces"};
    Random random = new Random(1);
    StringBuilder csv = new StringBuilder("region,product,month,sales,cost\n");
    for (int i = 0; i < rows; i++) {
      csv.append(regions[random.nextInt(4)]).append(',').append(products[random.nextInt(5)]);
      csv.append(",2024-0").append(1 + random.nextInt(9)).append(',');
      csv.append(random.nextInt(100_000) / 100.0).append(',');
      csv.append(random.nextInt(100_000) / 100.0).append('\n');
    }
    byte[] bytes = csv.toString().getBytes(StandardCharsets.UTF_8);
    return ByteBuffer.allocateDirect(bytes.length).put(bytes).flip();
  }
}
