// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.data;

import java.nio.ByteBuffer;
import java.util.Arrays;

/**
 * Splits CSV bytes (RFC 4180) into fields. The bytes pass through a small window, so neither a
 * direct buffer nor an array is ever copied as a whole, and a field costs no object. A record ends
 * with LF, CRLF or CR; lines are counted the same way.
 *
 * <p>The current field is {@link #bytes()} from {@link #from()} to {@link #to()}, valid until the
 * next call of {@link #next}.
 */
final class CsvTokenizer {
  private static final int WINDOW_SIZE = 1 << 16;

  /** An open quote would otherwise draw all the rest of the data into the window. */
  private static final int MAX_FIELD_LENGTH = 1 << 24;

  /** What is wrong with the form of a field. */
  enum Fault { NONE, UNCLOSED_QUOTE, TEXT_AFTER_QUOTE, QUOTE_IN_TEXT, TOO_LONG }

  private final ByteBuffer source;
  private byte[] window = new byte[WINDOW_SIZE];
  private int position;
  private int limit;

  private int from;
  private int to;
  private boolean quoted;
  private boolean endsRecord = true;
  private Fault fault = Fault.NONE;
  private int line = 1;
  private int fieldLine = 1;

  /**
   * Reads from the position of {@code source} to its limit; the buffer's own position does not
   * move.
   */
  CsvTokenizer(ByteBuffer source) {
    this.source = source.duplicate();
    skipByteOrderMark();
  }

  byte[] bytes() {
    return window;
  }

  int from() {
    return from;
  }

  int to() {
    return to;
  }

  /** Whether the field stood in quotes. */
  boolean quoted() {
    return quoted;
  }

  /** Whether the field is the last one of its record. */
  boolean endsRecord() {
    return endsRecord;
  }

  boolean isBlank() {
    return from == to && !quoted;
  }

  /** The line on which the field begins, counted from 1. */
  int line() {
    return fieldLine;
  }

  Fault fault() {
    return fault;
  }

  /** Goes to the next field; false at the end of the data. After a fault there is no next field. */
  boolean next() {
    from = position;
    to = position;
    if (fault != Fault.NONE || (endsRecord && !available())) {
      return false;
    }
    fieldLine = line;
    quoted = available() && window[position] == '"';
    if (quoted) {
      readQuoted();
    } else {
      readPlain();
    }
    return true;
  }

  private void readPlain() {
    while (available()) {
      int scanned = position;
      byte[] bytes = window;
      int end = limit;
      while (scanned < end && !isSpecial(bytes[scanned])) {
        scanned++;
      }
      position = scanned;
      if (scanned == end) {
        continue;
      }
      to = scanned;
      if (bytes[scanned] == '"') {
        fault = Fault.QUOTE_IN_TEXT;
        return;
      }
      readSeparator();
      return;
    }
    to = position;
    endsRecord = true;
    checkLength();
  }

  private static boolean isSpecial(byte b) {
    return b == ',' || b == '\n' || b == '\r' || b == '"';
  }

  private void readQuoted() {
    position++;
    from = position;
    // Doubled quotes are squeezed in place: the text is written to `to` while reading goes on at
    // `position`.
    to = position;
    while (available()) {
      byte b = window[position];
      if (b == '"') {
        position++;
        if (!available() || window[position] != '"') {
          readSeparator();
          return;
        }
      } else if (b == '\n' || (b == '\r' && !isFollowedByLineFeed())) {
        line++;
      }
      window[to++] = window[position++];
    }
    fault = Fault.UNCLOSED_QUOTE;
    checkLength();
  }

  /** A field that was cut off at the end of a full window did not end where the bytes ended. */
  private void checkLength() {
    if (source.hasRemaining()) {
      fault = Fault.TOO_LONG;
    }
  }

  private boolean isFollowedByLineFeed() {
    if (position + 1 == limit && !refill()) {
      return false;
    }
    return window[position + 1] == '\n';
  }

  private void readSeparator() {
    endsRecord = true;
    if (!available()) {
      checkLength();
      return;
    }
    byte b = window[position];
    if (b == ',') {
      endsRecord = false;
    } else if (b == '\r') {
      line++;
      if (isFollowedByLineFeed()) {
        position++;
      }
    } else if (b == '\n') {
      line++;
    } else {
      fault = Fault.TEXT_AFTER_QUOTE;
      return;
    }
    position++;
  }

  private boolean available() {
    return position < limit || refill();
  }

  /** Moves the current field to the start of the window and reads on behind what is there. */
  private boolean refill() {
    if (!source.hasRemaining()) {
      return false;
    }
    int kept = limit - from;
    if (kept >= MAX_FIELD_LENGTH) {
      return false;
    }
    if (kept == window.length) {
      window = Arrays.copyOf(window, 2 * window.length);
    } else {
      System.arraycopy(window, from, window, 0, kept);
      position -= from;
      to -= from;
      from = 0;
    }
    int count = Math.min(window.length - kept, source.remaining());
    source.get(window, kept, count);
    limit = kept + count;
    return true;
  }

  private void skipByteOrderMark() {
    int start = source.position();
    if (source.remaining() >= 3 && source.get(start) == (byte) 0xEF
        && source.get(start + 1) == (byte) 0xBB && source.get(start + 2) == (byte) 0xBF) {
      source.position(start + 3);
    }
  }
}
