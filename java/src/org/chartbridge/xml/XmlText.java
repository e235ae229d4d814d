// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.xml;

/** Character data, with references resolved. */
public record XmlText(String text) implements XmlNode {}
