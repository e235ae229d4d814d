// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.image;

import java.awt.Font;
import java.io.IOException;
import java.io.UncheckedIOException;
import java.nio.file.FileVisitOption;
import java.nio.file.FileVisitResult;
import java.nio.file.Files;
import java.nio.file.Path;
import java.nio.file.SimpleFileVisitor;
import java.nio.file.attribute.BasicFileAttributes;
import java.util.ArrayList;
import java.util.HashMap;
import java.util.List;
import java.util.Locale;
import java.util.Map;
import java.util.Set;

/**
 * The font files behind the families that pictures are usually set in, as the distribution
 * installs them.
 */
public final class FontFiles {
  private static final List<Path> FOLDERS =
      List.of(Path.of("/usr/share/fonts"), Path.of("/usr/local/share/fonts"),
          Path.of(System.getProperty("user.home", "/"), ".local/share/fonts"),
          Path.of(System.getProperty("user.home", "/"), ".fonts"));

  private static final int MAX_DEPTH = 6;

  /** The four faces of a family, in the order of {@link Font#PLAIN}, BOLD, ITALIC and both. */
  public record Family(String name, List<String> fileNames) {}

  public static final List<Family> FAMILIES =
      List.of(liberation("Sans"), liberation("Serif"), liberation("Mono"),
          dejaVu("Sans", "Oblique"), dejaVu("Serif", "Italic"), dejaVu("Sans Mono", "Oblique"));

  private static final List<String> ENDINGS = List.of(".ttf", ".otf", ".ttc", ".otc");

  private static Map<String, Path> files;

  private FontFiles() {}

  private static Family liberation(String kind) {
    String stem = "Liberation" + kind;
    return new Family("Liberation " + kind,
        List.of(stem + "-Regular.ttf", stem + "-Bold.ttf", stem + "-Italic.ttf",
            stem + "-BoldItalic.ttf"));
  }

  private static Family dejaVu(String kind, String slanted) {
    String stem = "DejaVu" + kind.replace(" ", "");
    return new Family("DejaVu " + kind,
        List.of(stem + ".ttf", stem + "-Bold.ttf", stem + "-" + slanted + ".ttf",
            stem + "-Bold" + slanted + ".ttf"));
  }

  /** The file of that name in one of the font folders, or null. */
  public static synchronized Path find(String fileName) {
    return files().get(fileName);
  }

  /** The files of all fonts and font collections in the font folders, by their names. */
  public static synchronized List<Path> all() {
    List<String> names = new ArrayList<>(files().keySet());
    names.sort(null);
    return names.stream().map(files::get).toList();
  }

  private static Map<String, Path> files() {
    if (files == null) {
      files = new HashMap<>();
      FOLDERS.forEach(FontFiles::scan);
    }
    return files;
  }

  private static void scan(Path folder) {
    try {
      Files.walkFileTree(folder, Set.of(FileVisitOption.FOLLOW_LINKS), MAX_DEPTH, new Collector());
    } catch (IOException e) {
      throw new UncheckedIOException(e);
    }
  }

  /** Collects font files; what cannot be read has no fonts for us. */
  private static final class Collector extends SimpleFileVisitor<Path> {
    @Override
    public FileVisitResult visitFile(Path file, BasicFileAttributes attributes) {
      String name = file.getFileName().toString();
      String lower = name.toLowerCase(Locale.ROOT);
      if (ENDINGS.stream().anyMatch(lower::endsWith)) {
        files.putIfAbsent(name, file);
      }
      return FileVisitResult.CONTINUE;
    }

    @Override
    public FileVisitResult visitFileFailed(Path file, IOException e) {
      return FileVisitResult.CONTINUE;
    }

    @Override
    public FileVisitResult postVisitDirectory(Path folder, IOException e) {
      return FileVisitResult.CONTINUE;
    }
  }
}
