// SPDX-License-Identifier: Apache-2.0
/** Pictures of trees and ensembles, and the display data that say what they show. */
package org.chartbridge.tree.draw;
