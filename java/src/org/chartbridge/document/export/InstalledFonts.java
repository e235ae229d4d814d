// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.document.export;

import java.lang.Character.UnicodeScript;
import java.nio.file.Path;
import java.util.ArrayList;
import java.util.Arrays;
import java.util.Comparator;
import java.util.EnumSet;
import java.util.HashMap;
import java.util.List;
import java.util.Locale;
import java.util.Map;
import java.util.Set;
import org.chartbridge.image.FontFiles;

/**
 * Finds fonts for characters that the usual ones lack. What was found is remembered; it depends on
 * the character and the language only, never on what other documents, or other parts of a document,
 * were set in.
 */
final class InstalledFonts {
  /**
   * Scripts that come out right letter by letter, or that the formatter joins and orders. Others
   * need their letters rearranged, and half-right text is worse than a message.
   */
  private static final Set<UnicodeScript> SCRIPTS = EnumSet.of(UnicodeScript.COMMON,
      UnicodeScript.INHERITED, UnicodeScript.UNKNOWN, UnicodeScript.LATIN,
      UnicodeScript.GREEK, UnicodeScript.CYRILLIC,
      UnicodeScript.ARABIC, UnicodeScript.HEBREW, UnicodeScript.ARMENIAN, UnicodeScript.GEORGIAN,
      UnicodeScript.ETHIOPIC, UnicodeScript.CHEROKEE, UnicodeScript.HAN, UnicodeScript.HIRAGANA,
      UnicodeScript.KATAKANA, UnicodeScript.BOPOMOFO, UnicodeScript.HANGUL, UnicodeScript.YI);

  /** Fonts made for a language, in small letters, the best first; any other is as good. */
  private static final Map<String, List<String>> PREFERRED = Map.of(
      "ja", List.of("cjk jp", "cjkjp", "sansjp", "ipaexg", "ipag", "takao", "vl-gothic"),
      "ko", List.of("cjk kr", "cjkkr", "sanskr", "nanumgothic", "undotum", "baekmuk"),
      "zh-hant", List.of("cjk tc", "cjktc", "sanstc", "cjk hk", "uming", "cjk sc"),
      "zh", List.of("cjk sc", "cjksc", "sanssc", "wqy-zenhei", "wqy-microhei", "uming"),
      "ar", List.of("notonaskharabic", "notosansarabic", "amiri"),
      "he", List.of("notosanshebrew"));

  private static final List<String> NOT_FOR_TEXT = List.of("bold", "italic", "oblique", "light",
      "thin", "black", "heavy", "medium", "condensed", "mono", "serif", "emoji", "symbol");

  private static final Map<Path, Long> SIZES = new HashMap<>();
  private static final Map<Path, FontFace[]> FACES = new HashMap<>();
  private static final Map<String, Typeface> TYPEFACES = new HashMap<>();
  private static final Map<String, Map<Integer, Typeface>> FOUND = new HashMap<>();

  private InstalledFonts() {}

  static boolean isSet(int character) {
    return SCRIPTS.contains(UnicodeScript.of(character));
  }

  static synchronized Typeface find(int character, Locale language) {
    Map<Integer, Typeface> found =
        FOUND.computeIfAbsent(key(language), key -> new HashMap<>());
    if (!found.containsKey(character)) {
      found.put(character, isSet(character) ? search(character, key(language)) : null);
    }
    return found.get(character);
  }

  private static String key(Locale language) {
    String code = language.getLanguage();
    String script = language.getScript();
    boolean traditional = script.equals("Hant")
        || script.isEmpty() && Set.of("TW", "HK", "MO").contains(language.getCountry());
    return code.equals("zh") && traditional ? "zh-hant" : code;
  }

  private static Typeface search(int character, String language) {
    List<String> preferred = PREFERRED.getOrDefault(language, List.of());
    List<Path> files = new ArrayList<>(FontFiles.all());
    // Of fonts that are as good, the largest has the most characters: a text is set in few fonts.
    files.sort(Comparator.<Path>comparingInt(file -> rank(name(file), preferred))
        .thenComparing(Comparator.comparingLong(InstalledFonts::size).reversed()));
    for (Path file : files) {
      FontFace[] faces = FACES.computeIfAbsent(file, FontFace::read);
      FontFace[] ranked = faces.clone();
      Arrays.sort(ranked, Comparator.comparingInt(
          face -> rank(face.name().toLowerCase(Locale.ROOT), preferred)));
      for (FontFace face : ranked) {
        if (suits(face, character)) {
          return TYPEFACES.computeIfAbsent(
              "Installed " + file + " " + face.index(), name -> typeface(name, face));
        }
      }
    }
    return null;
  }

  /** A blank has no outline in any font. */
  private static boolean suits(FontFace face, int character) {
    return PageFonts.isBlank(character) ? face.has(character) : face.draws(character);
  }

  private static long size(Path file) {
    return SIZES.computeIfAbsent(file, path -> path.toFile().length());
  }

  private static String name(Path file) {
    return file.getFileName().toString().toLowerCase(Locale.ROOT);
  }

  /** Small numbers for what is made for the language, large ones for what is not for plain text. */
  private static int rank(String name, List<String> preferred) {
    int rank = preferred.size();
    for (int i = 0; i < preferred.size(); i++) {
      if (name.contains(preferred.get(i))) {
        rank = i;
        break;
      }
    }
    // A collection has the fonts of several languages.
    boolean collection = name.contains("cjk") && name.contains(".tt");
    rank = collection ? 0 : rank;
    return NOT_FOR_TEXT.stream().anyMatch(name::contains) ? rank + 100 : rank;
  }

  private static Typeface typeface(String name, FontFace plain) {
    return new Typeface(name, Arrays.asList(plain, bold(plain), null, null));
  }

  /** The bold face in the file beside, or null. */
  private static FontFace bold(FontFace plain) {
    String fileName = plain.file().getFileName().toString();
    String boldName = fileName.contains("Regular")
        ? fileName.replace("Regular", "Bold") : fileName.replaceFirst("\\.(?=[^.]*$)", "Bold.");
    Path file = FontFiles.find(boldName);
    FontFace[] faces = file == null ? new FontFace[0] : FACES.computeIfAbsent(file, FontFace::read);
    return plain.index() < faces.length ? faces[plain.index()] : null;
  }
}
