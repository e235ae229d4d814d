// SPDX-License-Identifier: Apache-2.0
/**
 * The interactive tree editor: its state, which needs no display, and the window that shows it
 * where there is one.
 */
package org.chartbridge.tree.editor;
