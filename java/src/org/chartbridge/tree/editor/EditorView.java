// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.tree.editor;

import java.awt.Rectangle;
import org.chartbridge.tree.draw.TreePicture;

/**
 * What the editor's window has to show at one moment.
 *
 * @param visible whether there is a window to be seen
 * @param closed whether the window is gone for good, until something is rendered again
 * @param bounds location and extent of the window; null before the first rendering
 * @param picture the picture; null before the first rendering
 * @param scale pixels of the screen for one of the picture
 * @param threadId the number by which the host knows the thread that the editor belongs to
 * @param inEnsemble whether the picture is of one tree of an ensemble
 */
record EditorView(boolean visible, boolean closed, Rectangle bounds, TreePicture picture,
    double scale, int threadId, boolean inEnsemble) {}
