// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.document.pdf;

import java.io.IOException;
import java.net.URI;
import java.nio.BufferUnderflowException;
import java.nio.ByteBuffer;
import java.nio.charset.StandardCharsets;
import java.nio.file.Files;
import java.nio.file.Path;
import org.chartbridge.document.export.FontFace;

/**
 * Single fonts out of font collections, which the formatter does not read when their outlines are
 * PostScript's: each has a URI of its own, behind which it is a font file like any other.
 */
final class FontCollectionFiles {
  private static final byte[] TAG = "ttcf".getBytes(StandardCharsets.US_ASCII);
  private static final int HEADER = 12;
  private static final int ENTRY = 16;

  private FontCollectionFiles() {}

  /** The URI of a face: that of its file, unless that is a collection. */
  static URI uri(FontFace face) {
    URI file = face.file().toUri();
    String name = face.file().toString();
    if (!name.endsWith("c") && !name.endsWith("C")) {
      return file;
    }
    // A scheme of its own would not do: the formatter makes URLs of what it is given.
    return URI.create(file + "?" + face.index());
  }

  static boolean isOf(URI uri) {
    return uri.getQuery() != null;
  }

  static byte[] read(URI uri) throws IOException {
    byte[] bytes = Files.readAllBytes(Path.of(uri.getPath()));
    try {
      return font(ByteBuffer.wrap(bytes), Integer.parseInt(uri.getQuery()));
    } catch (BufferUnderflowException | IndexOutOfBoundsException e) {
      throw new IOException(uri.getPath() + " is damaged", e);
    }
  }

  /** A list of tables, then the tables, which fonts of a collection may share. */
  private static byte[] font(ByteBuffer collection, int index) {
    byte[] tag = new byte[TAG.length];
    collection.get(tag);
    if (!java.util.Arrays.equals(tag, TAG)) {
      return collection.array();
    }
    int start = collection.getInt(HEADER + 4 * index);
    int count = collection.getShort(start + 4) & 0xFFFF;
    int size = HEADER + ENTRY * count;
    for (int i = 0; i < count; i++) {
      size += padded(collection.getInt(start + HEADER + ENTRY * i + 12));
    }
    ByteBuffer font = ByteBuffer.allocate(size);
    font.put(collection.array(), start, HEADER);
    int place = HEADER + ENTRY * count;
    for (int i = 0; i < count; i++) {
      int entry = start + HEADER + ENTRY * i;
      int length = collection.getInt(entry + 12);
      font.putInt(collection.getInt(entry)).putInt(collection.getInt(entry + 4));
      font.putInt(place).putInt(length);
      System.arraycopy(
          collection.array(), collection.getInt(entry + 8), font.array(), place, length);
      place += padded(length);
    }
    return font.array();
  }

  private static int padded(int length) {
    return (length + 3) / 4 * 4;
  }
}
