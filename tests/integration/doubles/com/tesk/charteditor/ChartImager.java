// SPDX-License-Identifier: Apache-2.0
package com.tesk.charteditor;

import java.io.ByteArrayOutputStream;
import java.io.IOException;
import java.nio.ByteBuffer;
import java.nio.charset.StandardCharsets;
import java.nio.file.Files;
import java.nio.file.Path;
import java.util.Arrays;

/** A stand-in for the chart imager: it writes down what it was called with. */
public class ChartImager {
  /** Changes the rounding mode of the calling thread; the test puts native code behind it. */
  public static native void disturbRounding();

  /** The address of a direct buffer's memory; the test puts native code behind it. */
  public static native long addressOf(ByteBuffer buffer);

  public boolean RenderToFile(
      byte[] chart, ByteBuffer data, String path, int type, double size, String text1, byte[] bytes1, String text2,
      byte[] bytes2)
      throws IOException {
    String call = "RenderToFile " + string(chart) + " " + buffer(data) + " " + type + " " + size + " "
        + aux(text1, bytes1, text2, bytes2);
    return write(path, call);
  }

  public boolean RenderToFile(
      byte[] chart, byte[] data, String path, int type, double size, String text1, byte[] bytes1, String text2,
      byte[] bytes2)
      throws IOException {
    String call = "RenderToFile[] " + string(chart) + " " + string(data) + " " + type + " " + size + " "
        + aux(text1, bytes1, text2, bytes2);
    return write(path, call);
  }

  public boolean RenderImageMapToFile(
      byte[] chart, ByteBuffer data, String path, int type, double size, boolean notFlag, String text1, byte[] bytes1,
      String text2, byte[] bytes2)
      throws IOException {
    String call = "RenderImageMapToFile " + string(chart) + " " + buffer(data) + " " + type + " " + size + " "
        + notFlag + " " + aux(text1, bytes1, text2, bytes2);
    return write(path, call);
  }

  public byte[] RenderToMem(
      byte[] chart, ByteBuffer data, int type, double size, String text1, byte[] bytes1, String text2,
      byte[] bytes2) {
    String command = string(chart);
    if (command.equals("throw")) {
      throw new IllegalStateException("the chart says so");
    }
    if (command.equals("round")) {
      disturbRounding();
    }
    return ("RenderToMem " + command + " " + buffer(data) + " " + type + " " + size + " "
        + aux(text1, bytes1, text2, bytes2)).getBytes(StandardCharsets.UTF_8);
  }

  /** Three blocks: the call, then "map" and "json" with the flag. "address" gives the place of the data instead. */
  public byte[] RenderImageMapToMemory(
      byte[] chart, ByteBuffer data, int type, double size, boolean notFlag, String text1, byte[] bytes1,
      String text2, byte[] bytes2)
      throws IOException {
    String first = string(chart).equals("address")
        ? Long.toHexString(addressOf(data)) + " " + data.capacity() + " " + data.get(data.capacity() - 1)
        : "RenderImageMapToMemory " + string(chart) + " " + buffer(data) + " " + type + " " + size + " "
            + aux(text1, bytes1, text2, bytes2);
    ByteArrayOutputStream blocks = new ByteArrayOutputStream();
    for (String block : new String[] {first, "map " + notFlag, "json " + notFlag}) {
      byte[] bytes = block.getBytes(StandardCharsets.UTF_8);
      blocks.write(ByteBuffer.allocate(4).putInt(bytes.length).array());
      blocks.write(bytes);
    }
    return blocks.toByteArray();
  }

  /** Answers "null" with null, and anything else with the document in the style sheet's name. */
  public byte[] ApplyStyleSheet(byte[] document, byte[] styleSheet) {
    String text = string(document);
    return text.equals("null") ? null : (string(styleSheet) + "(" + text + ")").getBytes(StandardCharsets.UTF_8);
  }

  private static boolean write(String path, String call) throws IOException {
    Files.writeString(Path.of(path), call);
    return true;
  }

  private static String aux(String text1, byte[] bytes1, String text2, byte[] bytes2) {
    return text1 + Arrays.toString(bytes1) + text2 + Arrays.toString(bytes2);
  }

  private static String buffer(ByteBuffer data) {
    byte[] bytes = new byte[data.remaining()];
    data.duplicate().get(bytes);
    return (data.isDirect() ? "direct:" : "heap:") + string(bytes);
  }

  private static String string(byte[] bytes) {
    return new String(bytes, StandardCharsets.UTF_8);
  }
}
