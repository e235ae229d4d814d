// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.tree;

/**
 * A model in a document: a tree, an ensemble of models, or another model that belongs to an
 * ensemble.
 */
public sealed interface ModelPart permits TreeModel, Ensemble, OtherModel {}
