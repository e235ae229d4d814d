// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.document.format;

import java.util.ArrayList;
import java.util.IllformedLocaleException;
import java.util.List;
import java.util.Locale;
import java.util.regex.Pattern;
import org.chartbridge.chart.ChartException;
import org.chartbridge.document.figure.FigureRenderer;
import org.chartbridge.document.figure.Illustration;
import org.chartbridge.document.model.Block;
import org.chartbridge.document.model.Document;
import org.chartbridge.document.model.Figure;
import org.chartbridge.document.model.FigureContent;
import org.chartbridge.document.model.Metadata;
import org.chartbridge.document.model.Paper;
import org.chartbridge.format.AttributeReader;
import org.chartbridge.format.SchemaCheck;
import org.chartbridge.image.ImageType;
import org.chartbridge.image.PictureEncoder;
import org.chartbridge.xml.SafeXml;
import org.chartbridge.xml.XmlElement;
import org.chartbridge.xml.XmlEncoding;

/** A document that was read, complete with what it referred to. Immutable. */
public final class DocumentSource {
  public static final String NAMESPACE = "urn:chartbridge:document:1";

  private static final SchemaCheck SCHEMA = new SchemaCheck("document.xsd");
  private static final Pattern DATE = Pattern.compile("\\d{4}-\\d{2}-\\d{2}");

  private final byte[] bytes;
  private final Document document;

  private DocumentSource(byte[] bytes, Document document) {
    this.bytes = bytes;
    this.document = document;
  }

  /**
   * Reads a document. Charts and tree models in it are not yet read, except when they come from
   * files.
   *
   * @param input XML in the encoding of its byte order mark or XML declaration, else in UTF-8; or
   *     the same compressed with gzip
   * @param folder where the files are that it refers to
   * @throws ChartException when it is not a document; the message says where and what is expected
   */
  public static DocumentSource read(byte[] input, SourceFolder folder) {
    byte[] bytes = DocumentBytes.expand(input);
    XmlElement root = SafeXml.parse(bytes);
    checkRoot(root);
    ChartException schemaError = SCHEMA.firstError(root);
    // The readers' own messages are for people; the schema's words are the last resort.
    Document document = read(root, XmlEncoding.decode(bytes), folder);
    if (schemaError != null) {
      throw schemaError;
    }
    boolean complete = !Finisher.refersToFiles(root);
    return new DocumentSource(complete ? bytes : Finisher.withFiles(root, folder), document);
  }

  private static void checkRoot(XmlElement root) {
    if (!root.name().equals("document") || !root.namespace().equals(NAMESPACE)) {
      String where = root.namespace().isEmpty()
          ? " without a namespace" : " in the namespace " + root.namespace();
      throw root.error("found <" + root.name() + ">" + where + ", expected <document xmlns=\""
          + NAMESPACE + "\">");
    }
  }

  private static Document read(XmlElement root, String text, SourceFolder folder) {
    AttributeReader in = new AttributeReader(root);
    String date = in.text("date");
    if (date != null && !DATE.matcher(date.strip()).matches()) {
      throw in.unexpected("date", date, "a day such as 2024-01-31");
    }
    Locale locale = locale(in);
    Metadata metadata = new Metadata(line(in.text("title")), line(in.text("subtitle")),
        line(in.text("author")), line(date), locale);
    Paper paper = in.choice("paper", Paper.class, Paper.A4);
    in.finish();
    List<XmlElement> elements = in.children(BlockReader.NAMES, true);
    if (elements.isEmpty()) {
      throw root.error("<document> is empty");
    }
    List<Block> blocks = new BlockReader(new PartReader(text, folder)).read(elements);
    return new Document(metadata, paper, blocks);
  }

  private static Locale locale(AttributeReader in) {
    String tag = in.text("language");
    if (tag == null) {
      return Locale.ROOT;
    }
    try {
      return new Locale.Builder().setLanguageTag(tag.strip()).build();
    } catch (IllformedLocaleException e) {
      throw in.unexpected("language", tag, "a BCP 47 tag such as de or pt-BR");
    }
  }

  /** Null for nothing to show. */
  private static String line(String text) {
    return text == null || text.isBlank() ? null : ChartException.oneLine(text.strip());
  }

  public Document document() {
    return document;
  }

  /** The document as XML, in the encoding that it had; in UTF-8 when it was made complete. */
  public byte[] xml() {
    return bytes.clone();
  }

  /** The document in UTF-8 with pictures of its charts and trees in it. */
  public byte[] xmlWithPictures() {
    FigureRenderer renderer = new FigureRenderer(document.metadata().locale(), null);
    List<Finisher.FigurePicture> pictures = new ArrayList<>();
    for (Block block : document.blocks()) {
      if (block instanceof Figure figure
          && !(figure.content() instanceof FigureContent.ImageContent)) {
        Illustration illustration = renderer.render(figure);
        pictures.add(new Finisher.FigurePicture(illustration.width(), illustration.height(),
            PictureEncoder.encode(illustration.picture(), ImageType.SVG)));
      }
    }
    return Finisher.withPictures(SafeXml.parse(bytes), pictures);
  }
}
