// SPDX-License-Identifier: Apache-2.0

import java.awt.Color;
import java.awt.GradientPaint;
import java.awt.Graphics2D;
import java.awt.RenderingHints;
import java.awt.geom.Ellipse2D;
import java.awt.image.BufferedImage;
import java.io.ByteArrayOutputStream;
import java.io.IOException;
import java.util.Arrays;
import java.util.Locale;
import java.util.Random;
import java.util.concurrent.Callable;
import javax.imageio.IIOImage;
import javax.imageio.ImageIO;
import javax.imageio.ImageWriteParam;
import javax.imageio.ImageWriter;
import javax.imageio.stream.ImageOutputStream;
import javax.imageio.stream.MemoryCacheImageOutputStream;
import org.chartbridge.image.ImageType;
import org.chartbridge.image.Picture;
import org.chartbridge.image.PictureEncoder;

/**
 * Encodes pictures of 800 x 600 pixels as PNG: the JDK's writer at its default level and at a light
 * one against this library's. The median of warm rounds, and the size.
 *
 * <p>{@code java -cp build/release/java/chartbridge-runtime.jar bench/java/PngFormatBench.java}
 */
public final class PngFormatBench {
  private static final int WIDTH = 800;
  private static final int HEIGHT = 600;
  private static final int ROUNDS = 80;

  /** The quality that the JDK's writer turns into deflate level 1. */
  private static final float LIGHT = 0.9f;

  private PngFormatBench() {}

  public static void main(String[] arguments) throws Exception {
    System.setProperty("java.awt.headless", "true");
    report("plain bars", bars(false));
    report("shaded bars", bars(true));
    report("10,000 points", points());
  }

  private static void report(String name, BufferedImage image) throws Exception {
    Picture picture = Picture.ofPercent(WIDTH, HEIGHT, 100, g -> g.drawImage(image, 0, 0, null));
    report(name, "JDK", () -> jdk(image, ImageWriteParam.MODE_DEFAULT));
    report(name, "JDK, light", () -> jdk(image, ImageWriteParam.MODE_EXPLICIT));
    report(name, "PngFormat", () -> PictureEncoder.encode(picture, ImageType.PNG));
  }

  private static void report(String name, String writer, Callable<byte[]> work) throws Exception {
    double[] times = new double[ROUNDS];
    int size = 0;
    for (int i = 0; i < ROUNDS; i++) {
      long start = System.nanoTime();
      size = work.call().length;
      times[i] = (System.nanoTime() - start) / 1e6;
    }
    double[] warm = Arrays.copyOfRange(times, ROUNDS / 2, ROUNDS);
    Arrays.sort(warm);
    System.out.printf(Locale.ROOT, "%-14s %-11s %7.2f ms %8d bytes%n", name, writer,
        warm[warm.length / 2], size);
  }

  private static byte[] jdk(BufferedImage image, int mode) throws IOException {
    ImageWriter writer = ImageIO.getImageWritersByFormatName("png").next();
    ImageWriteParam parameters = writer.getDefaultWriteParam();
    parameters.setCompressionMode(mode);
    if (mode == ImageWriteParam.MODE_EXPLICIT) {
      parameters.setCompressionQuality(LIGHT);
    }
    ByteArrayOutputStream bytes = new ByteArrayOutputStream();
    try (ImageOutputStream out = new MemoryCacheImageOutputStream(bytes)) {
      writer.setOutput(out);
      writer.write(null, new IIOImage(image, null, null), parameters);
    } finally {
      writer.dispose();
    }
    return bytes.toByteArray();
  }

  private static Graphics2D white(BufferedImage image) {
    Graphics2D graphics = image.createGraphics();
    graphics.setRenderingHint(RenderingHints.KEY_ANTIALIASING, RenderingHints.VALUE_ANTIALIAS_ON);
    graphics.setRenderingHint(
        RenderingHints.KEY_TEXT_ANTIALIASING, RenderingHints.VALUE_TEXT_ANTIALIAS_ON);
    graphics.setColor(Color.WHITE);
    graphics.fillRect(0, 0, WIDTH, HEIGHT);
    return graphics;
  }

  private static BufferedImage bars(boolean shaded) {
    BufferedImage image = new BufferedImage(WIDTH, HEIGHT, BufferedImage.TYPE_INT_RGB);
    Graphics2D graphics = white(image);
    Random random = new Random(1);
    for (int i = 0; i < 30; i++) {
      int height = 50 + random.nextInt(450);
      int x = 50 + 24 * i;
      Color color = i % 2 == 0 ? new Color(0x0072B2) : new Color(0xE69F00);
      graphics.setPaint(
          shaded ? new GradientPaint(x, 0, color, x + 20f, 0, color.brighter()) : color);
      graphics.fillRect(x, HEIGHT - 50 - height, 20, height);
      graphics.setColor(Color.DARK_GRAY);
      graphics.drawString("Bar " + i, x, HEIGHT - 30 + 12 * (i % 2));
    }
    graphics.dispose();
    return image;
  }

  private static BufferedImage points() {
    BufferedImage image = new BufferedImage(WIDTH, HEIGHT, BufferedImage.TYPE_INT_RGB);
    Graphics2D graphics = white(image);
    Random random = new Random(1);
    Color[] colors = {
        new Color(0, 114, 178, 180), new Color(230, 159, 0, 180), new Color(0, 158, 115, 180)};
    for (int i = 0; i < 10_000; i++) {
      graphics.setColor(colors[i % colors.length]);
      graphics.fill(new Ellipse2D.Double(
          400 + random.nextGaussian() * 110, 300 + random.nextGaussian() * 90, 6, 6));
    }
    graphics.dispose();
    return image;
  }
}
