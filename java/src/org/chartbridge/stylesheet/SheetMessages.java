// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.stylesheet;

import java.util.ArrayList;
import java.util.List;
import java.util.regex.Pattern;
import javax.xml.transform.ErrorListener;
import javax.xml.transform.Source;
import javax.xml.transform.TransformerException;
import javax.xml.transform.URIResolver;

/** Collects what the XSLT processor says while it works, and refuses it other documents. */
final class SheetMessages implements ErrorListener, URIResolver {
  private static final Pattern CLASS_NAMES = Pattern.compile("^([\\w.$]+(Exception|Error): ?)+");
  private static final Pattern WITH_LINE = Pattern.compile("line \\d+: .*", Pattern.DOTALL);

  private final List<String> errors = new ArrayList<>();
  private String lastMessage;
  private String refused;

  /**
   * Why the processor gave up.
   *
   * @param thrown what it threw in the end
   */
  String reason(Exception thrown) {
    if (refused != null) {
      return "it asks for \"" + refused + "\"; a style sheet can load no other document";
    }
    // Of several messages about one mistake, the first with a line says most, unless it only says
    // that an expression that is not there cannot be read.
    for (String error : errors) {
      boolean aboutNothing = error.contains("''") || error.contains("\"\"");
      if (WITH_LINE.matcher(error).matches() && !aboutNothing) {
        return error;
      }
    }
    String reason = text(thrown);
    // A style sheet that stops by itself has given its reason as a message before.
    return lastMessage != null && thrown.getCause() != null && isStop(thrown.getCause())
        ? "it stops with the message \"" + lastMessage + "\"" : reason;
  }

  /** The processor stops at such a message with an exception of no special kind. */
  private static boolean isStop(Throwable cause) {
    return cause.getClass() == RuntimeException.class && cause.getCause() == null;
  }

  private static String text(Exception e) {
    String message = e.getMessage() == null ? e.toString() : e.getMessage();
    return CLASS_NAMES.matcher(message).replaceFirst("").replaceAll("[.\\s]+$", "");
  }

  /** Also gets what {@code xsl:message} says. */
  @Override
  public void warning(TransformerException warning) {
    lastMessage = text(warning);
  }

  @Override
  public void error(TransformerException error) {
    errors.add(text(error));
  }

  @Override
  public void fatalError(TransformerException error) {
    errors.add(text(error));
  }

  @Override
  public Source resolve(String href, String base) throws TransformerException {
    refused = href;
    throw new TransformerException("\"" + href + "\" is not loaded");
  }
}
