// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.format;

import static java.nio.charset.StandardCharsets.UTF_8;
import static org.junit.jupiter.api.Assertions.assertEquals;
import static org.junit.jupiter.api.Assertions.assertNotNull;
import static org.junit.jupiter.api.Assertions.assertNull;
import static org.junit.jupiter.api.Assertions.assertTrue;

import java.util.List;
import org.chartbridge.chart.ChartException;
import org.chartbridge.xml.SafeXml;
import org.junit.jupiter.api.Test;
import org.junit.jupiter.params.ParameterizedTest;
import org.junit.jupiter.params.provider.MethodSource;

class SchemaCheckTest {
  private static ChartException check(String xml) {
    return ChartVersion.V2.schema.firstError(SafeXml.parse(xml.getBytes(UTF_8)));
  }

  @Test
  void saysAtWhichElementADocumentLeavesTheSchema() {
    ChartException error =
        check("<chart xmlns='urn:chartbridge:chart:2'>\n <legend where='top'/></chart>");
    assertTrue(
        error.getMessage().startsWith("line 2, column 2: <legend> is not allowed like this: cvc-"),
        error.getMessage());
    assertTrue(error.getMessage().contains("'where' is not allowed"), error.getMessage());
  }

  @Test
  void acceptsWhatTheWriterWrites() {
    RandomCharts charts = new RandomCharts(7);
    for (int i = 0; i < 300; i++) {
      String xml = new String(ChartWriter.write(charts.next()), UTF_8);
      ChartException error = check(xml);
      assertNull(error, () -> error.getMessage() + "\n" + xml);
    }
  }

  @ParameterizedTest
  @MethodSource("org.chartbridge.format.ChartReaderTest#structure")
  void refusesEveryStructuralMistake(String xml, String message) {
    // One thing that a schema cannot say: a sum needs a column, a count does not.
    if (!message.contains("needs the attribute column")) {
      assertNotNull(check(xml));
    }
  }

  @Test
  void compilesOnceForManyThreads() throws InterruptedException {
    SchemaCheck schema = new SchemaCheck("chart-format.xsd");
    String xml =
        "<chart xmlns='urn:chartbridge:chart:2'><elements><bar><x "
            + "column='a'/></bar></elements></chart>";
    List<Thread> threads =
        java.util.stream.IntStream.range(0, 8)
            .mapToObj(i
                -> new Thread(
                    () -> assertNull(schema.firstError(SafeXml.parse(xml.getBytes(UTF_8))))))
            .toList();
    List<Throwable> failures = java.util.Collections.synchronizedList(new java.util.ArrayList<>());
    threads.forEach(thread -> thread.setUncaughtExceptionHandler((t, e) -> failures.add(e)));
    threads.forEach(Thread::start);
    for (Thread thread : threads) {
      thread.join();
    }
    assertEquals(List.of(), failures);
  }
}
