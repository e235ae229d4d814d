// SPDX-License-Identifier: Apache-2.0
/** Where the nodes of a tree go. */
package org.chartbridge.tree.layout;
