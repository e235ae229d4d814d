// SPDX-License-Identifier: Apache-2.0
/**
 * From something that draws to bytes: picture formats, image maps, and files that appear whole or
 * not at all.
 */
package org.chartbridge.image;
