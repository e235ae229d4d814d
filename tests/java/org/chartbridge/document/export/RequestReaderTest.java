// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.document.export;

import static org.junit.jupiter.api.Assertions.assertEquals;
import static org.junit.jupiter.api.Assertions.assertNull;
import static org.junit.jupiter.api.Assertions.assertThrows;
import static org.junit.jupiter.api.Assertions.assertTrue;

import java.nio.charset.StandardCharsets;
import java.util.Locale;
import org.chartbridge.chart.ChartException;
import org.chartbridge.document.model.Paper;
import org.junit.jupiter.api.Test;
import org.junit.jupiter.params.ParameterizedTest;
import org.junit.jupiter.params.provider.CsvSource;

class RequestReaderTest {
  @Test
  void readsAllOptions() {
    ExportRequest request = RequestReader.read("{\"input\":\"a.xml\",\"to\":\"csv\",\"output\":"
        + "\"b\",\"base\":\"c\",\"language\":\"pt_BR\",\"style\":\"dark\",\"paper\":\"letter\","
        + "\"charset\":\"latin1\",\"table\":2,\"release\":true}");
    assertEquals(new ExportRequest(null, "a.xml", Target.CSV, "b", "c",
        Locale.forLanguageTag("pt-BR"), "dark", Paper.LETTER, StandardCharsets.ISO_8859_1, 2, true),
        request);
  }

  @Test
  void needsVeryLittle() {
    ExportRequest request = RequestReader.read(" {\"output\": \"x.PDF\", \"base\": null} ");
    assertEquals(Target.PDF, request.to());
    assertNull(request.document());
    assertNull(request.base());
    assertEquals(0, request.table());
  }

  @ParameterizedTest
  @CsvSource({"a.html,HTML", "a.htm,HTML", "a.pdf,PDF", "a.odt,ODT", "a.csv,CSV", "a.txt,TEXT",
    "b.text,TEXT"})
  void knowsTargetsByTheirEndings(String output, Target target) {
    assertEquals(target, RequestReader.read("{\"output\":\"" + output + "\"}").to());
  }

  @ParameterizedTest
  @CsvSource(delimiter = '|', quoteCharacter = '`', value = {
    "``|the request is empty; a JSON object is expected",
    "[]|request, line 1, column 1: a JSON object is expected",
    "{\"a\":1}|request, line 1, column 2: there is no option \"a\"; expected one of document,",
    "{\"out\":\"x\"}|request, line 1, column 2: there is no option \"out\"; expected",
    "{\"to\":1}|request, line 1, column 7: \"to\" is a string",
    "{\"table\":0}|request, line 1, column 10: \"table\" is a whole number from 1",
    "{\"table\":1.5}|request, line 1, column 10: \"table\" is a whole number from 1",
    "{\"table\":99999999999}|request, line 1, column 10: \"table\" is a whole number from 1",
    "{\"release\":1}|request, line 1, column 12: \"release\" is true or false",
    "{\"to\":\"pdf\"} x|request, line 1, column 15: this is not JSON",
    "{\"to\":\"pdf\"} {}|request, line 1, column 14: nothing is expected behind the object",
    "{\"to\":\"pdf\"|request, line 1, column ",
    "{\"to\":\"pdf\",\"to\":\"csv\"}|request, line 1, column 17: this is not JSON: Duplicate",
    "{\"to\":\"pdf\"}|the request has no \"output\"",
    "{\"to\":\"pfd\",\"output\":\"a\"}|request, line 1, column 7: \"to\" is \"pfd\"; expected one"
        + " of html, pdf,",
    "{\"output\":\"a.doc\"}|the request has no \"to\", and the output's ending does not say it",
    "{\"to\":\"check\",\"output\":\"a\"}|request, line 1, column 24: a check has no \"output\"",
    "{\"document\":\"a\",\"input\":\"b\",\"output\":\"a.pdf\"}|request, line 1, column 25: a"
        + " request names a \"document\" or an \"input\", not both",
    "{\"base\":\"a\",\"output\":\"a.pdf\"}|request, line 1, column 9: \"base\" goes with an",
    "{\"language\":\"1 2\",\"output\":\"a.pdf\"}|request, line 1, column 13: the language \"1 2\""
        + " is no BCP 47 tag",
    "{\"style\":\"drak\",\"output\":\"a.pdf\"}|request, line 1, column 10: \"style\" is \"drak\";"
        + " expected one of print, dark, mono, slides; did you mean \"dark\"?",
    "{\"paper\":\"a5\",\"output\":\"a.pdf\"}|request, line 1, column 10: \"paper\" is \"a5\";"
        + " expected one of a4, letter",
    "{\"table\":1,\"output\":\"a.pdf\"}|request, line 1, column 10: \"table\" goes with \"csv\";"
        + " pdf has all tables",
    "{\"charset\":\"UTF-8\",\"output\":\"a.html\"}|request, line 1, column 12: \"charset\" goes"
        + " with \"csv\" and \"text\"; html has its own encoding",
    "{\"charset\":\"utf-99\",\"output\":\"a.csv\"}|request, line 1, column 12: the charset"
        + " \"utf-99\" is not known",
  })
  void saysWhatIsWrong(String json, String expected) {
    String message =
        assertThrows(ChartException.class, () -> RequestReader.read(json)).getMessage();
    assertTrue(message.startsWith(expected), message);
  }
}
