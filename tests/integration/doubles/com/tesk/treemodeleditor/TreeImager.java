// SPDX-License-Identifier: Apache-2.0
package com.tesk.treemodeleditor;

import java.io.IOException;
import java.nio.charset.StandardCharsets;
import java.nio.file.Files;
import java.nio.file.Path;
import java.util.HashMap;
import java.util.LinkedHashMap;

/** A stand-in for the tree imager: it tells what it was called with, or does what the model's text says. */
public class TreeImager {
  private String schemaPath = "";

  public void setSchemaPath(String path) {
    schemaPath = path;
  }

  public boolean renderToFile(byte[] model, byte[] display, String path, int type, boolean flag, int percent)
      throws IOException {
    throwIfAsked(model);
    if (string(model).equals("false")) {
      return false;
    }
    String call = "renderToFile " + string(model) + " " + string(display) + " " + type + " " + flag + " " + percent
        + " " + schemaPath;
    Files.writeString(Path.of(path), call);
    return true;
  }

  public byte[] renderToMemory(byte[] model, byte[] display, int type, int percent) {
    throwIfAsked(model);
    return switch (string(model)) {
      case "null" -> null;
      case "empty" -> new byte[0];
      default -> bytes("renderToMemory " + string(model) + " " + string(display) + " " + type + " " + percent);
    };
  }

  public long[] calculateSizeArray(byte[] model, byte[] display) {
    throwIfAsked(model);
    return sizes(string(model));
  }

  /** The sizes that a text asks for. */
  static long[] sizes(String text) {
    return switch (text) {
      case "null" -> null;
      case "nothing" -> new long[0];
      case "short" -> new long[] {5};
      case "flat" -> new long[] {120, 0};
      default -> new long[] {300, 200, 100};
    };
  }

  public HashMap<String, byte[]> renderModelToMemory(
      byte[] model, byte[] display, byte[] style, byte[] samples, String title, int type, int depth) {
    throwIfAsked(model);
    HashMap<String, byte[]> map = new LinkedHashMap<>();
    switch (string(model)) {
      case "null" -> {
        return null;
      }
      case "empty" -> { }
      case "nameless" -> {
        map.put("first", bytes("1"));
        map.put("", bytes("2"));
        map.put("last", bytes("3"));
      }
      default -> {
        map.put("a", bytes("abc"));
        map.put("b", new byte[0]);
        map.put("call", bytes(string(model) + " " + string(display) + " " + string(style) + " " + string(samples)
            + " " + title + " " + type + " " + depth));
        map.put("ü\0cut", bytes("d"));
      }
    }
    return map;
  }

  public String[] renderModelToFiles(
      byte[] model, byte[] display, byte[] style, byte[] samples, String title, String folder, int type, int depth) {
    throwIfAsked(model);
    return switch (string(model)) {
      case "null" -> null;
      case "empty" -> new String[0];
      default -> new String[] {string(model) + " " + string(display) + " " + string(style) + " " + string(samples)
          + " " + title + " " + folder + " " + type + " " + depth, null, "ü"};
    };
  }

  static void throwIfAsked(byte[] model) {
    if (string(model).equals("throw")) {
      throw new IllegalStateException("the tree says so");
    }
  }

  static String string(byte[] bytes) {
    return new String(bytes, StandardCharsets.UTF_8);
  }

  static byte[] bytes(String text) {
    return text.getBytes(StandardCharsets.UTF_8);
  }
}
