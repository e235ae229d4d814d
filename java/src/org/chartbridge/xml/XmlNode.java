// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.xml;

/** What an element can hold. Processing instructions are not kept. */
public sealed interface XmlNode permits XmlElement, XmlText, XmlComment {}
