// SPDX-License-Identifier: Apache-2.0
/** Reads images that somebody else made, which can be damaged, huge or hostile. */
package org.chartbridge.image.input;
