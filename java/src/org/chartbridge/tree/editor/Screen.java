// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.tree.editor;

import java.awt.GraphicsEnvironment;
import java.io.IOException;
import java.net.InetSocketAddress;
import java.net.Socket;
import java.net.UnixDomainSocketAddress;
import java.nio.channels.SocketChannel;
import java.nio.file.Path;
import java.util.regex.Matcher;
import java.util.regex.Pattern;

/**
 * Whether there is a display to show windows on. AWT must not find out by itself: when DISPLAY
 * names a server that does not answer, its first use fails, and from then on the whole JVM can draw
 * nothing, not even into memory.
 */
public final class Screen {
  private static final String HEADLESS = "java.awt.headless";
  private static final Pattern DISPLAY = Pattern.compile("([^:]*):(\\d{1,5})(\\.\\d+)?");
  private static final int X11_PORT = 6000;
  private static final int MAX_PORT = 65535;
  private static final int TIMEOUT_MILLISECONDS = 2000;

  private Screen() {}

  /**
   * Settles, before anything of AWT is used, whether this JVM has a display; an answer that was
   * given earlier stays.
   */
  public static void settle() {
    if (System.getProperty(HEADLESS) == null) {
      System.setProperty(HEADLESS, Boolean.toString(!answers(System.getenv("DISPLAY"))));
    }
  }

  /** Whether windows can be shown. */
  public static boolean isAvailable() {
    return !GraphicsEnvironment.isHeadless();
  }

  /** Whether an X server answers under the name of a display. */
  static boolean answers(String display) {
    Matcher matcher = DISPLAY.matcher(display == null ? "" : display.strip());
    if (!matcher.matches()) {
      return false;
    }
    String host = matcher.group(1);
    int number = Integer.parseInt(matcher.group(2));
    boolean local = host.isEmpty() || host.equals("unix");
    return local && answersLocally(number) || answersOnNetwork(local ? "localhost" : host, number);
  }

  private static boolean answersLocally(int number) {
    Path socket = Path.of("/tmp/.X11-unix/X" + number);
    try (SocketChannel channel = SocketChannel.open(UnixDomainSocketAddress.of(socket))) {
      return channel.isConnected();
    } catch (IOException | UnsupportedOperationException e) {
      return false;
    }
  }

  private static boolean answersOnNetwork(String host, int number) {
    if (X11_PORT + number > MAX_PORT) {
      return false;
    }
    try (Socket socket = new Socket()) {
      socket.connect(new InetSocketAddress(host, X11_PORT + number), TIMEOUT_MILLISECONDS);
      return true;
    } catch (IOException | IllegalArgumentException e) {
      return false;
    }
  }
}
