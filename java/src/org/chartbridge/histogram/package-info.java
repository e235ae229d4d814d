// SPDX-License-Identifier: Apache-2.0
/** Puts histograms that were counted elsewhere into charts. */
package org.chartbridge.histogram;
