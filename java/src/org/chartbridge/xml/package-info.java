// SPDX-License-Identifier: Apache-2.0
/**
 * Safe XML: documents from anywhere are read into small trees that know where each element stands,
 * with no document type declarations, external entities or inclusions, and with bounds on size and
 * depth.
 */
package org.chartbridge.xml;
