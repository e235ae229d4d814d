// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.image.input;

import static java.nio.charset.StandardCharsets.ISO_8859_1;
import static java.nio.charset.StandardCharsets.US_ASCII;
import static java.nio.charset.StandardCharsets.UTF_16;
import static java.nio.charset.StandardCharsets.UTF_8;
import static org.junit.jupiter.api.Assertions.assertEquals;
import static org.junit.jupiter.api.Assertions.assertThrows;
import static org.junit.jupiter.api.Assertions.assertTrue;

import java.awt.Color;
import java.awt.Graphics2D;
import java.awt.image.BufferedImage;
import java.io.ByteArrayOutputStream;
import java.io.IOException;
import java.io.UncheckedIOException;
import java.nio.ByteBuffer;
import java.nio.file.Files;
import java.nio.file.Path;
import java.util.Arrays;
import java.util.Base64;
import java.util.List;
import java.util.stream.Stream;
import java.util.zip.CRC32;
import javax.imageio.ImageIO;
import org.chartbridge.chart.ChartException;
import org.chartbridge.image.ImageType;
import org.junit.jupiter.api.Test;
import org.junit.jupiter.api.io.TempDir;
import org.junit.jupiter.params.ParameterizedTest;
import org.junit.jupiter.params.provider.CsvSource;
import org.junit.jupiter.params.provider.EnumSource;
import org.junit.jupiter.params.provider.ValueSource;

class ImageConversionTest {
  private static final String SVG = "<svg xmlns='http://www.w3.org/2000/svg'"
      + " xmlns:xlink='http://www.w3.org/1999/xlink' width='40' height='20'>";
  private static final String RED = "<rect width='20' height='20' fill='#ff0000'/>";

  @TempDir Path folder;

  /** Left half red, right half clear, with a half-clear blue stripe at the bottom. */
  private static BufferedImage clearImage() {
    BufferedImage image = new BufferedImage(40, 20, BufferedImage.TYPE_INT_ARGB);
    Graphics2D graphics = image.createGraphics();
    graphics.setColor(Color.RED);
    graphics.fillRect(0, 0, 20, 20);
    graphics.setColor(new Color(0, 0, 255, 100));
    graphics.fillRect(20, 15, 20, 5);
    graphics.dispose();
    return image;
  }

  private static byte[] encoded(BufferedImage image, String format) {
    ByteArrayOutputStream out = new ByteArrayOutputStream();
    try {
      assertTrue(ImageIO.write(image, format, out), format);
    } catch (IOException e) {
      throw new UncheckedIOException(e);
    }
    return out.toByteArray();
  }

  private static BufferedImage opaque(BufferedImage image, int type) {
    BufferedImage copy = new BufferedImage(image.getWidth(), image.getHeight(), type);
    Graphics2D graphics = copy.createGraphics();
    graphics.drawImage(image, 0, 0, Color.WHITE, null);
    graphics.dispose();
    return copy;
  }

  private Path convert(byte[] image, ImageType type) {
    Path target = folder.resolve("out");
    ImageConversion.convert(image, target, type);
    return target;
  }

  private BufferedImage converted(byte[] image, ImageType type) throws IOException {
    return ImageIO.read(convert(image, type).toFile());
  }

  private String error(byte[] image, ImageType type) throws IOException {
    String message =
        assertThrows(ChartException.class, () -> convert(image, type)).getMessage();
    try (Stream<Path> files = Files.list(folder)) {
      assertEquals(List.of(), files.toList(), "a failure leaves no file");
    }
    return message;
  }

  private String svgError(String inside) throws IOException {
    return error((SVG + inside + "</svg>").getBytes(UTF_8), ImageType.PNG);
  }

  private static void assertColor(int expected, BufferedImage image, int x, int y, int close) {
    int found = image.getRGB(x, y);
    for (int shift = 0; shift < 32; shift += 8) {
      assertEquals(expected >>> shift & 0xFF, found >>> shift & 0xFF, close,
          () -> String.format("%08x where %08x is expected", found, expected));
    }
  }

  private static String typeOf(Path file) throws IOException {
    byte[] start = Arrays.copyOf(Files.readAllBytes(file), 8);
    return InputFormat.of(start).name();
  }

  @ParameterizedTest
  @CsvSource({"jpeg, 6", "png, 0", "bmp, 0", "gif, 0"})
  void everyRasterTypeBecomesEveryOther(String from, int close)
      throws IOException {
    byte[] image = encoded(opaque(clearImage(), BufferedImage.TYPE_INT_RGB), from);
    for (ImageType type :
        List.of(ImageType.JPEG, ImageType.PNG, ImageType.BMP, ImageType.GIF)) {
      BufferedImage out = converted(image, type);
      assertEquals(type.name(), typeOf(folder.resolve("out")));
      assertEquals(40, out.getWidth());
      assertEquals(20, out.getHeight());
      int blur = type == ImageType.JPEG ? 6 : 0;
      assertColor(0xFFFF0000, out, 5, 5, close + blur);
      assertColor(0xFFFFFFFF, out, 35, 5, close + blur);
    }
  }

  @Test
  void pngKeepsWhatCanBeSeenThrough() throws IOException {
    BufferedImage out = converted(encoded(clearImage(), "png"), ImageType.PNG);
    assertColor(0xFFFF0000, out, 5, 5, 0);
    assertEquals(0, out.getRGB(30, 5) >>> 24);
    assertColor(0x640000FF, out, 30, 17, 1);
  }

  @Test
  void gifKeepsItWithoutHalves() throws IOException {
    BufferedImage mostlyBlue = clearImage();
    mostlyBlue.setRGB(39, 0, 0xC00000FF);
    BufferedImage out = converted(encoded(mostlyBlue, "png"), ImageType.GIF);
    assertColor(0xFFFF0000, out, 5, 5, 0);
    assertEquals(0, out.getRGB(30, 5) >>> 24);
    assertEquals(0, out.getRGB(30, 17) >>> 24);
    assertColor(0xFF3F3FFF, out, 39, 0, 1);
  }

  @Test
  void gifOfManyColoursHasRoomForTheClearOne() throws IOException {
    BufferedImage image = new BufferedImage(64, 64, BufferedImage.TYPE_INT_ARGB);
    for (int i = 0; i < 64 * 63; i++) {
      image.setRGB(i % 64, i / 64, 0xFF000000 | i * 4099);
    }
    BufferedImage out = converted(encoded(image, "png"), ImageType.GIF);
    for (int x = 0; x < 64; x++) {
      assertEquals(0, out.getRGB(x, 63) >>> 24);
      assertEquals(255, out.getRGB(x, 30) >>> 24);
    }
  }

  @ParameterizedTest
  @EnumSource(names = {"JPEG", "BMP"})
  void othersShowItOnWhite(ImageType type) throws IOException {
    BufferedImage out = converted(encoded(clearImage(), "png"), type);
    assertColor(0xFFFF0000, out, 5, 5, 6);
    assertColor(0xFFFFFFFF, out, 30, 5, 6);
    assertColor(0xFF9B9BFF, out, 30, 18, 8);
  }

  @ParameterizedTest
  @ValueSource(ints = {BufferedImage.TYPE_BYTE_GRAY, BufferedImage.TYPE_USHORT_GRAY,
      BufferedImage.TYPE_BYTE_BINARY, BufferedImage.TYPE_BYTE_INDEXED})
  void readsEveryDepth(int depth) throws IOException {
    BufferedImage image = new BufferedImage(40, 20, depth);
    Graphics2D graphics = image.createGraphics();
    graphics.setColor(Color.WHITE);
    graphics.fillRect(0, 0, 20, 20);
    graphics.dispose();
    BufferedImage out = converted(encoded(image, "png"), ImageType.PNG);
    assertColor(0xFFFFFFFF, out, 5, 5, 0);
    assertColor(0xFF000000, out, 30, 5, 0);
  }

  /** A PNG chunk, which is a length, a name, bytes and a checksum. */
  private static byte[] chunk(String name, byte... bytes) {
    CRC32 sum = new CRC32();
    sum.update(name.getBytes(US_ASCII));
    sum.update(bytes);
    return ByteBuffer.allocate(12 + bytes.length).putInt(bytes.length)
        .put(name.getBytes(US_ASCII)).put(bytes).putInt((int) sum.getValue()).array();
  }

  /** A PNG whose one chunk is put behind its header. */
  private static byte[] withChunk(byte[] png, byte[] chunk) {
    int header = 8 + 25;
    return ByteBuffer.allocate(png.length + chunk.length).put(png, 0, header).put(chunk)
        .put(png, header, png.length - header).array();
  }

  @Test
  void readsTheOneClearColourOfAPngWithoutOpacities() throws IOException {
    byte[] png = encoded(opaque(clearImage(), BufferedImage.TYPE_INT_RGB), "png");
    byte[] clear = withChunk(png, chunk("tRNS", new byte[] {0, -1, 0, 0, 0, 0}));
    BufferedImage out = converted(clear, ImageType.PNG);
    assertEquals(0, out.getRGB(5, 5) >>> 24);
    assertColor(0xFFFFFFFF, out, 35, 5, 0);
  }

  @Test
  void aSmallFileCannotClaimAHugePicture() throws IOException {
    byte[] header = new byte[13];
    ByteBuffer.wrap(header).putInt(20_000).putInt(5_001).put((byte) 8).put((byte) 6);
    byte[] png = encoded(clearImage(), "png");
    byte[] huge = ByteBuffer.allocate(png.length).put(png, 0, 8).put(chunk("IHDR", header))
        .put(png, 33, png.length - 33).array();
    assertEquals("The PNG image has 20000 x 5001 pixels; at most 100 million are read.",
        error(huge, ImageType.PNG));
    byte[] bmp = encoded(opaque(clearImage(), BufferedImage.TYPE_INT_RGB), "bmp");
    ByteBuffer.wrap(bmp).order(java.nio.ByteOrder.LITTLE_ENDIAN).putInt(18, 20_000)
        .putInt(22, -5_001);
    assertTrue(error(bmp, ImageType.PNG).startsWith("The BMP image is damaged: "));
    String svg = "<image width='9' height='9' href='data:image/png;base64,"
        + Base64.getEncoder().encodeToString(huge) + "'/>";
    assertEquals("The SVG image: line 1, column 107: the image inside the SVG cannot be read: The"
        + " PNG image has 20000 x 5001 pixels; at most 100 million are read.", svgError(svg));
  }

  @ParameterizedTest
  @ValueSource(strings = {"png", "jpeg", "bmp", "gif"})
  void tellsADamagedImage(String format) throws IOException {
    BufferedImage noise = new BufferedImage(200, 200, BufferedImage.TYPE_INT_RGB);
    java.util.Random random = new java.util.Random(3);
    for (int i = 0; i < 40_000; i++) {
      noise.setRGB(i % 200, i / 200, random.nextInt());
    }
    byte[] whole = encoded(noise, format);
    for (int length : new int[] {9, 30, whole.length / 2, whole.length * 9 / 10}) {
      String message = error(Arrays.copyOf(whole, length), ImageType.PNG);
      assertTrue(message.startsWith("The " + format.toUpperCase(java.util.Locale.ROOT)
          + " image is damaged: "), message);
      assertEquals(-1, message.indexOf('\n'));
    }
  }

  @Test
  void damageAnywhereGivesAnImageOrAMessage() {
    java.util.Random random = new java.util.Random(17);
    for (String format : List.of("png", "jpeg", "bmp", "gif")) {
      byte[] whole = encoded(opaque(clearImage(), BufferedImage.TYPE_INT_RGB), format);
      for (int i = 0; i < 200; i++) {
        byte[] damaged = whole.clone();
        for (int k = 0; k < 3; k++) {
          damaged[4 + random.nextInt(damaged.length - 4)] = (byte) random.nextInt();
        }
        try {
          convert(damaged, ImageType.BMP);
        } catch (ChartException e) {
          assertTrue(e.getMessage().startsWith("The "), e.getMessage());
        }
      }
    }
  }

  @Test
  void tellsWhatIsNoImage() throws IOException {
    assertEquals("The image is empty.", error(new byte[0], ImageType.PNG));
    assertEquals("The image is empty.", error(null, ImageType.PNG));
    assertEquals("The image is none of PNG, JPEG, BMP, GIF and SVG; it begins with the bytes 25 50"
        + " 44 46.", error("%PDF-1.7".getBytes(UTF_8), ImageType.PNG));
    assertEquals("The image is none of PNG, JPEG, BMP, GIF and SVG; it begins with the bytes 42.",
        error("B".getBytes(UTF_8), ImageType.PNG));
  }

  @Test
  void refusesTypesThatDoNotFit() throws IOException {
    byte[] png = encoded(clearImage(), "png");
    byte[] svg = (SVG + RED + "</svg>").getBytes(UTF_8);
    assertEquals("The image is PNG, and pixels do not become SVG; choose type 1 JPEG, 2 PNG, 3 BMP"
        + " or 4 GIF.", error(png, ImageType.SVG));
    assertEquals("The image is PNG; only SVG becomes PDF. Choose type 1 JPEG, 2 PNG, 3 BMP or 4"
        + " GIF.", error(png, ImageType.PDF));
    assertEquals("The image is SVG already.", error(svg, ImageType.SVG));
    assertEquals("An image has no marks to make an image map of; choose type 1 JPEG, 2 PNG, 3 BMP"
        + " or 4 GIF.", error(svg, ImageType.IMAGE_MAP));
  }

  @Test
  void tellsAFileThatCannotBeWritten() {
    Path target = folder.resolve("none").resolve("out.png");
    String message = assertThrows(ChartException.class,
        () -> ImageConversion.convert(encoded(clearImage(), "png"), target, ImageType.PNG))
        .getMessage();
    assertEquals("Cannot write \"" + target + "\": the folder \"" + target.getParent()
        + "\" does not exist.", message);
  }

  @Test
  void svgIsDrawnAsItIs() throws IOException {
    byte[] svg = (SVG + "<defs><circle id='c' r='5' fill='#0000ff'/></defs>" + RED
        + "<use xlink:href='#c' x='30' y='10'/></svg>").getBytes(UTF_8);
    BufferedImage out = converted(svg, ImageType.PNG);
    assertEquals(40, out.getWidth());
    assertEquals(20, out.getHeight());
    assertColor(0xFFFF0000, out, 10, 10, 0);
    assertColor(0xFF0000FF, out, 30, 10, 0);
    assertEquals(0, out.getRGB(38, 2) >>> 24);
    assertColor(0xFFFFFFFF, converted(svg, ImageType.BMP), 38, 2, 0);
    assertColor(0xFFFF0000, converted(svg, ImageType.JPEG), 10, 10, 6);
  }

  @ParameterizedTest
  @CsvSource(delimiter = ';', quoteCharacter = '"', value = {
      "\"\"; 300; 150", "viewBox='0 0 40 20'; 40; 20", "width='1in' height='48pt'; 96; 64",
      "width='50%' height='50%' viewBox='-5,-5,40.5,20'; 21; 10",
      "width='80' height='40' viewBox='0 0 40 20'; 80; 40"})
  void svgHasTheSizeThatItNames(String attributes, int width, int height) throws IOException {
    byte[] svg = ("<svg xmlns='http://www.w3.org/2000/svg' " + attributes
        + "><rect x='-9' y='-9' width='500' height='500' fill='#ff0000'/></svg>").getBytes(UTF_16);
    BufferedImage out = converted(svg, ImageType.BMP);
    assertEquals(width, out.getWidth());
    assertEquals(height, out.getHeight());
    assertColor(0xFFFF0000, out, width - 2, height - 2, 0);
  }

  @Test
  void svgBecomesAPageOfPdf() throws IOException {
    byte[] svg = (SVG + RED + "<text x='2' y='15'>Ä</text></svg>").getBytes(UTF_8);
    String pdf = Files.readString(convert(svg, ImageType.PDF), ISO_8859_1);
    assertTrue(pdf.startsWith("%PDF-"));
    assertTrue(pdf.contains("/MediaBox [0 0 30 15]"), pdf);
  }

  @Test
  void svgMayCarryPixels() throws IOException {
    String png = Base64.getEncoder().encodeToString(encoded(clearImage(), "png"));
    byte[] svg = (SVG + "<image width='40' height='20' xlink:href='data:image/png;base64," + png
        + "'/></svg>").getBytes(UTF_8);
    BufferedImage out = converted(svg, ImageType.PNG);
    assertColor(0xFFFF0000, out, 10, 10, 0);
    assertEquals(0, out.getRGB(30, 5) >>> 24);
  }

  @Test
  void scriptsAndStrangersAreLeftOut() throws IOException {
    byte[] svg = (SVG + "<script>document.documentElement.setAttribute('width','1')</script>"
        + "<foreignObject width='9' height='9'><p xmlns='http://www.w3.org/1999/xhtml'>x</p>"
        + "</foreignObject><e:note xmlns:e='urn:editor'>note</e:note>"
        + "<rect width='40' height='20' fill='#ff0000' onload='alert(1)'/></svg>").getBytes(UTF_8);
    BufferedImage out = converted(svg, ImageType.PNG);
    assertEquals(40, out.getWidth());
    assertColor(0xFFFF0000, out, 2, 2, 0);
  }

  @ParameterizedTest
  @ValueSource(strings = {
      "<image href='file:///etc/hostname'/>",
      "<image xlink:href='http://192.0.2.1/a.png'/>",
      "<image xlink:href='other.png'/>",
      "<use href='other.svg#a'/>",
      "<image href='data:image/svg+xml;base64,PHN2Zy8+'/>",
      "<use href='data:image/svg+xml,&lt;svg/>#a'/>",
      "<feImage href='a.png'/>",
      "<rect fill='url(http://192.0.2.1/a.svg#p)'/>",
      "<rect style='fill: URL( \"a.svg#p\")'/>",
      "<style>@import 'a.css';</style>",
      "<style>@font-face { src: url(a.ttf) }</style>",
      "<style>rect { fill: u\\72l(a.svg#p) }</style>"})
  void svgRefersToNothingOutside(String inside) throws IOException {
    String message = svgError(inside);
    assertTrue(message.startsWith("The SVG image: line 1, column 107: <"), message);
    assertTrue(message.endsWith("may refer to its own parts (#name) and to PNG, JPEG and GIF inside"
        + " it (data:image/png;base64,...) only"), message);
  }

  @Test
  void linksMayLeadAnywhere() throws IOException {
    byte[] svg =
        (SVG + "<a xlink:href='https://example.org/'>" + RED + "</a></svg>").getBytes(UTF_8);
    assertColor(0xFFFF0000, converted(svg, ImageType.PNG), 5, 5, 0);
  }

  @ParameterizedTest
  @CsvSource(delimiter = '|', value = {
      "<html/>| line 1, column 1: found <html>, which is not SVG; expected"
          + " <svg xmlns=\"http://www.w3.org/2000/svg\">",
      "<!DOCTYPE svg [<!ENTITY a 'b'>]><svg/>| line 1, column 1: a document type declaration"
          + " (<!DOCTYPE) is not allowed",
      "<svg xmlns='http://www.w3.org/2000/svg'>| line 1, column 41: the document ends inside <svg>,"
          + " which begins at line 1, column 1"})
  void tellsWhatIsNoSvg(String text, String message) throws IOException {
    assertEquals("The SVG image: " + message, error(text.getBytes(UTF_8), ImageType.PNG));
  }

  @Test
  void tellsSvgThatCannotBeDrawn() throws IOException {
    assertTrue(svgError("<rect width='wide' height='3'/>")
        .startsWith("The SVG image cannot be drawn: "));
    assertEquals("The SVG image has 20000 x 5001 pixels; at most 100 million are drawn.",
        error("<svg xmlns='http://www.w3.org/2000/svg' width='20000' height='5001'/>"
            .getBytes(UTF_8), ImageType.PNG));
  }

  @ParameterizedTest
  @CsvSource(delimiter = '|', value = {
      "<regt/>|found <regt>, which is no element of SVG 1.1",
      "<rect width='3' height='3' stroke='red' stroke-width='-1'/>"
          + "|found stroke-width \"-1\"; it cannot be negative",
      "<rect style='stroke: red; stroke-width: -1'/>"
          + "|found stroke-width \"-1\"; it cannot be negative",
      "<path d='M0 0h9' stroke='red' stroke-dasharray='3 -2'/>"
          + "|found stroke-dasharray \"3 -2\"; it cannot be negative",
      "<text font-size='-5'>a</text>|found font-size \"-5\"; it cannot be negative",
      "<svg viewBox='a'/>|found viewBox \"a\", expected four numbers",
      "<filter id='f'><feMorphology radius='100000'/></filter>"
          + "|found radius \"100000\"; at most 1000 is drawn",
      "<filter id='f'><feConvolveMatrix order='1000000'/></filter>"
          + "|found order \"1000000\"; at most 50 is drawn",
      "<filter id='f'><feDiffuseLighting/></filter>"
          + "|<feDiffuseLighting> has no light in it, such as <feDistantLight>"})
  void saysWhereAValueCannotBeDrawn(String inside, String reason) throws IOException {
    String message = svgError(inside);
    assertTrue(message.matches("The SVG image: line 1, column [0-9]+: .*"), message);
    assertTrue(message.endsWith(": " + reason), message);
  }

  @ParameterizedTest
  @CsvSource(delimiter = '|', value = {
      "<rect width='-5' height='3'/>|The attribute \"width\" of the element <rect> cannot be"
          + " negative.",
      "<use href='#nix'/>|Cannot find the referenced element: \"#nix\" specified on the element"
          + " <use> - may be a problem of 'id'."})
  void givesThePlaceOfWhatTheLibraryRefuses(String inside, String reason) throws IOException {
    String message = svgError(inside);
    assertTrue(message.matches("The SVG image cannot be drawn: line 1, column [0-9]+: .*"),
        message);
    assertTrue(message.endsWith(": " + reason), message);
  }

  @ParameterizedTest
  @ValueSource(strings = {
      "<pattern id='p' width='4' height='4' patternUnits='userSpaceOnUse'>"
          + "<rect width='2' height='2' fill='url(#p)'/></pattern><rect fill='url(#p)'/>",
      "<mask id='m'><rect mask='url(#m)'/></mask>",
      "<clipPath id='c'><rect style='clip-path: url(#c)'/></clipPath>",
      "<marker id='m'><path d='M0 0h1' marker-end='url(#m)'/></marker>",
      "<style>.a { fill: url(#p) }</style><pattern id='p'><g class='a'><rect/></g></pattern>",
      "<g fill='url(#p)'><pattern id='p'><rect/></pattern></g>"})
  void partsCannotContainThemselves(String inside) throws IOException {
    String message = svgError(inside);
    assertTrue(message.endsWith(" contains itself by way of what it refers to"), message);
  }

  @Test
  void partsThatAreSharedContainNoneOfThemselves() throws IOException {
    String inside = "<g fill='url(#g)' clip-path='url(#c)'><linearGradient id='g'><stop"
        + " offset='0' stop-color='red'/></linearGradient><clipPath id='c'><rect width='10'"
        + " height='10'/></clipPath><rect width='10' height='10'/></g>";
    assertColor(0xFFFF0000,
        converted((SVG + inside + "</svg>").getBytes(UTF_8), ImageType.PNG), 5, 5, 0);
  }

  @ParameterizedTest
  @ValueSource(strings = {"<marker id='a'/>", "<g id='a' display='none'/>",
      "<linearGradient id='a'/>", "<style>.n{display:none}</style><rect id='a' class='n'/>",
      "<use id='a' href='#b'/><filter id='b'/>", "<tspan id='a'/>",
      "<g id='a' requiredExtensions='http://nowhere'/>"})
  void useOfWhatShowsNothingShowsNothing(String shown) throws IOException {
    byte[] svg = (SVG + RED + shown + "<g><use href='#a'/></g></svg>").getBytes(UTF_8);
    assertColor(0xFFFF0000, converted(svg, ImageType.PNG), 5, 5, 0);
  }

  @Test
  void usesCannotNestElementsWithoutEnd() throws IOException {
    StringBuilder chain = new StringBuilder("<path id='a0' d='M0 0'/>");
    for (int i = 1; i < 20; i++) {
      chain.append("<g id='a").append(i).append("'>").append("<g>".repeat(100));
      chain.append("<use href='#a").append(i - 1).append("'/>").append("</g>".repeat(101));
    }
    String message = svgError(chain.toString());
    assertTrue(message.endsWith(
        "with all that references repeat, elements are nested more than 512 levels deep"), message);
  }

  @Test
  void dashesAreCountedBeforeTheyAreDrawn() throws IOException {
    assertEquals("The SVG image: the lines of it have more than a million dashes"
        + " (stroke-dasharray).", svgError(
            "<path d='M0 0h1e9' stroke='red' stroke-dasharray='0.001'/>"));
  }

  @Test
  void useCannotMultiplyWithoutEnd() throws IOException {
    StringBuilder bomb = new StringBuilder("<g id='a0'><path d='M0 0'/></g>");
    for (int i = 1; i < 12; i++) {
      bomb.append("<g id='a").append(i).append("'>");
      bomb.append(("<use href='#a" + (i - 1) + "'/>").repeat(10)).append("</g>");
    }
    String message = svgError(bomb.toString());
    assertTrue(message.endsWith("with all that references repeat there are more than 1000000 elements"),
        message);
    message = svgError("<g id='a'><use href='#b'/></g><g id='b'><use href='#a'/></g>");
    assertEquals(
        "The SVG image: line 1, column 107: <g> contains itself by way of what it refers to", message);
    StringBuilder chain = new StringBuilder("<g id='a0'/>");
    for (int i = 0; i < 60; i++) {
      chain.append("<use id='a" + (i + 1) + "' href='#a" + i + "'/>");
    }
    message = svgError(chain.toString());
    assertTrue(message.endsWith("references lead into each other more than 50 deep"), message);
    message = svgError("<use href='#a60'/>" + chain);
    assertTrue(message.endsWith("references lead into each other more than 50 deep"), message);
    int end = chain.indexOf("<use id='a51'");
    converted((SVG + chain.substring(0, end) + "</svg>").getBytes(UTF_8), ImageType.PNG);
  }
}
