// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.document.export;

import java.util.ArrayList;
import java.util.List;
import java.util.Locale;
import org.chartbridge.chart.ChartException;
import org.chartbridge.document.model.Document;
import org.chartbridge.document.model.Paper;
import org.chartbridge.document.model.PlainText;
import org.chartbridge.document.model.Table;

/**
 * A table, or a part of one, as it is set on pages: measures in points. What is too wide for the
 * page gives way in this order: words are broken after {@code _ - /}; the type becomes smaller,
 * down to {@link #SMALLEST}; the page is turned; the columns go on in further parts below; and words
 * that are longer than words are get broken anywhere. Numbers and dates stay whole.
 */
public final class PageTable {
  /** The size that tables are set in where there is room. */
  public static final double SIZE = 9;

  /** The smallest size that they are set in. */
  public static final double SMALLEST = 6.5;

  /** Left and right of the text of a cell, at {@link #SIZE}. */
  public static final double PADDING = 5;

  private static final double POINTS_PER_PIXEL = 0.75;
  /** A line that fits exactly by Java's metrics might not by those of others. */
  private static final double TOLERANCE = 1.5;
  private static final double STEP = 0.25;

  private static final int SHORT = 12;

  private final Table table;
  private final double size;
  private final boolean turned;
  private final LineBreaks.Detail detail;
  private final double[] texts;

  private PageTable(Table table, CellMeasures measures, double size, boolean turned, double room,
      LineBreaks.Detail detail) {
    this.table = table;
    this.size = size;
    this.turned = turned;
    this.detail = detail;
    texts = ColumnWidths.of(table, new ColumnWidths.Needs() {
      @Override
      public double piece(Table.Cell cell) {
        return points(measures.piece(cell, detail), size);
      }

      @Override
      public double word(Table.Cell cell) {
        return points(measures.piece(cell, LineBreaks.Detail.WORDS), size);
      }

      @Override
      public double line(Table.Cell cell) {
        return points(measures.line(cell), size);
      }
    }, 2 * padding(), Math.max(1, room - 2 * padding() * table.columns().size()));
  }

  private static double points(double width, double size) {
    return width == 0 ? 0 : width * size + TOLERANCE;
  }

  /**
   * A table of a document, in one part or in several below each other.
   *
   * @throws ChartException when it fits no page; the message names the table and the text
   */
  public static List<PageTable> of(Table table, Document document) {
    return new Fitting(table, document).parts();
  }

  /** Looks for what has to give way. */
  private static final class Fitting {
    private final Table table;
    private final Document document;
    private final Locale language;
    private final CellMeasures measures;
    private final double upright;
    private final double across;

    Fitting(Table table, Document document) {
      this.table = table;
      this.document = document;
      language = document.metadata().locale();
      measures = new CellMeasures(table, language);
      upright = document.paper().textWidth() * POINTS_PER_PIXEL;
      across = document.paper().textHeight() * POINTS_PER_PIXEL;
    }

    List<PageTable> parts() {
      if (width(LineBreaks.Detail.WORDS, SIZE) <= upright) {
        return List.of(whole(LineBreaks.Detail.WORDS, SIZE, false));
      }
      for (LineBreaks.Detail detail : new LineBreaks.Detail[] {
               LineBreaks.Detail.PARTS, LineBreaks.Detail.ANYWHERE}) {
        List<PageTable> parts = parts(detail);
        if (!parts.isEmpty()) {
          return parts;
        }
      }
      throw tooWide();
    }

    private List<PageTable> parts(LineBreaks.Detail detail) {
      for (boolean turned : new boolean[] {false, true}) {
        double size = largest(detail, turned ? across : upright);
        if (size > 0) {
          return List.of(whole(detail, size, turned));
        }
      }
      for (boolean turned : new boolean[] {false, true}) {
        for (double size : new double[] {SIZE, SMALLEST}) {
          List<PageTable> parts = split(detail, size, turned);
          if (!parts.isEmpty()) {
            return parts;
          }
        }
      }
      return List.of();
    }

    private static double[] columns(
        Table table, CellMeasures measures, LineBreaks.Detail detail, double size) {
      double padding = 2 * PADDING * size / SIZE;
      double[] columns = ColumnWidths.columns(
          table, cell -> points(measures.piece(cell, detail), size), padding);
      for (int i = 0; i < columns.length; i++) {
        columns[i] += padding;
      }
      return columns;
    }

    private double width(LineBreaks.Detail detail, double size) {
      double sum = 0;
      for (double width : columns(table, measures, detail, size)) {
        sum += width;
      }
      return sum;
    }

    /** The largest size at which the table fits; 0 when that would be too small. */
    private double largest(LineBreaks.Detail detail, double room) {
      for (double size = SIZE; size >= SMALLEST; size -= STEP) {
        if (width(detail, size) <= room) {
          return size;
        }
      }
      return 0;
    }

    private PageTable whole(LineBreaks.Detail detail, double size, boolean turned) {
      return new PageTable(table, measures, size, turned, turned ? across : upright, detail);
    }

    private List<PageTable> split(LineBreaks.Detail detail, double size, boolean turned) {
      double room = turned ? across : upright;
      List<Table> tables = TableParts.of(table,
          part -> columns(part, new CellMeasures(part, language), detail, size), room);
      List<PageTable> parts = new ArrayList<>();
      for (Table part : tables == null ? List.<Table>of() : tables) {
        parts.add(new PageTable(
            part, new CellMeasures(part, language), size, turned, room, detail));
      }
      return parts;
    }

    private ChartException tooWide() {
      String widest = "";
      double most = -1;
      for (List<Table.Cell> row : table.rows()) {
        for (Table.Cell cell : row) {
          double width = measures.piece(cell, LineBreaks.Detail.ANYWHERE);
          if (width > most) {
            most = width;
            widest = longestPiece(PlainText.of(cell.text()));
          }
        }
      }
      return new ChartException(name() + " is too wide for the page, even turned and in type of "
          + SMALLEST + " points: \"" + widest + "\" stays on one line. Put it into several cells,"
          + " or into text beside the table");
    }

    private String name() {
      if (table.caption() != null && !table.caption().isBlank()) {
        return "the table \"" + table.caption().strip() + "\"";
      }
      int number = 1;
      for (Table other : document.tables()) {
        if (other == table) {
          break;
        }
        number++;
      }
      return "table " + number;
    }

    private String longestPiece(String text) {
      String longest = "";
      for (String piece : new LineBreaks(text, language).pieces(LineBreaks.Detail.ANYWHERE)) {
        longest = piece.length() > longest.length() ? piece.strip() : longest;
      }
      int most = 60;
      return longest.length() <= most ? longest : longest.substring(0, most) + "\u2026";
    }
  }

  /** What is set: the table, or the columns of it that are in this part. */
  public Table table() {
    return table;
  }

  /** The size of the type. */
  public double size() {
    return size;
  }

  /** Whether it needs the page turned. */
  public boolean isTurned() {
    return turned;
  }

  /** Where its texts may be broken. */
  public LineBreaks.Detail detail() {
    return detail;
  }

  /** Left and right of the text of a cell. */
  public double padding() {
    return PADDING * size / SIZE;
  }

  /** Whether the table is not split between pages, if it fits on one. */
  public static boolean isShort(Table table) {
    return table.rows().size() <= SHORT;
  }

  /** The width of a column, with the padding of its cells. */
  public double column(int index) {
    return texts[index] + 2 * padding();
  }

  public double width() {
    double sum = 0;
    for (int i = 0; i < texts.length; i++) {
      sum += column(i);
    }
    return sum;
  }

  /** The width of the text of a page that has this part on it. */
  public double room(Paper paper) {
    return (turned ? paper.textHeight() : paper.textWidth()) * POINTS_PER_PIXEL;
  }
}
