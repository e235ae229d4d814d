// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.document.export;

import java.text.BreakIterator;
import java.text.DateFormatSymbols;
import java.util.ArrayList;
import java.util.BitSet;
import java.util.LinkedHashSet;
import java.util.List;
import java.util.Locale;
import java.util.Map;
import java.util.Set;
import java.util.concurrent.ConcurrentHashMap;
import java.util.regex.Matcher;
import java.util.regex.Pattern;

/**
 * Where a text may be broken into lines. Numbers and dates stay whole: half a number is another
 * number. Lists of numbers are broken behind their separators.
 */
public final class LineBreaks {
  /** What may be broken where there is little room; each includes those before it. */
  public enum Detail {
    /** Between words, and where Chinese, Japanese and Korean are broken. */
    WORDS,
    /**
     * Within words, after {@code _ - /}, between the signs of short words, and anywhere in what no
     * line of a page holds.
     */
    PARTS,
    /** Anywhere within words that are longer than {@link #LONG_WORD}: keys, sequences. */
    ANYWHERE
  }

  /** So many characters have the longest words of languages; what is longer is no word. */
  public static final int LONG_WORD = 40;

  /** No line of a page holds a word of more characters. */
  public static final int LONGEST_WORD = 80;

  /** So many signs of Chinese or Japanese are taken for one word. */
  private static final int SHORT_WORD = 6;

  private static final String SEPARATORS = "_-/";
  private static final char ZERO_WIDTH_SPACE = '\u200B';
  /** Between the digits of a number, a day, a time, a range. */
  private static final String BETWEEN =
      "[.,:'\u2019/\\-\u2013\u2212\u066B\u066C\u00A0\u2009\u202F]";

  private static final String BLANKS = " \u00A0\u2009\u202F";

  // No part of what follows repeats without possession or a bound: it would take stack, or time by
  // the square of the length.
  private static final String SIGNS = "[<>=~+\\-\u2212\u2013\u00B1\u2248\u2264\u2265#\\p{Sc}]";
  private static final String NUMBER = "(?:(?<![\\p{L}\\p{Nd}_/])" + SIGNS + "{1,3} ?)?[.,]?"
      + "(?:(?<!\\p{Nd})\\p{Nd}{1,3}(?: \\p{Nd}{3}(?!\\p{Nd}))++|\\p{Nd}++)"
      + "(?:" + BETWEEN + "{1,2}\\p{Nd}++)*+(?:[eE][+\\-\u2212]?\\p{Nd}+)?"
      + "(?: ?[%\u2030\u00B0\\p{Sc}])?";
  private static final String ISO_TIME =
      "\\p{Nd}{4}-\\p{Nd}{2}-\\p{Nd}{2}T\\p{Nd}{2}:"
      + "[\\p{Nd}:.,]*\\p{Nd}(?:Z|[+\\-]\\p{Nd}[\\p{Nd}:]*)?";

  private static final Map<Locale, Pattern> WHOLES = new ConcurrentHashMap<>();

  /** Running text has whole lines: a longer word or number leaves the page unless it is broken. */
  private static final int LONG_RUN = 60;

  /** Numbers have at most so many groups of digits behind blanks; what has more is a list. */
  private static final int MOST_GROUPS = 5;
  /** So many characters have the longest numbers of more than two parts, and dates. */
  private static final int LONGEST_NUMBER = 40;

  private final String text;
  private final int longWord;
  /** The places within numbers and dates: a bit is set when the character there belongs to the one
   * before it. */
  private final BitSet inside = new BitSet();
  /** The places behind the separators of lists of numbers. */
  private final BitSet inList = new BitSet();
  /** Where scripts without blanks can be broken. */
  private final BitSet betweenSigns = new BitSet();
  /** The same in texts so short that they are words. */
  private final BitSet inShortWord = new BitSet();
  /** The places within words that may be broken anywhere, when it has to be and at once. */
  private final BitSet inLongWord = new BitSet();
  private final BitSet inLongestWord = new BitSet();
  /** Where lines are broken by the usual rules; null until somebody asks. */
  private BitSet usual;

  /**
   * @param language of the names of months, beside English
   */
  public LineBreaks(String text, Locale language) {
    this(text, language, LONG_WORD, Integer.MAX_VALUE);
  }

  private LineBreaks(String text, Locale language, int longWord, int longNumber) {
    this.text = text;
    this.longWord = longWord;
    findWholes(language, longNumber);
    findSigns();
    findLongWords();
  }

  /** The breaks of text that has the whole page for its lines. */
  public static LineBreaks running(String text, Locale language) {
    return new LineBreaks(text, language, LONG_RUN, LONG_RUN);
  }

  private void findWholes(Locale language, int longest) {
    if (text.codePoints().noneMatch(Character::isDigit)) {
      return;
    }
    Matcher whole = WHOLES.computeIfAbsent(language, LineBreaks::wholes).matcher(text);
    while (whole.find()) {
      List<Integer> ends = isList(whole.start(), whole.end())
          ? separators(whole.start(), whole.end()) : new ArrayList<>();
      ends.forEach(inList::set);
      ends.add(whole.end());
      int start = whole.start();
      for (int end : ends) {
        if (end - start <= longest) {
          inside.set(start + 1, end);
        }
        start = end;
      }
    }
  }

  /** Whether what looks like a number is several: rooms, keys, "1,2,3,4" and so on. */
  private boolean isList(int start, int end) {
    int groups = 0;
    int parts = 0;
    for (int place : separators(start, end)) {
      parts++;
      groups += BLANKS.indexOf(text.charAt(place - 1)) >= 0 ? 1 : 0;
    }
    return groups > MOST_GROUPS || parts > 1 && end - start > LONGEST_NUMBER;
  }

  /** The places behind what is between the digits, not behind signs in front and of exponents. */
  private List<Integer> separators(int start, int end) {
    List<Integer> places = new ArrayList<>();
    boolean isBehindDigits = false;
    for (int i = start + 1; i < end; i++) {
      char before = text.charAt(i - 1);
      if (Character.isDigit(before)) {
        isBehindDigits = true;
      } else if (Character.isLetter(before)) {
        isBehindDigits = false;
      } else if (isBehindDigits && Character.isDigit(text.charAt(i))) {
        places.add(i);
      }
    }
    return places;
  }

  private static Pattern wholes(Locale language) {
    Set<String> names = new LinkedHashSet<>();
    for (Locale locale : List.of(language, Locale.ENGLISH)) {
      DateFormatSymbols symbols = DateFormatSymbols.getInstance(locale);
      names.addAll(List.of(symbols.getMonths()));
      names.addAll(List.of(symbols.getShortMonths()));
    }
    names.removeIf(name -> name.chars().noneMatch(Character::isLetter));
    StringBuilder months = new StringBuilder();
    for (String name : names) {
      months.append(months.length() == 0 ? "" : "|").append(Pattern.quote(name));
    }
    String month = "(?i:" + months + ")\\.?(?!\\p{L})";
    String dayFirst = "\\p{Nd}{1,2}\\.?[\\-/ .]" + month + "(?:[\\-/ .,]{1,2}\\p{Nd}{2,4})?";
    String yearFirst = "\\p{Nd}{4}[\\-/ ]" + month + "(?:[\\-/ ]\\p{Nd}{1,2})?";
    String monthFirst = "(?<!\\p{L})" + month + "[\\-/ ]\\p{Nd}{1,4}(?:,? \\p{Nd}{4})?";
    return Pattern.compile(
        ISO_TIME + "|" + dayFirst + "|" + yearFirst + "|" + monthFirst + "|" + NUMBER);
  }

  private void findSigns() {
    if (text.chars().noneMatch(c -> isSign((char) c))) {
      return;
    }
    BreakIterator lines = BreakIterator.getLineInstance(Locale.ROOT);
    lines.setText(text);
    for (int i = lines.next(); i != BreakIterator.DONE && i < text.length(); i = lines.next()) {
      if (isSign(text.charAt(i - 1)) || isSign(text.charAt(i))) {
        betweenSigns.set(i);
      }
    }
    int start = 0;
    for (int i = 1; i <= text.length(); i++) {
      if (i == text.length() || text.charAt(i) == ' ') {
        if (i - start <= SHORT_WORD) {
          inShortWord.set(start + 1, i);
          betweenSigns.clear(start + 1, i);
        }
        start = i + 1;
      }
    }
  }

  /** Of the scripts of China, Japan and Korea, which set no blanks or may be broken without. */
  private static boolean isSign(char c) {
    return c >= '\u2E80' && c <= '\uD7AF' || c >= '\uF900' && c <= '\uFAFF'
        || c >= '\uFE30' && c <= '\uFE4F' || c >= '\uFF00' && c <= '\uFFEF'
        || c >= '\uD840' && c <= '\uD8BF';
  }

  private void findLongWords() {
    if (text.length() <= longWord) {
      return;
    }
    int start = 0;
    for (int i = 1; i <= text.length(); i++) {
      if (i == text.length() || mayBreak(i, Detail.PARTS)) {
        if (i - start > longWord) {
          inLongWord.set(start + 1, i);
        }
        if (i - start > LONGEST_WORD) {
          inLongestWord.set(start + 1, i);
        }
        start = i;
      }
    }
  }

  /** Whether a line may end in front of a character, from 1. */
  public boolean mayBreak(int place, Detail detail) {
    if (inside.get(place)) {
      return false;
    }
    char before = text.charAt(place - 1);
    if (before == ' ' || before == ZERO_WIDTH_SPACE || betweenSigns.get(place)
        || inList.get(place)) {
      return true;
    }
    return switch (detail) {
      case WORDS -> false;
      case PARTS -> isPart(place);
      case ANYWHERE -> isPart(place) || isIn(inLongWord, place);
    };
  }

  private boolean isPart(int place) {
    return isBehindSeparator(place) || isIn(inLongestWord, place)
        || inShortWord.get(place) && isSign(text.charAt(place - 1)) && isSign(text.charAt(place));
  }

  private boolean isBehindSeparator(int place) {
    return SEPARATORS.indexOf(text.charAt(place - 1)) >= 0 && place > 1
        && text.charAt(place - 2) != ' ' && text.charAt(place) != ' '
        && SEPARATORS.indexOf(text.charAt(place)) < 0;
  }

  private boolean isIn(BitSet words, int place) {
    return words.get(place) && !Character.isLowSurrogate(text.charAt(place))
        && Character.getType(text.charAt(place)) != Character.NON_SPACING_MARK;
  }

  /** Whether there may be more breaks than those between words. */
  boolean hasParts() {
    return !inLongWord.isEmpty() || !inShortWord.isEmpty()
        || text.chars().anyMatch(c -> SEPARATORS.indexOf(c) >= 0);
  }

  /** Whether programs that know the usual rules would break a number or date there. */
  public boolean wouldBreak(int place) {
    // Java's rules are stricter with digits than Unicode's, by which most programs go.
    boolean joined = "-/.,:'".indexOf(text.charAt(place - 1)) >= 0
        && Character.isDigit(text.charAt(place));
    if (joined || !isInside(place)) {
      return false;
    }
    if (usual == null) {
      usual = new BitSet();
      BreakIterator lines = BreakIterator.getLineInstance(Locale.ROOT);
      lines.setText(text);
      for (int i = lines.next(); i != BreakIterator.DONE; i = lines.next()) {
        usual.set(i);
      }
    }
    return usual.get(place);
  }

  /** Whether a character belongs to the number or the date that the one before it belongs to. */
  public boolean isInside(int place) {
    return inside.get(place);
  }

  /** Whether a line may end there because a list of numbers may, which formatters do not know. */
  public boolean isInList(int place) {
    return inList.get(place);
  }

  /** Where the number or date that goes on at a place ends. */
  public int end(int place) {
    return inside.nextClearBit(place);
  }

  /** The text in pieces that stay on one line; a blank belongs to the piece before it. */
  public List<String> pieces(Detail detail) {
    List<String> pieces = new ArrayList<>();
    int start = 0;
    for (int i = 1; i < text.length(); i++) {
      if (mayBreak(i, detail)) {
        pieces.add(text.substring(start, i));
        start = i;
      }
    }
    pieces.add(text.substring(start));
    return pieces;
  }
}
