// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.tree;

/**
 * A model that is no tree, such as the regression that turns the sums of a boosted ensemble into
 * probabilities.
 *
 * @param element the name of its PMML element
 */
public record OtherModel(String element) implements ModelPart {}
