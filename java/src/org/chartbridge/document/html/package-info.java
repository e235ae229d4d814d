// SPDX-License-Identifier: Apache-2.0
/** Output documents as HTML. */
package org.chartbridge.document.html;
