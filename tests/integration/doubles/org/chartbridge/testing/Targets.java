// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.testing;

import java.nio.ByteBuffer;
import java.util.Arrays;

/** Methods for native tests to call, one of each kind of result and of each kind of argument that matters. */
public class Targets {
  private final String made;

  public Targets() {
    made = "plain";
  }

  /** Takes a buffer in a constructor. */
  public Targets(ByteBuffer data, int number) {
    made = describe(data) + " " + number;
  }

  public String made() {
    return made;
  }

  /** Takes a buffer between arguments of every primitive type. */
  public String mixed(
      boolean z, byte b, char c, short s, int i, ByteBuffer data, long j, float f, double d, byte[] bytes,
      ByteBuffer second, String text) {
    return z + " " + b + " " + (int) c + " " + s + " " + i + " " + describe(data) + " " + j + " " + f + " " + d
        + " " + Arrays.toString(bytes) + " " + describe(second) + " " + text;
  }

  public static String mixedStatic(ByteBuffer data, String text) {
    return describe(data) + " " + text;
  }

  public void takeVoid(ByteBuffer data) {
    System.setProperty("targets.taken", describe(data));
  }

  public boolean takeBoolean(ByteBuffer data) {
    return data.get(0) == 1;
  }

  public int takeInt(ByteBuffer data) {
    return data.get(0);
  }

  public String takeObject(Object object) {
    return object.getClass().getName();
  }

  public boolean isTrue() {
    return true;
  }

  public byte aByte() {
    return -7;
  }

  public char aChar() {
    return 'x';
  }

  public short aShort() {
    return -300;
  }

  public int anInt() {
    return 70_000;
  }

  public long aLong() {
    return 5_000_000_000L;
  }

  public float aFloat() {
    return 1.5f;
  }

  public double aDouble() {
    return 2.25;
  }

  public void nothing() {}

  public static int staticInt() {
    return 42;
  }

  public static String threadName() {
    return Thread.currentThread().getName();
  }

  public static boolean isDaemon() {
    return Thread.currentThread().isDaemon();
  }

  public void fail(String message) {
    throw new IllegalStateException(message);
  }

  /** Obtains the elements of an array and keeps them; the test puts native code behind it. */
  public static native void obtain(byte[] array);

  /** Writes into the kept elements and gives them back, naming their array by the kept global reference. */
  public static native void giveBack(byte[] other);

  /** Obtains elements in one native call and gives them back in another, with an array of the same length at hand. */
  public static String acrossCalls() {
    byte[] first = {1, 2};
    byte[] second = {5, 6};
    obtain(first);
    giveBack(second);
    return Arrays.toString(first) + Arrays.toString(second);
  }

  private static String describe(ByteBuffer data) {
    if (data == null) {
      return "null";
    }
    byte[] bytes = new byte[data.remaining()];
    data.duplicate().get(bytes);
    return (data.isDirect() ? "direct" : "heap") + Arrays.toString(bytes);
  }
}
