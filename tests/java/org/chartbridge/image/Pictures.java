// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.image;

import java.awt.Color;
import java.awt.Font;
import java.awt.Graphics2D;
import java.awt.image.BufferedImage;
import java.io.ByteArrayInputStream;
import java.io.IOException;
import java.util.function.Consumer;
import javax.imageio.ImageIO;

/** Pictures to test with. */
final class Pictures {
  static final Color ORANGE = new Color(0xE69F00);
  static final Color BLUE = new Color(0x0072B2);

  private Pictures() {}

  /** A blue square from (10, 10) to (30, 30), an orange one beside it and nothing around them. */
  static void squares(Graphics2D graphics) {
    graphics.setColor(BLUE);
    graphics.fillRect(10, 10, 20, 20);
    graphics.setColor(ORANGE);
    graphics.fillRect(40, 10, 20, 20);
  }

  /** More colours than a table holds: every pixel another one. */
  static void gradient(Graphics2D graphics) {
    for (int y = 0; y < 40; y++) {
      for (int x = 0; x < 80; x++) {
        graphics.setColor(new Color(x * 3, y * 6, (x + y) * 2));
        graphics.fillRect(x, y, 1, 1);
      }
    }
  }

  static Consumer<Graphics2D> text(String text, String family) {
    return graphics -> {
      graphics.setColor(Color.BLACK);
      graphics.setFont(new Font(family, Font.PLAIN, 12));
      graphics.drawString(text, 5, 20);
    };
  }

  static Picture of(Consumer<Graphics2D> drawing, double percent) {
    return Picture.ofPercent(80, 40, percent, drawing);
  }

  static BufferedImage decode(byte[] bytes) throws IOException {
    return ImageIO.read(new ByteArrayInputStream(bytes));
  }

  static int rgb(BufferedImage image, int x, int y) {
    return image.getRGB(x, y) & 0xFFFFFF;
  }
}
