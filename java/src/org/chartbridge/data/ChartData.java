// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.data;

import java.nio.ByteBuffer;
import java.nio.charset.StandardCharsets;
import java.util.List;
import org.chartbridge.chart.Chart;
import org.chartbridge.chart.ChartException;

/** Chooses the data that a chart shows: those that it is given, else its own. */
public final class ChartData {
  private ChartData() {}

  /**
   * Reads the columns that a chart shows.
   *
   * @param given CSV from the buffer's position to its limit, direct or not; the buffer itself is
   *     left as it is. Null or empty for the chart's own data
   * @return an empty table when there are no data at all and the chart shows none
   * @throws ChartException when the data are malformed or lack a column that the chart shows
   */
  public static Table read(ByteBuffer given, Chart chart) {
    if (given != null && given.hasRemaining()) {
      return readCsv(given, chart);
    }
    if (chart.data() != null) {
      byte[] own = chart.data().getBytes(StandardCharsets.UTF_8);
      return readCsv(ByteBuffer.wrap(own), chart);
    }
    if (!chart.showsData()) {
      return new Table(List.of(), 0);
    }
    return readCsv(ByteBuffer.allocate(0), chart);
  }

  /**
   * Reads the columns that a chart shows.
   *
   * @param csv the bytes from the buffer's position to its limit, direct or not; the buffer itself
   *     is left as it is
   * @throws ChartException when the data are malformed or lack a column that the chart shows; that
   *     mistake has the place where the chart names the column, if that is known
   */
  public static Table readCsv(ByteBuffer csv, Chart chart) {
    ShownColumns shown = new ShownColumns(chart);
    try {
      return CsvReader.read(csv, chart.columns(), shown.names());
    } catch (MissingColumnException e) {
      if (chart.places().of(shown.path(e.column())) == null) {
        throw e;
      }
      throw chart.error(shown.path(e.column()), e.getMessage(), e);
    }
  }
}
