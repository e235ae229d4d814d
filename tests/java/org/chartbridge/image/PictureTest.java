// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.image;

import static org.junit.jupiter.api.Assertions.assertEquals;
import static org.junit.jupiter.api.Assertions.assertSame;
import static org.junit.jupiter.api.Assertions.assertThrows;

import org.chartbridge.chart.ChartException;
import org.junit.jupiter.api.Test;
import org.junit.jupiter.params.ParameterizedTest;
import org.junit.jupiter.params.provider.CsvSource;

class PictureTest {
  private static String error(int width, int height, double percent) {
    return assertThrows(
        ChartException.class, () -> Picture.ofPercent(width, height, percent, g -> {}))
        .getMessage();
  }

  @Test
  void sizeIsAPercentage() {
    Picture picture = Picture.ofPercent(801, 600, 50, g -> {});
    assertEquals(0.5, picture.scale());
    assertEquals(401, picture.pixelWidth());
    assertEquals(300, picture.pixelHeight());
    Picture tiny = Picture.ofPercent(800, 600, 0.001, g -> {});
    assertEquals(1, tiny.pixelWidth());
    assertEquals(1, tiny.pixelHeight());
    assertEquals(10_000, Picture.ofPercent(100, 100, 10_000, g -> {}).pixelWidth());
  }

  @ParameterizedTest
  @CsvSource(
      {"0, 0", "-5, -5", "NaN, NaN", "Infinity, Infinity", "10000.5, 10000.5", "1e12, 1.0E12"})
  void
  aSizeOutOfRange(double percent, String shown) {
    assertEquals("The size is " + shown + " percent; it must be greater than 0 and at most 10000.",
        error(800, 600, percent));
  }

  @Test
  void aPictureThatIsTooLarge() {
    assertEquals(10_000, Picture.ofPercent(10_000, 10_000, 100, g -> {}).pixelHeight());
    assertEquals(
        "At 10000 percent the picture would have 80000 x 60000 pixels; at most 100 million "
            + "are drawn. Choose a smaller size.",
        error(800, 600, 10_000));
    assertEquals(
        "At 100.1 percent the picture would have 10010 x 10010 pixels; at most 100 million "
            + "are drawn. Choose a smaller size.",
        error(10_000, 10_000, 100.1));
  }

  @Test
  void imageTypesHaveTheirNumbers() {
    ImageType[] types = {ImageType.JPEG, ImageType.PNG, ImageType.BMP, ImageType.GIF, ImageType.SVG,
        ImageType.PDF, ImageType.IMAGE_MAP};
    for (int i = 0; i < types.length; i++) {
      assertSame(types[i], ImageType.of(i + 1));
      assertEquals(i + 1, types[i].number());
    }
    for (int number : new int[] {0, 8, -1, Integer.MAX_VALUE}) {
      ChartException e = assertThrows(ChartException.class, () -> ImageType.of(number));
      assertEquals("There is no image type " + number
              + "; the types are 1 JPEG, 2 PNG, 3 BMP, 4 GIF, 5 SVG, 6 PDF, 7 image map.",
          e.getMessage());
    }
  }
}
