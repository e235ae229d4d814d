// SPDX-License-Identifier: Apache-2.0
package com.tesk.treemodeleditor;

import java.io.IOException;
import java.nio.file.Files;
import java.nio.file.Path;

/** A stand-in for the tree editor: it keeps a list of its calls, or does what the model last shown says. */
public class TreeEditor {
  private final StringBuilder calls = new StringBuilder();
  private String model = "";
  private boolean needsRerendering;

  private void note(Object... words) {
    for (Object word : words) {
      calls.append(word).append(' ');
    }
    calls.setCharAt(calls.length() - 1, ';');
  }

  public void setSchemaPath(String path) {
    note("schema", path);
  }

  public void renderPMMLToScreen(int x, int y, int width, int height, byte[] newModel, byte[] display) {
    note("render", x, y, width, height, TreeImager.string(newModel), TreeImager.string(display));
    model = TreeImager.string(newModel);
    TreeImager.throwIfAsked(newModel);
  }

  public boolean needsRerendering() {
    return needsRerendering;
  }

  public void setNeedsRerendering(boolean flag) {
    needsRerendering = flag;
  }

  public void setThreadId(int id) {
    note("thread", id);
  }

  public void setDPI(int dpi) {
    note("dpi", dpi);
  }

  public void deActivate() {
    note("deActivate");
  }

  public void close() {
    note("close");
  }

  public long[] getSizeArray() {
    note("size");
    TreeImager.throwIfAsked(TreeImager.bytes(model));
    return TreeImager.sizes(model);
  }

  public long[] calculateSizeArray(byte[] otherModel, byte[] display) {
    note("calculate", TreeImager.string(otherModel));
    TreeImager.throwIfAsked(otherModel);
    return TreeImager.sizes(TreeImager.string(otherModel));
  }

  public byte[] extractDisplayData() {
    return switch (model) {
      case "null" -> null;
      case "nothing" -> new byte[0];
      case "throw" -> throw new IllegalStateException("the tree says so");
      default -> TreeImager.bytes(calls.toString());
    };
  }

  public byte[] extractCompressedPMML() {
    return switch (model) {
      case "null" -> null;
      case "nothing" -> new byte[0];
      case "throw" -> throw new IllegalStateException("the tree says so");
      default -> new byte[] {31, (byte) 139, 0, 1};
    };
  }

  public boolean renderToFile(byte[] otherModel, byte[] display, String path, int type, boolean flag)
      throws IOException {
    TreeImager.throwIfAsked(otherModel);
    if (TreeImager.string(otherModel).equals("false")) {
      return false;
    }
    Files.writeString(Path.of(path), "renderToFile " + TreeImager.string(otherModel) + " "
        + TreeImager.string(display) + " " + type + " " + flag);
    return true;
  }
}
