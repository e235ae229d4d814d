// SPDX-License-Identifier: Apache-2.0
/**
 * Output documents as bytes: XML, compressed or not, with the files that it refers to while it is
 * being built.
 */
package org.chartbridge.document.format;
