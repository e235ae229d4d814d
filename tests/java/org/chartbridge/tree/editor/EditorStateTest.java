// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.tree.editor;

import static org.junit.jupiter.api.Assertions.assertArrayEquals;
import static org.junit.jupiter.api.Assertions.assertEquals;
import static org.junit.jupiter.api.Assertions.assertFalse;
import static org.junit.jupiter.api.Assertions.assertTrue;

import java.awt.Rectangle;
import java.awt.geom.Rectangle2D;
import java.nio.charset.StandardCharsets;
import org.chartbridge.tree.Models;
import org.chartbridge.tree.draw.TreeReader;
import org.junit.jupiter.api.Test;

class EditorStateTest {
  private static final byte[] NONE = new byte[0];
  private static final Rectangle BOUNDS = new Rectangle(1, 2, 300, 200);

  private final EditorState state = new EditorState(new TreeReader());

  private void click(int mark) {
    Rectangle2D area = state.view().picture().marks().get(mark).area().getBounds2D();
    state.click(area.getCenterX(), area.getCenterY());
  }

  private int nodes() {
    return state.view().picture().marks().size();
  }

  private String display() {
    return new String(state.displayData(), StandardCharsets.UTF_8);
  }

  @Test
  void aClickCollapsesAndOpensAndTheDisplayDataTellIt() {
    byte[] air = Models.example("airquality");
    state.render(BOUNDS, air, NONE);
    assertEquals(13, nodes());
    click(1);
    assertEquals(7, nodes());
    assertTrue(state.needsRerendering());
    assertTrue(display().contains("<collapsed tree=\"1\" path=\"1.1\"/>"), display());
    byte[] saved = state.displayData();
    click(1);
    assertEquals(13, nodes());
    assertFalse(display().contains("collapsed"), display());
    EditorState other = new EditorState(new TreeReader());
    other.render(BOUNDS, air, saved);
    assertEquals(7, other.view().picture().marks().size());
    assertArrayEquals(saved, other.displayData());
    state.click(0.5, 0.5);
    assertEquals(13, nodes());
  }

  @Test
  void theSameDocumentsKeepWhatTheUserDidUntilARerenderingIsDue() {
    byte[] air = Models.example("airquality");
    state.render(BOUNDS, air, NONE);
    click(1);
    state.setNeedsRerendering(false);
    state.render(new Rectangle(5, 6, 70, 80), air.clone(), null);
    assertEquals(7, nodes());
    assertEquals(new Rectangle(5, 6, 70, 80), state.view().bounds());
    state.setNeedsRerendering(true);
    state.render(BOUNDS, air, NONE);
    assertEquals(13, nodes());
    click(1);
    state.setNeedsRerendering(false);
    state.render(BOUNDS, Models.example("iris"), NONE);
    assertEquals(5, nodes());
  }

  @Test
  void aCardOfAnEnsembleOpensItsTreeAndTheOverviewComesBack() {
    state.render(BOUNDS, Models.example("titanic-forest"), NONE);
    assertEquals(9, nodes());
    assertFalse(state.view().inEnsemble());
    click(2);
    assertEquals(11, nodes());
    assertTrue(state.view().inEnsemble());
    assertTrue(display().contains(" tree=\"3\""), display());
    click(0);
    assertTrue(display().contains("<collapsed tree=\"3\" path=\"1\"/>"), display());
    state.showOverview();
    assertEquals(9, nodes());
    assertTrue(display().contains("<collapsed tree=\"3\" path=\"1\"/>"), display());
    state.turn();
    assertTrue(display().contains("left-to-right"), display());
  }

  @Test
  void hidingAndClosingAreSeenInTheView() {
    state.render(BOUNDS, Models.example("iris"), NONE);
    assertTrue(state.view().visible());
    state.hide();
    assertFalse(state.view().visible());
    assertFalse(state.view().closed());
    state.close();
    assertTrue(state.view().closed());
    state.render(BOUNDS, Models.example("iris"), NONE);
    assertTrue(state.view().visible());
    assertFalse(state.view().closed());
    state.setThreadId(42);
    assertEquals(42, state.view().threadId());
  }

  @Test
  void aDisplayThatDoesNotAnswerIsNone() {
    assertFalse(Screen.answers(null));
    assertFalse(Screen.answers(""));
    assertFalse(Screen.answers("nonsense"));
    assertFalse(Screen.answers(":59"));
    assertFalse(Screen.answers("localhost:59.0"));
    assertFalse(Screen.answers(":99999"));
  }
}
