// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.fuzz;

import static java.nio.charset.StandardCharsets.ISO_8859_1;
import static java.nio.charset.StandardCharsets.UTF_8;

import java.io.ByteArrayOutputStream;
import java.util.ArrayList;
import java.util.List;
import java.util.Random;
import java.util.regex.Matcher;
import java.util.regex.Pattern;

/**
 * Makes wrong inputs out of right ones. The same random numbers make the same inputs. Texts are
 * changed word by word as well, since single bytes seldom get beyond a parser.
 */
final class Mutator {
  private static final Pattern TOKEN =
      Pattern.compile("[\\p{L}_][\\p{L}\\p{N}_-]*|[+-]?[0-9][0-9.eE+-]*|\\s+|.", Pattern.DOTALL);

  /** What numbers are replaced by. */
  private static final List<String> NUMBERS = List.of("0", "-0", "-1", "1", "2", "0.5", "1e308",
      "-1e308", "1e-320", "4.9e-324", "NaN", "Infinity", "2147483647", "2147483648", "-2147483649",
      "9223372036854775808", "1e400", "100000", "65536", "1000000", "0.1e-7", "3.", ".3", "1,5",
      "9".repeat(400), "1e2147483648", "-00001", "0x10", "12345678901234567890");

  /** What stands in the way of anything. */
  private static final List<String> TEXTS = List.of("", " ", "\0", "\t", "\r", "\r\n", "\"", "'",
      "<", ">", "&", "&amp;", "&#0;", "&#xD800;", "&lt;", "&x;", "]]>", "<!--", "-->", "<![CDATA[",
      "<?xml version='1.0'?>", "<!DOCTYPE a []>", "xmlns=\"\"", "{", "}", "[", "]", ":", ",", ";",
      "%", "%s", "\\", "\\u0000", "\\", "#", "#12", "#ffffff", "url(#a)", "(", ")", "null", "true",
      "false", "NA", "\u00e9", "e\u0301", "\ud835\udcb3", "\u202e", "\ufeff", "\u2028", "\uffff",
      "\u4e2d\u6587", "\u0639\u0631\u0628", "x".repeat(3000), "a ".repeat(500), "default", "none",
      "''", "''''", "yyyy", "dd.MM.yyyy HH:mm", "#,##0.###", "0.00E0", "../../x", "/dev/null",
      "http://127.0.0.1:9/", "file:///etc/passwd", "\u0000\u0001", "1", "0", "-1", "log", "time");

  private final Random random;

  Mutator(Random random) {
    this.random = random;
  }

  /**
   * A changed copy.
   *
   * @param other another input of the same kind, of which parts may be taken
   * @param isText whether words mean something in it
   */
  byte[] mutate(byte[] input, byte[] other, boolean isText) {
    byte[] mutated = input;
    int changes = 1 + (random.nextInt(3) == 0 ? random.nextInt(6) : random.nextInt(2));
    for (int i = 0; i < changes; i++) {
      boolean words = isText && random.nextInt(10) < 8;
      mutated = words ? changeWords(mutated, other) : changeBytes(mutated, other);
    }
    return mutated;
  }

  private byte[] changeWords(byte[] input, byte[] other) {
    List<String> tokens = tokens(input);
    if (tokens.isEmpty()) {
      return any(TEXTS).getBytes(UTF_8);
    }
    int at = random.nextInt(tokens.size());
    switch (random.nextInt(12)) {
      case 0 -> tokens.remove(at);
      case 1 -> tokens.add(at, any(TEXTS));
      case 2 -> tokens.set(at, any(TEXTS));
      case 3, 4 -> setNumber(tokens, at);
      case 5 -> tokens.set(at, any(tokens));
      case 6 -> tokens.set(at, any(orSelf(tokens(other), tokens)));
      case 7 -> swap(tokens, at, random.nextInt(tokens.size()));
      case 8 -> moveLines(tokens);
      case 9 -> repeat(tokens, at);
      case 10 -> tokens.subList(at, Math.min(tokens.size(), at + 1 + random.nextInt(30))).clear();
      default -> setWordOfSameKind(tokens, at);
    }
    return String.join("", tokens).getBytes(UTF_8);
  }

  private static List<String> tokens(byte[] input) {
    List<String> tokens = new ArrayList<>();
    Matcher matcher = TOKEN.matcher(new String(input, UTF_8));
    while (matcher.find()) {
      tokens.add(matcher.group());
    }
    return tokens;
  }

  private static List<String> orSelf(List<String> wanted, List<String> otherwise) {
    return wanted.isEmpty() ? otherwise : wanted;
  }

  private String any(List<String> list) {
    return list.get(random.nextInt(list.size()));
  }

  /** The next number from there on. */
  private void setNumber(List<String> tokens, int from) {
    for (int i = 0; i < tokens.size(); i++) {
      int at = (from + i) % tokens.size();
      if (isNumber(tokens.get(at))) {
        tokens.set(at, any(NUMBERS));
        return;
      }
    }
    tokens.set(from, any(NUMBERS));
  }

  private static boolean isNumber(String token) {
    return !token.isEmpty() && Character.isDigit(token.charAt(token.length() - 1))
        && !Character.isLetter(token.charAt(0));
  }

  /** A word becomes another word that stands in the text. */
  private void setWordOfSameKind(List<String> tokens, int from) {
    List<String> words = tokens.stream().filter(Mutator::isWord).toList();
    for (int i = 0; i < tokens.size() && !words.isEmpty(); i++) {
      int at = (from + i) % tokens.size();
      if (isWord(tokens.get(at))) {
        tokens.set(at, any(words));
        return;
      }
    }
  }

  private static boolean isWord(String token) {
    return !token.isEmpty() && Character.isLetter(token.charAt(0));
  }

  private static void swap(List<String> tokens, int a, int b) {
    String moved = tokens.get(a);
    tokens.set(a, tokens.get(b));
    tokens.set(b, moved);
  }

  private void moveLines(List<String> tokens) {
    List<String> lines =
        new ArrayList<>(List.of(String.join("", tokens).split("(?<=\n)|(?<=>)", -1)));
    String moved = lines.remove(random.nextInt(lines.size()));
    if (random.nextBoolean()) {
      lines.add(random.nextInt(lines.size() + 1), moved);
    }
    tokens.clear();
    tokens.addAll(lines);
  }

  private void repeat(List<String> tokens, int from) {
    int to = Math.min(tokens.size(), from + 1 + random.nextInt(40));
    int times = random.nextInt(8) == 0 ? 200 : 1 + random.nextInt(4);
    String part = String.join("", tokens.subList(from, to));
    tokens.add(to, part.repeat(times));
  }

  private byte[] changeBytes(byte[] input, byte[] other) {
    if (input.length == 0) {
      return new byte[] {(byte) random.nextInt(256)};
    }
    int at = random.nextInt(input.length);
    int length = Math.min(input.length - at, 1 + random.nextInt(random.nextBoolean() ? 4 : 64));
    byte[] changed = input.clone();
    switch (random.nextInt(8)) {
      case 0 -> changed[at] ^= (byte) (1 << random.nextInt(8));
      case 1 -> changed[at] = (byte) random.nextInt(256);
      case 2 -> changed[at] = (byte) (random.nextBoolean() ? 0 : 255);
      case 3 -> {
        return joined(slice(input, 0, at));
      }
      case 4 -> {
        return joined(slice(input, 0, at), slice(input, at + length, input.length));
      }
      case 5 -> {
        return joined(slice(input, 0, at + length), slice(input, at, input.length));
      }
      case 6 -> {
        int start = other.length == 0 ? 0 : random.nextInt(other.length);
        return joined(slice(input, 0, at), slice(other, start, other.length));
      }
      default -> {
        for (int i = at; i < at + length; i++) {
          changed[i] = (byte) random.nextInt(256);
        }
      }
    }
    return changed;
  }

  private static byte[] slice(byte[] bytes, int from, int to) {
    return new String(bytes, ISO_8859_1).substring(from, Math.max(from, to)).getBytes(ISO_8859_1);
  }

  private static byte[] joined(byte[]... parts) {
    ByteArrayOutputStream out = new ByteArrayOutputStream();
    for (byte[] part : parts) {
      out.writeBytes(part);
    }
    return out.toByteArray();
  }
}
