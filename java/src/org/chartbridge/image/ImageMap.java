// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.image;

import com.fasterxml.jackson.core.JsonFactory;
import com.fasterxml.jackson.core.JsonGenerator;
import java.io.ByteArrayOutputStream;
import java.io.IOException;
import java.io.UncheckedIOException;
import java.nio.charset.StandardCharsets;
import java.util.ArrayList;
import java.util.Collections;
import java.util.HexFormat;
import java.util.List;
import java.util.Map;
import java.util.zip.CRC32;
import org.chartbridge.draw.Mark;

/**
 * Which part of a picture shows what. Where marks overlap, the one that was drawn last lies on top
 * and comes first, because the first area that contains the pointer wins.
 */
public final class ImageMap {
  private static final JsonFactory JSON = new JsonFactory();

  private record Entry(MapArea area, Mark mark) {}

  private final int width;
  private final int height;
  private final boolean tooltips;
  private final List<Entry> entries = new ArrayList<>();
  private final String areas;

  /**
   * @param picture the picture that the map belongs to
   * @param marks its marks in the order of drawing, in the picture's own pixels
   * @param tooltips whether areas say what they show
   */
  public ImageMap(Picture picture, List<Mark> marks, boolean tooltips) {
    this.width = picture.pixelWidth();
    this.height = picture.pixelHeight();
    this.tooltips = tooltips;
    List<Mark> topFirst = new ArrayList<>(marks);
    Collections.reverse(topFirst);
    for (Mark mark : topFirst) {
      for (MapArea area : MapArea.of(mark.area(), picture.scale())) {
        entries.add(new Entry(area, mark));
      }
    }
    areas = areas();
  }

  /**
   * An HTML {@code map} element in UTF-8, to be put into a page; {@link #name} is what {@code
   * usemap} refers to.
   */
  public byte[] html() {
    return mapElement().getBytes(StandardCharsets.UTF_8);
  }

  /** A page of its own that shows the picture with its map. */
  public byte[] page(String pictureFile, String title) {
    String text = escaped(title == null || title.isEmpty() ? pictureFile : title);
    String page = "<!DOCTYPE html>\n<html>\n<head>\n<meta charset=\"utf-8\">\n<title>" + text
        + "</title>\n</head>\n<body>\n<img src=\"" + escaped(PictureLink.to(pictureFile))
        + "\" width=\"" + width + "\" height=\"" + height + "\" alt=\"" + text + "\" usemap=\"#"
        + name() + "\">\n" + mapElement() + "</body>\n</html>\n";
    return page.getBytes(StandardCharsets.UTF_8);
  }

  /**
   * The name of the map: the same for the same areas, different for others, so that several maps
   * fit into one page.
   */
  public String name() {
    CRC32 crc = new CRC32();
    crc.update(areas.getBytes(StandardCharsets.UTF_8));
    return "chart-" + HexFormat.of().toHexDigits((int) crc.getValue());
  }

  private String mapElement() {
    return "<map name=\"" + name() + "\">\n" + areas + "</map>\n";
  }

  private String areas() {
    StringBuilder html = new StringBuilder();
    for (Entry entry : entries) {
      html.append("<area shape=\"").append(entry.area().shape()).append("\" coords=\"");
      int[] coordinates = entry.area().coordinates();
      for (int i = 0; i < coordinates.length; i++) {
        html.append(i == 0 ? "" : ",").append(coordinates[i]);
      }
      html.append('"');
      String text = tooltips ? escaped(entry.mark().tooltip()) : "";
      if (!text.isEmpty()) {
        html.append(" title=\"").append(text).append('"');
      }
      html.append(" alt=\"").append(text).append("\">\n");
    }
    return html.toString();
  }

  private static String escaped(String text) {
    StringBuilder html = new StringBuilder(text.length() + 16);
    for (int i = 0; i < text.length(); i++) {
      char c = text.charAt(i);
      switch (c) {
        case '&' -> html.append("&amp;");
        case '<' -> html.append("&lt;");
        case '>' -> html.append("&gt;");
        case '"' -> html.append("&quot;");
        case '\'' -> html.append("&#39;");
        case '\n' -> html.append("&#10;");
        default -> html.append(Character.isISOControl(c) ? ' ' : c);
      }
    }
    return html.toString();
  }

  /**
   * The map as a JSON object in UTF-8: the size of the picture and, for each area, its shape and
   * what it shows.
   */
  public byte[] json() {
    ByteArrayOutputStream bytes = new ByteArrayOutputStream();
    try (JsonGenerator json = JSON.createGenerator(bytes)) {
      json.writeStartObject();
      json.writeNumberField("width", width);
      json.writeNumberField("height", height);
      json.writeArrayFieldStart("areas");
      for (Entry entry : entries) {
        write(json, entry);
      }
      json.writeEndArray();
      json.writeEndObject();
    } catch (IOException e) {
      throw new UncheckedIOException(e);
    }
    return bytes.toByteArray();
  }

  private void write(JsonGenerator json, Entry entry) throws IOException {
    int[] coordinates = entry.area().coordinates();
    json.writeStartObject();
    json.writeStringField("shape", entry.area().shape());
    json.writeFieldName("coords");
    json.writeArray(coordinates, 0, coordinates.length);
    json.writeNumberField("element", entry.mark().element());
    if (!entry.mark().panel().isEmpty()) {
      json.writeStringField("panel", entry.mark().panel());
    }
    if (tooltips) {
      json.writeStringField("tooltip", entry.mark().tooltip());
    }
    json.writeObjectFieldStart("values");
    for (Map.Entry<String, String> value : entry.mark().values().entrySet()) {
      json.writeStringField(value.getKey(), value.getValue());
    }
    json.writeEndObject();
    json.writeEndObject();
  }
}
