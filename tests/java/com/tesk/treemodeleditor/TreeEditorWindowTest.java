// SPDX-License-Identifier: Apache-2.0
package com.tesk.treemodeleditor;

import static org.junit.jupiter.api.Assertions.assertArrayEquals;
import static org.junit.jupiter.api.Assertions.assertEquals;
import static org.junit.jupiter.api.Assertions.assertFalse;
import static org.junit.jupiter.api.Assertions.assertNotEquals;
import static org.junit.jupiter.api.Assertions.assertTimeoutPreemptively;
import static org.junit.jupiter.api.Assertions.assertTrue;
import static org.junit.jupiter.api.Assumptions.assumeFalse;

import java.awt.Component;
import java.awt.Container;
import java.awt.Frame;
import java.awt.GraphicsEnvironment;
import java.awt.Point;
import java.awt.Rectangle;
import java.awt.Robot;
import java.awt.event.InputEvent;
import java.awt.event.KeyEvent;
import java.awt.event.WindowEvent;
import java.awt.geom.Rectangle2D;
import java.awt.image.BufferedImage;
import java.nio.charset.StandardCharsets;
import java.time.Duration;
import java.util.ArrayList;
import java.util.List;
import java.util.concurrent.Callable;
import java.util.function.BooleanSupplier;
import javax.swing.AbstractButton;
import javax.swing.JScrollPane;
import javax.swing.SwingUtilities;
import org.chartbridge.tree.Models;
import org.chartbridge.tree.SamplePaths;
import org.chartbridge.tree.TreeDocument;
import org.chartbridge.tree.draw.TreeDisplay;
import org.chartbridge.tree.draw.TreePicture;
import org.chartbridge.tree.draw.TreePictures;
import org.chartbridge.tree.pmml.PmmlReader;
import org.junit.jupiter.api.AfterEach;
import org.junit.jupiter.api.BeforeEach;
import org.junit.jupiter.api.Tag;
import org.junit.jupiter.api.Test;

/**
 * The editor's window, on a real X server: what is on the screen, and what the mouse does. Skipped
 * where there is none.
 */
@Tag("display")
class TreeEditorWindowTest {
  private static final byte[] NONE = new byte[0];
  private static final byte[] AIR = Models.example("airquality");
  private static final int PATIENCE_MILLISECONDS = 60_000;
  private static final int AWAY = 2;
  private static int editors;

  private Robot robot;
  private TreeEditor editor;
  private int id;

  @BeforeEach
  void start() throws Exception {
    assumeFalse(GraphicsEnvironment.isHeadless(), "there is no display");
    robot = new Robot();
    robot.setAutoDelay(20);
    editor = new TreeEditor();
    id = 1000 + editors++;
    editor.setThreadId(id);
    rest();
  }

  @AfterEach
  void stop() {
    if (editor != null) {
      editor.close();
      await("the window is gone", () -> frame() == null);
    }
  }

  private static void await(String what, BooleanSupplier condition) {
    long end = System.currentTimeMillis() + PATIENCE_MILLISECONDS;
    while (!condition.getAsBoolean()) {
      assertTrue(System.currentTimeMillis() < end, "waited in vain until " + what);
      try {
        Thread.sleep(20);
      } catch (InterruptedException e) {
        throw new IllegalStateException(e);
      }
    }
  }

  /** Runs on the event thread after all that waits there. */
  private static <T> T onEventThread(Callable<T> work) {
    List<T> result = new ArrayList<>();
    try {
      SwingUtilities.invokeAndWait(() -> {
        try {
          result.add(work.call());
        } catch (Exception e) {
          throw new IllegalStateException(e);
        }
      });
    } catch (Exception e) {
      throw new IllegalStateException(e);
    }
    return result.get(0);
  }

  private Frame frame() {
    for (Frame frame : Frame.getFrames()) {
      if (frame.isShowing() && ("tree-editor-" + id).equals(frame.getName())) {
        return frame;
      }
    }
    return null;
  }

  private static Component find(Container inside, java.util.function.Predicate<Component> wanted) {
    for (Component component : inside.getComponents()) {
      if (wanted.test(component)) {
        return component;
      }
      Component found = component instanceof Container container ? find(container, wanted) : null;
      if (found != null) {
        return found;
      }
    }
    return null;
  }

  private Component canvas() {
    return find(frame(), component -> "tree-canvas".equals(component.getName()));
  }

  private JScrollPane scroll() {
    return (JScrollPane) find(frame(), component -> component instanceof JScrollPane);
  }

  private void show(int x, int y, int width, int height, byte[] model, byte[] display) {
    editor.renderPMMLToScreen(x, y, width, height, model, display);
    await("the window shows", () -> frame() != null && canvas() != null && canvas().isShowing());
    rest();
  }

  /** Moves the pointer out of the way and lets everything be painted. */
  private void rest() {
    robot.mouseMove(AWAY, AWAY);
    robot.waitForIdle();
    robot.delay(150);
    robot.waitForIdle();
  }

  private BufferedImage screen(Rectangle area) {
    return robot.createScreenCapture(area);
  }

  private static boolean same(BufferedImage a, BufferedImage b) {
    for (int y = 0; y < a.getHeight(); y++) {
      for (int x = 0; x < a.getWidth(); x++) {
        if (a.getRGB(x, y) != b.getRGB(x, y)) {
          return false;
        }
      }
    }
    return a.getWidth() == b.getWidth() && a.getHeight() == b.getHeight();
  }

  private static boolean has(BufferedImage image, int rgb) {
    for (int y = 0; y < image.getHeight(); y++) {
      for (int x = 0; x < image.getWidth(); x++) {
        if ((image.getRGB(x, y) & 0xFFFFFF) == rgb) {
          return true;
        }
      }
    }
    return false;
  }

  private static TreePicture picture(byte[] model, byte[] display) {
    TreeDocument document = PmmlReader.read(model);
    return new TreePictures(document, TreeDisplay.parse(display), null, SamplePaths.NONE).shown();
  }

  /** The middle of a node, or of a card, in pixels of the screen. */
  private Point onScreen(TreePicture picture, int mark, double factor) {
    Rectangle2D area = picture.marks().get(mark).area().getBounds2D();
    Point origin = onEventThread(() -> canvas().getLocationOnScreen());
    return new Point((int) Math.round(origin.x + area.getCenterX() * factor),
        (int) Math.round(origin.y + area.getCenterY() * factor));
  }

  private void click(Point point) {
    robot.mouseMove(point.x, point.y);
    robot.mousePress(InputEvent.BUTTON1_DOWN_MASK);
    robot.mouseRelease(InputEvent.BUTTON1_DOWN_MASK);
    robot.waitForIdle();
  }

  private void press(String button) {
    Component found = onEventThread(() -> find(frame(),
        component -> component instanceof AbstractButton b && button.equals(b.getText())));
    Point at = onEventThread(found::getLocationOnScreen);
    click(new Point(at.x + found.getWidth() / 2, at.y + found.getHeight() / 2));
  }

  private String display() {
    return new String(editor.extractDisplayData(), StandardCharsets.UTF_8);
  }

  @Test
  void theWindowStandsWhereItIsAskedFor() {
    Rectangle place = new Rectangle(120, 90, 640, 480);
    Rectangle around = new Rectangle(0, 0, 1000, 700);
    BufferedImage before = screen(around);
    show(place.x, place.y, place.width, place.height, Models.example("iris"), NONE);
    assertEquals(place, onEventThread(() -> frame().getBounds()));
    BufferedImage after = screen(around);
    assertFalse(same(before.getSubimage(place.x, place.y, place.width, place.height),
        after.getSubimage(place.x, place.y, place.width, place.height)));
    assertTrue(same(before.getSubimage(0, 0, 1000, 90), after.getSubimage(0, 0, 1000, 90)));
    assertTrue(same(before.getSubimage(0, 0, 120, 700), after.getSubimage(0, 0, 120, 700)));
    assertTrue(same(before.getSubimage(760, 0, 240, 700), after.getSubimage(760, 0, 240, 700)));
    assertTrue(same(before.getSubimage(0, 570, 1000, 130), after.getSubimage(0, 570, 1000, 130)));
    BufferedImage window = screen(place);
    for (int color : new int[] {0x0072B2, 0xE69F00, 0x009E73}) {
      assertTrue(has(window, color), Integer.toHexString(color));
    }
    show(200, 150, 500, 300, Models.example("iris"), NONE);
    await("the window has moved",
        () -> new Rectangle(200, 150, 500, 300).equals(onEventThread(() -> frame().getBounds())));
  }

  @Test
  void theScreenShowsThePictureToThePixel() {
    byte[] iris = Models.example("iris");
    show(50, 50, 700, 600, iris, NONE);
    TreePicture picture = picture(iris, NONE);
    Point origin = onEventThread(() -> canvas().getLocationOnScreen());
    BufferedImage seen =
        screen(new Rectangle(origin.x, origin.y, picture.width(), picture.height()));
    BufferedImage drawn = new BufferedImage(
        picture.width(), picture.height(), BufferedImage.TYPE_INT_RGB);
    java.awt.Graphics2D g = drawn.createGraphics();
    picture.draw(g);
    g.dispose();
    for (int i = 0; i < picture.marks().size(); i++) {
      Rectangle2D area = picture.marks().get(i).area().getBounds2D();
      int x = (int) area.getX() + 4;
      int y = (int) area.getY() + 6;
      assertEquals(drawn.getRGB(x, y), seen.getRGB(x, y), "ground of node " + i);
      y = (int) area.getMaxY() - 10;
      assertEquals(drawn.getRGB(x + 10, y), seen.getRGB(x + 10, y), "bar of node " + i);
    }
    BufferedImage beside = screen(new Rectangle(origin.x + picture.width() + 20, origin.y, 50, 50));
    assertEquals(0xFFFFFF, beside.getRGB(25, 25) & 0xFFFFFF, "the ground beside the picture");
  }

  @Test
  void aClickCollapsesANodeAndAnotherOneOpensIt() {
    show(20, 20, 700, 720, AIR, NONE);
    TreePicture picture = picture(AIR, NONE);
    Rectangle window = onEventThread(() -> frame().getBounds());
    BufferedImage open = screen(window);
    assertFalse(editor.needsRerendering());
    Point node = onScreen(picture, 1, 1);
    click(node);
    await("the display data tell it", () -> display().contains("collapsed"));
    assertTrue(display().contains("<collapsed tree=\"1\" path=\"1.1\"/>"), display());
    assertTrue(editor.needsRerendering());
    rest();
    BufferedImage collapsed = screen(window);
    assertFalse(same(open, collapsed));
    byte[] saved = editor.extractDisplayData();
    long[] size = editor.getSizeArray();
    assertArrayEquals(new TreeImager().calculateSizeArray(AIR, saved), size);
    TreePicture smaller = picture(AIR, saved);
    // The badge of the collapsed node opens it as the node does.
    Rectangle2D area = smaller.marks().get(1).area().getBounds2D();
    Point origin = onEventThread(() -> canvas().getLocationOnScreen());
    click(new Point(origin.x + (int) area.getCenterX(), origin.y + (int) area.getMaxY() + 14));
    await("the node is open again", () -> !display().contains("collapsed"));
    rest();
    assertTrue(same(open, screen(window)));
  }

  @Test
  void aClickBesideTheNodesDoesNothing() {
    show(20, 20, 700, 720, AIR, NONE);
    Point origin = onEventThread(() -> canvas().getLocationOnScreen());
    String before = display();
    click(new Point(origin.x + 3, origin.y + 3));
    rest();
    assertEquals(before, display());
    assertFalse(editor.needsRerendering());
  }

  @Test
  void deActivateHidesAndRenderingBringsBack() {
    Rectangle place = new Rectangle(100, 80, 600, 500);
    BufferedImage empty = screen(place);
    show(place.x, place.y, place.width, place.height, AIR, NONE);
    BufferedImage shown = screen(place);
    editor.deActivate();
    await("the window is hidden", () -> frame() == null);
    rest();
    assertTrue(same(empty, screen(place)));
    assertTrue(editor.getSizeArray()[0] > 0);
    show(place.x, place.y, place.width, place.height, AIR, NONE);
    assertTrue(same(shown, screen(place)));
  }

  @Test
  void closeClosesAndTheUserMayCloseToo() {
    show(100, 80, 600, 500, AIR, NONE);
    editor.close();
    await("the window is gone", () -> frame() == null);
    assertArrayEquals(new long[] {0, 0}, editor.getSizeArray());
    show(100, 80, 600, 500, AIR, NONE);
    Frame frame = frame();
    onEventThread(() -> {
      frame.dispatchEvent(new WindowEvent(frame, WindowEvent.WINDOW_CLOSING));
      return true;
    });
    await("the window is gone", () -> frame() == null);
    assertArrayEquals(new long[] {0, 0}, editor.getSizeArray());
    assertTrue(display().contains("tree-display"));
  }

  @Test
  void theResolutionScalesWhatIsOnTheScreen() {
    show(20, 20, 900, 900, AIR, NONE);
    TreePicture picture = picture(AIR, NONE);
    assertEquals(picture.width(), onEventThread(() -> canvas().getPreferredSize().width));
    editor.setDPI(144);
    await("the picture has grown", () -> onEventThread(
        () -> canvas().getPreferredSize().width) == Math.ceil(picture.width() * 1.5));
    rest();
    BufferedImage drawn = new BufferedImage(
        picture.width(), picture.height(), BufferedImage.TYPE_INT_RGB);
    java.awt.Graphics2D g = drawn.createGraphics();
    picture.draw(g);
    g.dispose();
    Rectangle2D highest = picture.marks().get(12).area().getBounds2D();
    int x = (int) highest.getX() + 5;
    int y = (int) highest.getY() + 8;
    Point origin = onEventThread(() -> canvas().getLocationOnScreen());
    BufferedImage seen =
        screen(new Rectangle(origin.x + x * 3 / 2, origin.y + y * 3 / 2, 1, 1));
    assertEquals(drawn.getRGB(x, y), seen.getRGB(0, 0), "the ground of the last node");
    click(onScreen(picture, 1, 1.5));
    await("the node is collapsed", () -> display().contains("path=\"1.1\""));
  }

  @Test
  void aLargeTreeScrollsAndZooms() {
    byte[] large = Models.utf8(Models.random(4, 200));
    show(20, 20, 500, 400, large, NONE);
    TreePicture picture = picture(large, NONE);
    assertTrue(onEventThread(() -> scroll().getHorizontalScrollBar().isVisible()));
    BufferedImage before = screen(new Rectangle(20, 20, 500, 400));
    // A drag to the left and up moves the view, and collapses nothing.
    Point middle = new Point(300, 250);
    robot.mouseMove(middle.x, middle.y);
    robot.mousePress(InputEvent.BUTTON1_DOWN_MASK);
    for (int step = 10; step <= 120; step += 10) {
      robot.mouseMove(middle.x - step, middle.y - step / 2);
    }
    robot.mouseRelease(InputEvent.BUTTON1_DOWN_MASK);
    rest();
    assertEquals(new Point(120, 60), onEventThread(() -> scroll().getViewport().getViewPosition()));
    assertFalse(same(before, screen(new Rectangle(20, 20, 500, 400))));
    assertFalse(display().contains("collapsed"));
    press("Fit");
    await("everything fits", () -> onEventThread(() -> canvas().getPreferredSize().width)
        <= onEventThread(() -> scroll().getViewport().getWidth()));
    press("100 %");
    await("the size is normal",
        () -> onEventThread(() -> canvas().getPreferredSize().width) == picture.width());
    press("+");
    await("the picture is larger", () -> onEventThread(
        () -> canvas().getPreferredSize().width) == Math.ceil(picture.width() * 1.25));
    robot.mouseMove(middle.x, middle.y);
    robot.keyPress(KeyEvent.VK_CONTROL);
    robot.mouseWheel(1);
    robot.keyRelease(KeyEvent.VK_CONTROL);
    await("the picture is smaller again", () -> onEventThread(
        () -> Math.abs(canvas().getPreferredSize().width - picture.width())) <= 1);
  }

  @Test
  void anEnsembleOpensItsTrees() {
    byte[] forest = Models.example("titanic-forest");
    show(20, 20, 800, 600, forest, NONE);
    click(onScreen(picture(forest, NONE), 3, 1));
    await("the tree is open", () -> display().contains(" tree=\"4\""));
    rest();
    press("Overview");
    await("the overview is back", () -> !display().contains("tree=\"4\""));
    rest();
    press("Turn");
    await("the trees are turned", () -> display().contains("left-to-right"));
    assertNotEquals(NONE, editor.extractDisplayData());
  }

  @Test
  void callsFromTheEventThreadAndFromOthersDoNotBlock() {
    show(20, 20, 400, 300, AIR, NONE);
    assertTimeoutPreemptively(Duration.ofSeconds(120), () -> {
      List<Thread> threads = new ArrayList<>();
      for (int i = 0; i < 4; i++) {
        int number = i;
        Thread thread = new Thread(() -> {
          for (int n = 0; n < 15; n++) {
            editor.renderPMMLToScreen(20 + n, 20 + number, 400, 300, AIR, NONE);
            editor.setDPI(90 + n);
            editor.setNeedsRerendering(n % 2 == 0);
            editor.getSizeArray();
            editor.deActivate();
          }
        });
        threads.add(thread);
        thread.start();
      }
      for (int n = 0; n < 15; n++) {
        onEventThread(() -> {
          editor.renderPMMLToScreen(30, 30, 420, 310, AIR, NONE);
          editor.deActivate();
          editor.calculateSizeArray(AIR, NONE);
          return editor.extractCompressedPMML();
        });
      }
      for (Thread thread : threads) {
        thread.join();
      }
    });
    editor.setDPI(96);
    show(40, 50, 430, 320, AIR, NONE);
    assertEquals(new Rectangle(40, 50, 430, 320), onEventThread(() -> frame().getBounds()));
  }
}
