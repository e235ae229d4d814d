// SPDX-License-Identifier: Apache-2.0
/** Output documents as they are in memory, whatever they were read from and are written to. */
package org.chartbridge.document.model;
