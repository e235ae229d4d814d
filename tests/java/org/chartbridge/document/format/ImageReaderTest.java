// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.document.format;

import static org.junit.jupiter.api.Assertions.assertEquals;
import static org.junit.jupiter.api.Assertions.assertFalse;
import static org.junit.jupiter.api.Assertions.assertThrows;
import static org.junit.jupiter.api.Assertions.assertTrue;

import java.awt.image.BufferedImage;
import java.io.ByteArrayOutputStream;
import java.io.IOException;
import java.nio.charset.StandardCharsets;
import java.util.Arrays;
import java.util.Locale;
import javax.imageio.ImageIO;
import org.chartbridge.chart.ChartException;
import org.chartbridge.chart.TextPosition;
import org.chartbridge.document.figure.FigureRenderer;
import org.chartbridge.document.model.Figure;
import org.chartbridge.document.model.FigureContent;
import org.chartbridge.document.model.ImageData;
import org.junit.jupiter.api.Test;
import org.junit.jupiter.params.ParameterizedTest;
import org.junit.jupiter.params.provider.CsvSource;
import org.junit.jupiter.params.provider.ValueSource;

class ImageReaderTest {
  private static ImageData svg(String attributes, String body) {
    String text = "<svg xmlns=\"http://www.w3.org/2000/svg\" " + attributes + ">" + body + "</svg>";
    return ImageReader.read(text.getBytes(StandardCharsets.UTF_8));
  }

  private static byte[] raster(String format) throws IOException {
    ByteArrayOutputStream out = new ByteArrayOutputStream();
    ImageIO.write(new BufferedImage(30, 20, BufferedImage.TYPE_INT_RGB), format, out);
    return out.toByteArray();
  }

  @ParameterizedTest
  @ValueSource(strings = {"PNG", "JPEG"})
  void findsTheSizeOfPixelImages(String format) throws IOException {
    ImageData image = ImageReader.read(raster(format));
    assertEquals(format, image.format().name());
    assertEquals(30, image.width());
    assertEquals(20, image.height());
  }

  private static String error(byte[] bytes) {
    return assertThrows(ChartException.class, () -> ImageReader.read(bytes)).getMessage();
  }

  @ParameterizedTest
  @ValueSource(strings = {"PNG", "JPEG"})
  void refusesWhatIsCutOff(String format) throws IOException {
    byte[] whole = raster(format);
    for (int length : new int[] {12, 30, whole.length / 2, whole.length - 1}) {
      assertEquals("the " + format + " is cut off", error(Arrays.copyOf(whole, length)));
    }
  }

  @Test
  void refusesDamagedPixels() throws IOException {
    byte[] png = raster("PNG");
    png[png.length - 20] ^= 1;
    assertEquals("the PNG is damaged: a checksum is wrong", error(png));
  }

  @ParameterizedTest
  @CsvSource(delimiter = '|', value = {
    "width=\"40\" height=\"20\"|40|20",
    "width=\"1in\" height=\"2.54cm\"|96|96",
    "width=\"30pt\" height=\"25.4mm\"|40|96",
    "width=\"2pc\" height=\"10px\"|32|10",
    "viewBox=\"0 0 50 25\"|50|25",
    "viewBox=\"0,0,50,25\" width=\"100\"|100|50",
    "viewBox=\"0 0 50 25\" height=\"100\"|200|100",
    "width=\"100%\" height=\"100%\" viewBox=\"0 0 7 9\"|7|9",
    "x=\"0\"|300|150",
  })
  void findsTheSizeOfVectorImages(String attributes, double width, double height) {
    ImageData image = svg(attributes, "");
    assertEquals(width, image.width(), 1e-9);
    assertEquals(height, image.height(), 1e-9);
  }

  @ParameterizedTest
  @ValueSource(strings = {
    "<script>alert(1)</script>",
    "<foreignObject/>",
    "<rect onclick=\"x()\"/>",
  })
  void refusesPrograms(String body) {
    String message = assertThrows(ChartException.class, () -> svg("", body)).getMessage();
    assertTrue(message.startsWith("SVG, line 1, column "), message);
  }

  @ParameterizedTest
  @ValueSource(strings = {
    "<image href=\"file:///etc/passwd\"/>",
    "<image xmlns:x=\"http://www.w3.org/1999/xlink\" x:href=\"http://example.org/a.png\"/>",
    "<image href=\"data:image/svg+xml;base64,AAAA\"/>",
    "<use href=\"other.svg#a\"/>",
    "<rect style=\"fill:url( 'http://example.org/#a')\"/>",
    "<style>@import 'a.css';</style>",
    "<g id=\"a\"><use href=\"#a\"/></g>",
    "<rect width=\"wide\" height=\"1\"/>",
  })
  void showsNothingThatCannotBeDrawnByItself(String body) {
    Figure figure = new Figure(
        new FigureContent.ImageContent(svg("", body)), "C", null, 0, new TextPosition(3, 4));
    String message = assertThrows(ChartException.class,
        () -> new FigureRenderer(Locale.ROOT, null).render(figure)).getMessage();
    assertTrue(message.startsWith("line 3, column 4: the image \"C\": The SVG image"), message);
  }

  @ParameterizedTest
  @ValueSource(strings = {
    "<rect id=\"a\" width=\"5\" height=\"5\"/><use href=\"#a\"/>",
    "<linearGradient id=\"a\"/>"
        + "<rect width=\"9\" height=\"9\" fill=\"url(#a)\" style=\"stroke:url('#a')\"/>",
    "<style>rect { fill: red }</style>",
  })
  void showsWhatIsWithinThePicture(String body) {
    ImageData image = svg("", body);
    Figure figure = new Figure(new FigureContent.ImageContent(image), null, null, 0, null);
    assertEquals(image, new FigureRenderer(Locale.ROOT, null).render(figure).image());
  }

  @Test
  void leavesProcessingInstructionsOut() {
    ImageData image = ImageReader.read(("<?xml-stylesheet href=\"http://example.org/a.css\"?>"
        + "<svg xmlns=\"http://www.w3.org/2000/svg\"><text>a &lt; b</text></svg>")
            .getBytes(StandardCharsets.UTF_8));
    String text = new String(image.bytes(), StandardCharsets.UTF_8);
    assertFalse(text.contains("stylesheet"), text);
    assertTrue(text.contains("<text>a &lt; b</text>"), text);
  }

  @Test
  void refusesOtherXml() {
    String message = assertThrows(ChartException.class,
        () -> ImageReader.read("<html/>".getBytes(StandardCharsets.UTF_8))).getMessage();
    assertTrue(message.contains("found <html>, expected <svg"), message);
  }
}
