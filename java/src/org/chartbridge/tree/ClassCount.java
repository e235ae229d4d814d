// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.tree;

/** How many training records of a node have a value of the target. */
public record ClassCount(String value, double count) {}
