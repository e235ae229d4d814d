// SPDX-License-Identifier: Apache-2.0
/** Output documents as OpenDocument text (ISO/IEC 26300), version 1.3. */
package org.chartbridge.document.odt;
