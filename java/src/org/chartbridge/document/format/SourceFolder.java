// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.document.format;

import java.io.IOException;
import java.nio.file.Files;
import java.nio.file.InvalidPathException;
import java.nio.file.NoSuchFileException;
import java.nio.file.Path;
import java.util.HashMap;
import java.util.Map;
import org.chartbridge.chart.ChartException;
import org.chartbridge.xml.SafeXml;
import org.chartbridge.xml.XmlElement;

/**
 * The folder whose files a document may name while it is being built. Nothing outside of it is
 * read, by whatever way a name or a link leads there. For one document, on one thread.
 */
public final class SourceFolder {
  /** The attribute that names a file. */
  static final String SRC = "src";

  /** For documents that must be complete by themselves. */
  public static final SourceFolder NONE = new SourceFolder(null);

  private final Path folder;
  /** What was read, so that all of one document is made from the same bytes. */
  private final Map<String, byte[]> contents = new HashMap<>();

  private SourceFolder(Path folder) {
    this.folder = folder;
  }

  /**
   * @throws ChartException when there is no such folder
   */
  public static SourceFolder of(Path folder) {
    try {
      return new SourceFolder(folder.toRealPath());
    } catch (IOException e) {
      throw new ChartException("the folder \"" + folder + "\" does not exist", e);
    }
  }

  /** The bytes of the file that an element names. */
  byte[] read(XmlElement element) {
    String name = element.attribute(SRC);
    if (folder == null) {
      throw element.error(SRC, "<" + element.name() + "> refers to the file \"" + name
          + "\"; a document that is not read from a file cannot refer to files");
    }
    byte[] known = contents.get(name);
    if (known == null) {
      known = load(element, name);
      contents.put(name, known);
    }
    return known;
  }

  private byte[] load(XmlElement element, String name) {
    try {
      Path file = folder.resolve(name).toRealPath();
      if (!file.startsWith(folder)) {
        throw element.error(SRC, "the file \"" + name + "\" is not in the folder of the document");
      }
      if (!Files.isRegularFile(file)) {
        throw element.error(SRC, "\"" + name + "\" is not a file");
      }
      if (Files.size(file) > SafeXml.MAX_BYTES) {
        throw element.error(SRC, "the file \"" + name + "\" has " + Files.size(file)
            + " bytes; at most " + SafeXml.MAX_BYTES + " are accepted");
      }
      return Files.readAllBytes(file);
    } catch (NoSuchFileException e) {
      throw element.error(SRC, "there is no file \"" + name + "\"");
    } catch (InvalidPathException e) {
      throw element.error(SRC, "\"" + name + "\" is no file name");
    } catch (IOException e) {
      throw element.error(SRC, "cannot read the file \"" + name + "\": " + e.getMessage());
    }
  }
}
