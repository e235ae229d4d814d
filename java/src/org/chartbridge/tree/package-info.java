// SPDX-License-Identifier: Apache-2.0
/**
 * Tree models as PMML describes them: trees with their predicates and scores, the ensembles that
 * they belong to, and the way that a record takes through a tree.
 */
package org.chartbridge.tree;
