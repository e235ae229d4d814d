// SPDX-License-Identifier: Apache-2.0
package com.tesk.java_client.ex_access;

import java.io.IOException;
import java.io.UncheckedIOException;
import java.nio.ByteBuffer;
import java.nio.charset.Charset;
import java.nio.charset.IllegalCharsetNameException;
import java.nio.charset.StandardCharsets;
import java.nio.charset.UnsupportedCharsetException;
import java.nio.file.Files;
import java.nio.file.InvalidPathException;
import java.nio.file.NoSuchFileException;
import java.nio.file.Path;
import java.util.LinkedHashMap;
import java.util.Map;
import org.chartbridge.chart.ChartException;
import org.chartbridge.document.export.DocumentExport;
import org.chartbridge.document.export.ExportRequest;
import org.chartbridge.document.export.FindingsException;
import org.chartbridge.document.export.RequestReader;
import org.chartbridge.document.format.DocumentBytes;
import org.chartbridge.document.format.DocumentSource;
import org.chartbridge.document.format.SourceFolder;
import org.chartbridge.image.OutputFiles;
import org.chartbridge.xml.SafeXml;

/**
 * Makes, writes and exports output documents. The native exporter makes one of these and calls it
 * by name and signature.
 *
 * <p>An adapter holds the documents that it was given, each under its name. A second document of a
 * name takes the place of the first. The document that came last is the <em>newest</em>; it is the
 * one that is written to a file, and the one that is exported when a request names none. Documents
 * are held until they are replaced, a request releases them, or the adapter is no longer used.
 *
 * <p>Calls may come from any thread, one after the other.
 */
public final class ExKvoAdapter {
  static {
    // Before the first class that looks for a display.
    if (System.getProperty("java.awt.headless") == null) {
      System.setProperty("java.awt.headless", "true");
    }
  }

  private static final int COMPRESSED = 0;
  private static final int PLAIN = 1;

  private final Charset charset;
  private final Map<String, DocumentSource> documents = new LinkedHashMap<>();
  private boolean failedBefore;

  /**
   * @param utf8 whether the host process works with UTF-8. CSV and text are then written in UTF-8,
   *     else in the encoding of the machine, unless a request names one. XML, JSON, HTML and file
   *     names do not depend on it.
   */
  public ExKvoAdapter(boolean utf8) {
    charset = utf8 ? StandardCharsets.UTF_8 : machineCharset();
  }

  private static Charset machineCharset() {
    String name = System.getProperty("native.encoding");
    try {
      return name == null ? StandardCharsets.UTF_8 : Charset.forName(name);
    } catch (IllegalCharsetNameException | UnsupportedCharsetException e) {
      return StandardCharsets.UTF_8;
    }
  }

  /**
   * Runs an export. Whatever happens ends as an answer; the output file is written whole or not at
   * all.
   *
   * @param request a JSON object: what to export, to what, and where to
   * @return null when all went well; else what went wrong and where, in one line, or for a check in
   *     one line for each finding. When all went well after an export that did not, the empty text:
   *     the native exporter holds on to the last text until another one comes.
   */
  public String exportOutput(String request) {
    try {
      export(RequestReader.read(request));
    } catch (FindingsException e) {
      return failed(e.lines());
    } catch (ChartException e) {
      return failed(e.getMessage());
    } catch (UncheckedIOException e) {
      return failed("the output cannot be written: " + reason(e.getCause()));
    } catch (OutOfMemoryError e) {
      return failed("the Java heap is full; give the JVM more memory (-Xmx)");
    } catch (StackOverflowError e) {
      return failed(ChartException.tooLittleStack(e).getMessage());
    } catch (RuntimeException | LinkageError e) {
      return failed("the export failed by a fault of the exporter: " + e);
    }
    String answer = failedBefore ? "" : null;
    failedBefore = false;
    return answer;
  }

  private String failed(String reason) {
    failedBefore = true;
    return reason == null || reason.isEmpty() ? "the export failed" : reason;
  }

  private void export(ExportRequest request) {
    DocumentSource source;
    if (request.input() != null) {
      source = file(request);
    } else if (request.document() != null) {
      source = documents.get(request.document());
      if (source == null) {
        throw new ChartException("there is no document \"" + request.document() + "\"");
      }
    } else {
      source = newest();
    }
    DocumentExport.run(source.document(), request, charset);
    if (request.release()) {
      documents.values().remove(source);
    }
  }

  private static DocumentSource file(ExportRequest request) {
    Path path = path(request.input());
    try {
      if (Files.size(path) > SafeXml.MAX_BYTES) {
        throw new ChartException("the document \"" + path + "\" has " + Files.size(path)
            + " bytes; at most " + SafeXml.MAX_BYTES + " are accepted");
      }
      byte[] bytes = Files.readAllBytes(path);
      Path folder = request.base() == null
          ? path.toAbsolutePath().getParent() : path(request.base());
      return DocumentSource.read(bytes, SourceFolder.of(folder));
    } catch (IOException e) {
      throw new ChartException("cannot read \"" + path + "\": " + reason(e), e);
    }
  }

  private static Path path(String text) {
    try {
      return Path.of(text);
    } catch (InvalidPathException e) {
      throw new ChartException("\"" + text + "\" is no path: " + e.getReason(), e);
    }
  }

  private static String reason(IOException e) {
    return e instanceof NoSuchFileException ? "there is no such file" : e.getMessage();
  }

  private DocumentSource newest() {
    DocumentSource newest = null;
    for (DocumentSource source : documents.values()) {
      newest = source;
    }
    if (newest == null) {
      throw new ChartException("there is no document; create one first, or name an \"input\"");
    }
    return newest;
  }

  /**
   * Writes the newest document to a file, which appears whole or not at all.
   *
   * @param path the file; its folder must exist
   * @param form 0 compressed (gzip), 1 plain XML
   * @param pictures whether pictures of the charts and trees go into it, for readers that do not
   *     draw
   * @return true: the file is there
   * @throws ChartException when that is impossible
   */
  public boolean writeOutputDocumentFile(String path, int form, boolean pictures) {
    if (form != COMPRESSED && form != PLAIN) {
      throw new ChartException(
          "there is no document form " + form + "; the forms are 0 compressed, 1 plain XML");
    }
    Path target = OutputFiles.path(path);
    DocumentSource source = newest();
    byte[] xml = pictures ? source.xmlWithPictures() : source.xml();
    byte[] bytes = form == COMPRESSED ? DocumentBytes.compress(xml) : xml;
    OutputFiles.write(target, out -> out.write(bytes));
    return true;
  }

  /**
   * Makes a document. Its charts and trees are drawn only when it is exported or written with
   * pictures.
   *
   * @param content the document as XML, compressed or not, from the buffer's position to its limit;
   *     the buffer is the host's own memory, which is read during the call only
   * @param name what requests call it. When it is an absolute path, the document may refer to files
   *     in the folder of that path; they become part of it now.
   * @return true: the document is there
   * @throws ChartException when it is not a document
   */
  public boolean createOutputDocument(ByteBuffer content, String name) {
    if (name == null || name.isEmpty()) {
      throw new ChartException("the name of the document is empty");
    }
    if (content == null || !content.hasRemaining()) {
      throw new ChartException("the document is empty");
    }
    if (content.remaining() > SafeXml.MAX_BYTES) {
      throw new ChartException("the document has " + content.remaining() + " bytes; at most "
          + SafeXml.MAX_BYTES + " are accepted");
    }
    byte[] bytes = new byte[content.remaining()];
    content.duplicate().get(bytes);
    DocumentSource source = DocumentSource.read(bytes, folder(name));
    documents.remove(name);
    documents.put(name, source);
    return true;
  }

  private static SourceFolder folder(String name) {
    if (!name.startsWith("/")) {
      return SourceFolder.NONE;
    }
    Path parent = path(name).getParent();
    return parent == null || !Files.isDirectory(parent)
        ? SourceFolder.NONE : SourceFolder.of(parent);
  }
}
