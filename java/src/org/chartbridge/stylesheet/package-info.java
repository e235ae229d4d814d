// SPDX-License-Identifier: Apache-2.0
/** Applies XSLT 1.0 style sheets to charts and other documents. */
package org.chartbridge.stylesheet;
