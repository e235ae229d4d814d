// SPDX-License-Identifier: Apache-2.0
/** The graph language, a small text language for charts. docs/graph-language.md describes it. */
package org.chartbridge.language;
