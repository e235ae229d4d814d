// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.template;

import java.io.File;
import java.io.IOException;
import java.io.InputStream;
import java.nio.file.Files;
import java.nio.file.InvalidPathException;
import java.nio.file.NoSuchFileException;
import java.nio.file.Path;
import java.util.ArrayList;
import java.util.List;
import java.util.regex.Pattern;
import org.chartbridge.chart.ChartException;
import org.chartbridge.xml.SafeXml;

/**
 * The folders that hold a host's chart templates, from the system property {@code
 * chartbridge.templates}: a list as in a class path. The template {@code NAME} is the file {@code
 * NAME.xml} of the first folder that has one. The property and the files are read for each chart,
 * so that changes hold from the next chart on.
 */
final class TemplateFolders {
  static final String PROPERTY = "chartbridge.templates";

  /** Charts may come from strangers: a name must not lead out of the folders. */
  private static final Pattern NAME = Pattern.compile("[A-Za-z0-9_-][A-Za-z0-9._-]{0,99}");

  private TemplateFolders() {}

  /**
   * The content of a template.
   *
   * @throws ChartException when the name is none, or no folder has the file, or it cannot be read
   */
  static byte[] read(String name) {
    if (!NAME.matcher(name).matches()) {
      throw new ChartException("The template name \"" + name
          + "\" is none; expected up to 100 letters, digits, \".\", \"_\" and \"-\","
          + " not beginning with \".\".");
    }
    List<Path> folders = folders();
    for (Path folder : folders) {
      byte[] content = content(name, folder.resolve(name + ".xml"));
      if (content != null) {
        return content;
      }
    }
    throw new ChartException("The template \"" + name + "\" is not there; " + searched(folders));
  }

  private static List<Path> folders() {
    List<Path> folders = new ArrayList<>();
    for (String entry : System.getProperty(PROPERTY, "").split(Pattern.quote(File.pathSeparator))) {
      if (entry.isBlank()) {
        continue;
      }
      try {
        folders.add(Path.of(entry));
      } catch (InvalidPathException e) {
        throw new ChartException("The system property " + PROPERTY + " names the folder \"" + entry
            + "\", which is no path here: " + e.getReason() + ".", e);
      }
    }
    return folders;
  }

  private static byte[] content(String name, Path file) {
    try (InputStream in = Files.newInputStream(file)) {
      byte[] content = in.readNBytes(SafeXml.MAX_BYTES + 1);
      if (content.length > SafeXml.MAX_BYTES) {
        throw new ChartException("The template \"" + name + "\" (" + file + ") has more than "
            + SafeXml.MAX_BYTES + " bytes.");
      }
      return content;
    } catch (NoSuchFileException e) {
      return null;
    } catch (IOException e) {
      throw new ChartException(
          "The template \"" + name + "\" (" + file + ") cannot be read: " + e.getMessage() + ".",
          e);
    }
  }

  private static String searched(List<Path> folders) {
    if (folders.isEmpty()) {
      return "no folder of templates is set (system property " + PROPERTY + ").";
    }
    List<String> names = folders.stream().map(Path::toString).toList();
    return "searched in " + String.join(", ", names) + ".";
  }
}
