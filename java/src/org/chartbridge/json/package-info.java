// SPDX-License-Identifier: Apache-2.0
/** Safe JSON: documents from anywhere are read with a bound on what they can cost. */
package org.chartbridge.json;
