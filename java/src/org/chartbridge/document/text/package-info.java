// SPDX-License-Identifier: Apache-2.0
/** Output documents as plain text, and their tables as CSV. */
package org.chartbridge.document.text;
