// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.fuzz;

import static java.nio.charset.StandardCharsets.UTF_8;
import static org.junit.jupiter.api.Assertions.assertEquals;
import static org.junit.jupiter.api.Assertions.assertThrows;
import static org.junit.jupiter.api.Assertions.assertTrue;

import com.tesk.charteditor.ChartImager;
import com.tesk.treemodeleditor.TreeImager;
import com.tesk.vizconverter.VizConverter;
import java.nio.ByteBuffer;
import org.chartbridge.chart.ChartException;
import org.junit.jupiter.api.Test;

/** Inputs that once ended in a fault, each in its shortest form. */
class FoundByMutationTest {
  private static byte[] points(String data) {
    return new ChartImager().RenderToMem("draw point: x a, y b".getBytes(UTF_8),
        ByteBuffer.wrap(data.getBytes(UTF_8)), 5, 100, null, null, null, null);
  }

  private static void refused(String message, String data) {
    assertEquals(message, assertThrows(ChartException.class, () -> points(data)).getMessage());
  }

  @Test
  void numbersThatNoAxisCanShow() {
    String large = "; numbers beyond 1e300 have no place on an axis. Choose another unit for them.";
    refused("Axis x: its values run from 0 to 1E+308" + large, "a,b\n0,1\n1e308,2\n");
    refused("Axis y: its values run from -1E+308 to 1E+308" + large, "a,b\n0,1e308\n1,-1e308\n");
    refused("Axis x: its values run from 0 to 2E-320; numbers that lie less than 1e-300 apart"
        + " cannot be told apart. Choose another unit for them.",
        "a,b\n1e-320,1\n2e-320,2\n0,3\n");
    for (String alone : new String[] {"1e-320", "4.9e-324", "0", "1e299"}) {
      assertTrue(points("a,b\n" + alone + ",1\n").length > 0, alone);
    }
  }

  @Test
  void aMemberThatIsCalledABrace() {
    String template = "{\"version\":1,\"chart\":{\"}\":3,\"elements\":[]}}";
    ChartException e = assertThrows(ChartException.class,
        () -> new VizConverter().graphBoardConverterToXml(template.getBytes(UTF_8)));
    assertEquals("line 1, column 22: <chart> has no attribute \"}\"; expected one of width, height,"
        + " style, template", e.getMessage());
  }

  @Test
  void aClassificationNodeWithoutPrediction() {
    String model = "<PMML xmlns=\"http://www.dmg.org/PMML-4_4\" version=\"4.4\"><Header/>"
        + "<DataDictionary><DataField name=\"g\" optype=\"categorical\" dataType=\"string\">"
        + "<Value value=\"A\"/></DataField></DataDictionary>"
        + "<TreeModel functionName=\"classification\"><MiningSchema><MiningField name=\"g\""
        + " usageType=\"target\"/></MiningSchema><Node recordCount=\"1\"><True/></Node>"
        + "</TreeModel></PMML>";
    assertTrue(
        new TreeImager().renderToMemory(model.getBytes(UTF_8), null, 5, 100).length > 0);
  }
}
