// SPDX-License-Identifier: Apache-2.0
/**
 * The chart description as XML: reading, writing, upgrading older versions, and telling it from the
 * graph language. docs/chart-format.md describes it, docs/chart-format.xsd is its schema.
 */
package org.chartbridge.format;
