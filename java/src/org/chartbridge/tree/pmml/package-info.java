// SPDX-License-Identifier: Apache-2.0
/**
 * Reads PMML 4.0 to 4.4 (http://dmg.org/pmml/), as far as it is about trees: {@code TreeModel},
 * and {@code MiningModel} and {@code AnomalyDetectionModel} with trees in them.
 */
package org.chartbridge.tree.pmml;
