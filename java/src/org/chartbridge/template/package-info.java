// SPDX-License-Identifier: Apache-2.0
/**
 * Chart templates: finding them by name, checking them, and applying them to charts.
 * docs/chart-template.md describes them, docs/chart-template.xsd is their schema.
 */
package org.chartbridge.template;
