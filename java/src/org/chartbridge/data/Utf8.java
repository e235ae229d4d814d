// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.data;

import java.nio.ByteBuffer;
import java.nio.CharBuffer;
import java.nio.charset.CharsetDecoder;
import java.nio.charset.CoderResult;
import java.nio.charset.StandardCharsets;

/** Strict UTF-8: bytes that are none are found instead of being replaced. */
final class Utf8 {
  private Utf8() {}

  /** The index of the first byte that is not part of well-formed UTF-8, or -1. */
  static int firstInvalid(byte[] bytes, int from, int to) {
    int i = from;
    while (i < to && bytes[i] >= 0) {
      i++;
    }
    if (i == to) {
      return -1;
    }
    CharsetDecoder decoder = StandardCharsets.UTF_8.newDecoder();
    ByteBuffer in = ByteBuffer.wrap(bytes, i, to - i);
    CoderResult result = decoder.decode(in, CharBuffer.allocate(to - i), true);
    return result.isError() ? in.position() : -1;
  }

  static String decode(byte[] bytes, int from, int to) {
    return new String(bytes, from, to - from, StandardCharsets.UTF_8);
  }
}
