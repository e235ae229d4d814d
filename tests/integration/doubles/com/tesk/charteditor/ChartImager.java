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
  /** An exception whose text throws another one. */
  private static final class Unspeakable extends RuntimeException {
    private static final long serialVersionUID = 1;

    @Override
    public String getMessage() {
      throw new IllegalStateException("there are no words");
    }
  }

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
    if (command.equals("throw unspeakable")) {
      throw new Unspeakable();
    }
    if (command.equals("nothing")) {
      return new byte[0];
    }
    if (command.equals("round")) {
      disturbRounding();
    }
    return ("RenderToMem " + command + " " + buffer(data) + " " + type + " " + size + " "
        + aux(text1, bytes1, text2, bytes2)).getBytes(StandardCharsets.UTF_8);
  }

  /**
   * Three blocks: the call, then "map" and "json" with the flag. "address" gives the place of the data instead,
   * "blocks one two" a block for each further word, and "nothing" no byte.
   */
  public byte[] RenderImageMapToMemory(
      byte[] chart, ByteBuffer data, int type, double size, boolean notFlag, String text1, byte[] bytes1,
      String text2, byte[] bytes2)
      throws IOException {
    String command = string(chart);
    if (command.equals("nothing")) {
      return new byte[0];
    }
    if (command.startsWith("blocks ")) {
      return blocks(command.substring("blocks ".length()).split(" "));
    }
    String first = command.equals("address")
        ? Long.toHexString(addressOf(data)) + " " + data.capacity() + " " + data.get(data.capacity() - 1)
        : "RenderImageMapToMemory " + command + " " + buffer(data) + " " + type + " " + size + " "
            + aux(text1, bytes1, text2, bytes2);
    return blocks(first, "map " + notFlag, "json " + notFlag);
  }

  private static byte[] blocks(String... texts) throws IOException {
    ByteArrayOutputStream blocks = new ByteArrayOutputStream();
    for (String text : texts) {
      byte[] bytes = text.getBytes(StandardCharsets.UTF_8);
      blocks.write(ByteBuffer.allocate(4).putInt(bytes.length).array());
      blocks.write(bytes);
    }
    return blocks.toByteArray();
  }

  /** Both texts and the data, or no byte for "nothing". */
  public byte[] EmbedHistogramInGraph(byte[] first, byte[] second, ByteBuffer histogram, int count) {
    if (string(first).equals("nothing")) {
      return new byte[0];
    }
    return (string(first) + string(second) + buffer(histogram) + count).getBytes(StandardCharsets.UTF_8);
  }

  /**
   * Answers "null" with null, "nothing" with no byte, and anything else with the document in the style sheet's name.
   */
  public byte[] ApplyStyleSheet(byte[] document, byte[] styleSheet) {
    String text = string(document);
    if (text.equals("nothing")) {
      return new byte[0];
    }
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
