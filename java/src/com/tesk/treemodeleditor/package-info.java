// SPDX-License-Identifier: Apache-2.0
/**
 * The Java side of the native tree editor: one class renders without a screen, the other one in a
 * window.
 */
package com.tesk.treemodeleditor;
