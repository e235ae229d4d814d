// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.xml;

/** A comment, without its delimiters. */
public record XmlComment(String text) implements XmlNode {}
