// SPDX-License-Identifier: Apache-2.0
/** Client templates: charts in JSON with slots that a person fills in. */
package org.chartbridge.client;
