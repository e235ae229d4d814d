// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.document.format;

import java.util.ArrayList;
import java.util.HashSet;
import java.util.List;
import java.util.Set;
import org.chartbridge.document.model.Alignment;
import org.chartbridge.document.model.Block;
import org.chartbridge.document.model.Contents;
import org.chartbridge.document.model.Heading;
import org.chartbridge.document.model.Inline;
import org.chartbridge.document.model.ItemList;
import org.chartbridge.document.model.PageBreak;
import org.chartbridge.document.model.Paragraph;
import org.chartbridge.format.AttributeReader;
import org.chartbridge.xml.XmlElement;

/** Reads the blocks of a document. */
final class BlockReader {
  static final List<String> NAMES = List.of("heading", "paragraph", "list", "table", "chart",
      "tree", "image", "contents", "page-break");

  private static final int DEFAULT_DEPTH = 3;
  private static final int MAX_START = 999_999;

  /** Each level is indented, and a page is only so wide. */
  private static final int MAX_LISTS = 16;

  private final FigureReader figures;
  private final List<XmlElement> links = new ArrayList<>();
  private final Set<String> givenIds = new HashSet<>();
  private final Set<String> ids = new HashSet<>();

  BlockReader(PartReader parts) {
    this.figures = new FigureReader(parts);
  }

  List<Block> read(List<XmlElement> elements) {
    for (XmlElement element : elements) {
      if (element.name().equals("heading") && element.attribute("id") != null) {
        givenIds.add(element.attribute("id").strip());
      }
    }
    List<Block> blocks = new ArrayList<>();
    for (XmlElement element : elements) {
      blocks.add(block(element));
    }
    checkLinks();
    return blocks;
  }

  private void checkLinks() {
    for (XmlElement link : links) {
      String id = link.attribute("to").strip().substring(1);
      if (!ids.contains(id)) {
        throw link.error("to", "there is no heading with the id \"" + id + "\"");
      }
    }
  }

  private Block block(XmlElement element) {
    return switch (element.name()) {
      case "heading" -> heading(element);
      case "paragraph" -> paragraph(element);
      case "list" -> list(element, 1);
      case "table" -> new TableReader(links).read(element);
      case "chart" -> figures.chart(element);
      case "tree" -> figures.tree(element);
      case "image" -> figures.image(element);
      case "contents" -> contents(element);
      default -> pageBreak(element);
    };
  }

  private Heading heading(XmlElement element) {
    AttributeReader in = new AttributeReader(element);
    int level = level(in, "level", 1);
    String id = in.text("id");
    in.finish();
    if (id != null && !id.strip().matches("[\\p{L}_][\\p{L}\\p{N}._-]*")) {
      throw in.unexpected("id", id, "a letter, then letters, digits, \"-\", \"_\" and \".\"");
    }
    String own = id == null ? freeId() : id.strip();
    if (!ids.add(own)) {
      throw element.error("id", "another heading has the id \"" + own + "\" too");
    }
    List<Inline> text = new InlineReader(links, null).read(element);
    if (text.isEmpty()) {
      throw element.error("<heading> is empty");
    }
    return new Heading(level, own, text);
  }

  private String freeId() {
    int number = ids.size() + 1;
    while (givenIds.contains("section-" + number) || ids.contains("section-" + number)) {
      number++;
    }
    return "section-" + number;
  }

  private static int level(AttributeReader in, String name, int otherwise) {
    int level = in.whole(name, otherwise);
    if (level < 1 || level > Heading.MAX_LEVEL) {
      throw in.unexpected(name, in.text(name), "a whole number from 1 to " + Heading.MAX_LEVEL);
    }
    return level;
  }

  private Paragraph paragraph(XmlElement element) {
    AttributeReader in = new AttributeReader(element);
    Alignment alignment = in.choice("align", Alignment.class, Alignment.START);
    in.finish();
    return new Paragraph(alignment, new InlineReader(links, null).read(element));
  }

  private ItemList list(XmlElement element, int level) {
    if (level > MAX_LISTS) {
      throw element.error("lists are nested more than " + MAX_LISTS + " levels deep");
    }
    AttributeReader in = new AttributeReader(element);
    String kind = in.text("kind");
    if (kind != null && !List.of("bullet", "number").contains(kind.strip())) {
      throw in.unexpected("kind", kind, "bullet or number");
    }
    int start = in.whole("start", 1);
    if (start < 0 || start > MAX_START) {
      throw in.unexpected("start", in.text("start"), "a whole number from 0 to " + MAX_START);
    }
    in.finish();
    List<ItemList.Item> items = new ArrayList<>();
    for (XmlElement child : in.children(List.of("item"), true)) {
      items.add(item(child, level));
    }
    if (items.isEmpty()) {
      throw element.error("<list> has no <item>");
    }
    return new ItemList(kind != null && kind.strip().equals("number"), start, items);
  }

  private ItemList.Item item(XmlElement element, int level) {
    new AttributeReader(element).finish();
    InlineReader reader = new InlineReader(links, "list");
    List<Inline> text = reader.read(element);
    List<ItemList> lists = new ArrayList<>();
    for (XmlElement list : reader.others()) {
      lists.add(list(list, level + 1));
    }
    return new ItemList.Item(text, lists);
  }

  private static Contents contents(XmlElement element) {
    AttributeReader in = new AttributeReader(element);
    String title = in.text("title");
    int depth = level(in, "depth", DEFAULT_DEPTH);
    in.finish();
    in.children(List.of(), false);
    return new Contents(title == null ? "Contents" : title.strip(), depth);
  }

  private static PageBreak pageBreak(XmlElement element) {
    AttributeReader in = new AttributeReader(element);
    in.finish();
    in.children(List.of(), false);
    return new PageBreak();
  }
}
