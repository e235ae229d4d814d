// SPDX-License-Identifier: Apache-2.0
/** Draws the charts and tree models of documents, by the classes that draw them everywhere. */
package org.chartbridge.document.figure;
