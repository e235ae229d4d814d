// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.format;

import java.io.IOException;
import java.nio.file.Files;
import java.nio.file.Path;
import java.util.ArrayList;
import java.util.List;
import java.util.regex.Matcher;
import java.util.regex.Pattern;

/** The code blocks of the documentation, so that no example there goes stale. */
public final class DocumentedBlocks {
  private DocumentedBlocks() {}

  /** The contents of the blocks of that language in {@code docs/}. */
  public static List<String> of(String file, String language) throws IOException {
    Path docs = Path.of(System.getProperty("chartbridge.source"), "docs", file);
    Pattern block =
        Pattern.compile("^```" + language + "\\n(.*?)^```$", Pattern.DOTALL | Pattern.MULTILINE);
    Matcher matcher = block.matcher(Files.readString(docs));
    List<String> blocks = new ArrayList<>();
    while (matcher.find()) {
      blocks.add(matcher.group(1));
    }
    return blocks;
  }
}
