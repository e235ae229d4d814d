// SPDX-License-Identifier: Apache-2.0
/** Exports of output documents: what a request asks for, and who writes it. */
package org.chartbridge.document.export;
