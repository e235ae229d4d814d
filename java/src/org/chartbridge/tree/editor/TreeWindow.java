// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.tree.editor;

import java.awt.AWTError;
import java.awt.BorderLayout;
import java.awt.HeadlessException;
import java.awt.event.ActionEvent;
import java.awt.event.KeyEvent;
import java.awt.event.WindowAdapter;
import java.awt.event.WindowEvent;
import java.util.function.Consumer;
import javax.swing.AbstractAction;
import javax.swing.JButton;
import javax.swing.JComponent;
import javax.swing.JFrame;
import javax.swing.JScrollPane;
import javax.swing.JToolBar;
import javax.swing.KeyStroke;
import javax.swing.SwingUtilities;
import javax.swing.WindowConstants;

/**
 * The editor's window. {@link #update} may be called from any thread; it never waits. Everything
 * else happens on the event thread, which asks the state for what there is to show, so that the
 * last state wins.
 */
public final class TreeWindow {
  private static final int SCROLL_STEP = 24;

  private final EditorState state;
  private JFrame frame;
  private TreeCanvas canvas;
  private JButton overview;
  private EditorView shown;

  public TreeWindow(EditorState state) {
    this.state = state;
  }

  /** Brings the window to what the state is, soon. */
  public void update() {
    if (state.view().bounds() == null || !Screen.isAvailable()) {
      return;
    }
    try {
      SwingUtilities.invokeLater(this::show);
    } catch (HeadlessException | AWTError e) {
      // The display is gone; the state goes on without a window.
      return;
    }
  }

  private void show() {
    EditorView view = state.view();
    if (view.closed()) {
      dispose();
      return;
    }
    if (frame == null) {
      build();
    }
    frame.setName("tree-editor-" + view.threadId());
    if (shown == null || !view.bounds().equals(shown.bounds())) {
      frame.setBounds(view.bounds());
    }
    overview.setVisible(view.inEnsemble());
    canvas.show(view.picture(), view.scale());
    canvas.getParent().setBackground(view.picture().background());
    if (frame.isVisible() != view.visible()) {
      frame.setVisible(view.visible());
    }
    shown = view;
  }

  private void dispose() {
    if (frame != null) {
      frame.dispose();
    }
    frame = null;
    canvas = null;
    shown = null;
  }

  private void build() {
    canvas = new TreeCanvas((x, y) -> change(() -> state.click(x, y)));
    overview = button("Overview", "Back to all trees", () -> change(state::showOverview));
    JToolBar bar = new JToolBar();
    bar.setFloatable(false);
    bar.add(overview);
    bar.add(button("\u2212", "Smaller", canvas::zoomOut));
    bar.add(button("100 %", "Normal size", canvas::zoomNormal));
    bar.add(button("+", "Larger", canvas::zoomIn));
    bar.add(button("Fit", "Show everything", canvas::zoomToFit));
    bar.add(button("Turn", "Top-down or left to right", () -> change(state::turn)));
    JScrollPane scroll = new JScrollPane(canvas);
    scroll.getVerticalScrollBar().setUnitIncrement(SCROLL_STEP);
    scroll.getHorizontalScrollBar().setUnitIncrement(SCROLL_STEP);
    frame = new JFrame("Tree");
    frame.setDefaultCloseOperation(WindowConstants.DO_NOTHING_ON_CLOSE);
    frame.addWindowListener(new WindowAdapter() {
      @Override
      public void windowClosing(WindowEvent event) {
        change(state::close);
      }
    });
    frame.getContentPane().add(bar, BorderLayout.NORTH);
    frame.getContentPane().add(scroll, BorderLayout.CENTER);
    bind(KeyEvent.VK_PLUS, canvas::zoomIn);
    bind(KeyEvent.VK_EQUALS, canvas::zoomIn);
    bind(KeyEvent.VK_MINUS, canvas::zoomOut);
    bind(KeyEvent.VK_0, canvas::zoomNormal);
    bind(KeyEvent.VK_F, canvas::zoomToFit);
    bind(KeyEvent.VK_BACK_SPACE, () -> change(state::showOverview));
  }

  private void change(Runnable change) {
    change.run();
    show();
  }

  private static JButton button(String text, String tooltip, Runnable action) {
    JButton button = new JButton(text);
    button.setToolTipText(tooltip);
    button.setFocusable(false);
    button.addActionListener(event -> action.run());
    return button;
  }

  private void bind(int key, Runnable action) {
    Consumer<ActionEvent> run = event -> action.run();
    String name = "tree-" + key;
    canvas.getInputMap(JComponent.WHEN_IN_FOCUSED_WINDOW).put(KeyStroke.getKeyStroke(key, 0), name);
    canvas.getActionMap().put(name, new KeyAction(run));
  }

  /** An action of a key. */
  private static final class KeyAction extends AbstractAction {
    private static final long serialVersionUID = 1L;
    private final transient Consumer<ActionEvent> run;

    KeyAction(Consumer<ActionEvent> run) {
      this.run = run;
    }

    @Override
    public void actionPerformed(ActionEvent event) {
      run.accept(event);
    }
  }
}
