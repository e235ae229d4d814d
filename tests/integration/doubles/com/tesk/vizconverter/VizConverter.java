// SPDX-License-Identifier: Apache-2.0
package com.tesk.vizconverter;

import java.nio.charset.StandardCharsets;

/** A stand-in for the converter: what it does is told by its input. */
public class VizConverter {
  private String message;

  /** Answers "null" with null, "nothing" with no byte, throws on "throw", and echoes anything else between tags. */
  public byte[] ConvertGPL(byte[] gpl) {
    String text = new String(gpl, StandardCharsets.UTF_8);
    if (text.startsWith("throw")) {
      message = "thrown for " + text;
      throw new IllegalArgumentException(message);
    }
    if (text.startsWith("null")) {
      message = "no answer to " + text;
      return null;
    }
    message = null;
    if (text.equals("nothing")) {
      return new byte[0];
    }
    return ("<gpl>" + text + "</gpl>").getBytes(StandardCharsets.UTF_8);
  }

  /** Answers with the same bytes. */
  public byte[] ConvertXml(byte[] xml) {
    return xml.clone();
  }

  public String getErrorMessage() {
    return message;
  }
}
