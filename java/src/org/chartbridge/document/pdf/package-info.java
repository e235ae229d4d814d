// SPDX-License-Identifier: Apache-2.0
/**
 * Output documents as PDF: the document becomes formatting objects (XSL-FO), which are laid out on
 * pages with the fonts embedded and the figures drawn as vectors.
 */
package org.chartbridge.document.pdf;
