// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.format;

import org.chartbridge.xml.XmlElement;

/** Turns a tree of version 1 into one of the current version. */
final class VersionOne {
  private VersionOne() {}

  static XmlElement upgrade(XmlElement root) {
    throw root.error("not readable");
  }
}
