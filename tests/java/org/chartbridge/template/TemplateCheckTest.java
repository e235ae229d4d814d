// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.template;

import static java.nio.charset.StandardCharsets.UTF_16;
import static java.nio.charset.StandardCharsets.UTF_8;
import static org.junit.jupiter.api.Assertions.assertEquals;
import static org.junit.jupiter.api.Assertions.assertThrows;
import static org.junit.jupiter.api.Assertions.assertTrue;

import java.io.IOException;
import java.nio.file.Files;
import java.nio.file.Path;
import java.util.ArrayList;
import java.util.List;
import org.chartbridge.chart.ChartException;
import org.junit.jupiter.api.Test;

class TemplateCheckTest {
  private static final Path SOURCE = Path.of(System.getProperty("chartbridge.source"));

  private static String failure(String document) {
    try {
      TemplateCheck.check(document.getBytes(UTF_8));
      return "ok";
    } catch (ChartException e) {
      return e.getMessage();
    }
  }

  private static String partFailure(String parts) {
    return failure(
        "<template xmlns=\"urn:chartbridge:template:1\">\n" + parts + "</template>");
  }

  /** The list that native code's tests read, too. */
  @Test
  void agreesWithTheListOfTemplates() throws IOException {
    List<String> wrong = new ArrayList<>();
    int count = 0;
    for (String line : Files.readAllLines(SOURCE.resolve("tests/data/chart-templates.txt"))) {
      if (line.isEmpty() || line.startsWith("#")) {
        continue;
      }
      String[] parts = line.split("\t", 2);
      String failure = failure(parts[1].replace("\\n", "\n"));
      String position = failure.replaceFirst("(?s)^line ([0-9]+), column ([0-9]+): .*", "$1:$2");
      if (!position.equals(parts[0])) {
        wrong.add(line + "\n" + failure);
      }
      count++;
    }
    assertEquals(List.of(), wrong);
    assertTrue(count > 60);
  }

  @Test
  void saysWhatIsExpected() {
    assertEquals(
        "line 2, column 1: found <legnd> inside <template>; expected one of size, style, titles, "
            + "axes, elements, legend, facet, palette; did you mean \"legend\"?",
        partFailure("<legnd/>"));
    assertEquals(
        "line 2, column 9: <legend> has no attribute \"postion\"; expected one of position, title,"
            + " override; did you mean \"position\"?",
        partFailure("<legend postion=\"top\"/>"));
    assertEquals("line 2, column 7: width of <size> is \"15\"; expected a whole number from 16 to "
        + "10000", partFailure("<size width=\"15\"/>"));
    assertEquals("line 2, column 16: opacity of <bar> is \"2\"; expected a number from 0 to 1",
        partFailure("<elements><bar opacity=\"2\"/></elements>"));
    assertEquals("line 2, column 16: fill of <bar> is \"red\"; expected # and six hexadecimal "
        + "digits, such as #0072b2", partFailure("<elements><bar fill=\"red\"/></elements>"));
    assertEquals("line 1, column 1: the template is of version 2; version 1 is known here",
        failure("<template xmlns=\"urn:chartbridge:template:2\"/>"));
  }

  @Test
  void takesOtherEncodings() {
    String document = "<?xml version=\"1.0\" encoding=\"UTF-16\"?>"
        + "<template xmlns=\"urn:chartbridge:template:1\"/>";
    TemplateCheck.check(document.getBytes(UTF_16));
  }

  @Test
  void takesTheExamples() throws IOException {
    int count = 0;
    try (var files = Files.newDirectoryStream(SOURCE.resolve("examples/templates"), "*.xml")) {
      for (Path file : files) {
        TemplateCheck.check(Files.readAllBytes(file));
        count++;
      }
    }
    assertTrue(count > 0);
  }

  @Test
  void refusesEntities() {
    String bomb = "<!DOCTYPE template [<!ENTITY a \"aaa\">]>"
        + "<template xmlns=\"urn:chartbridge:template:1\"><titles title=\"&a;\"/></template>";
    assertThrows(ChartException.class, () -> TemplateCheck.check(bomb.getBytes(UTF_8)));
  }
}
