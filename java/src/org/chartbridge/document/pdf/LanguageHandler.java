// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.document.pdf;

import java.util.Locale;
import org.apache.fop.accessibility.StructureTreeElement;
import org.apache.fop.accessibility.StructureTreeEventHandler;
import org.apache.fop.apps.FOUserAgent;
import org.apache.fop.render.intermediate.IFContext;
import org.apache.fop.render.pdf.PDFDocumentHandler;
import org.xml.sax.Attributes;
import org.xml.sax.helpers.AttributesImpl;

/**
 * Writes PDF as usual, but tells readers that read aloud no language of a text where it stands for
 * any language: that only makes the formatter find the shapes of joined letters.
 */
final class LanguageHandler extends PDFDocumentHandler {
  private static final String ANY = "*";

  private StructureTreeEventHandler structure;

  LanguageHandler(FOUserAgent agent) {
    super(new IFContext(agent));
  }

  @Override
  public StructureTreeEventHandler getStructureTreeEventHandler() {
    if (structure == null) {
      structure = new Structure(super.getStructureTreeEventHandler());
    }
    return structure;
  }

  private record Structure(StructureTreeEventHandler out) implements StructureTreeEventHandler {
    @Override
    public void startPageSequence(Locale language, String role) {
      out.startPageSequence(language, role);
    }

    @Override
    public void endPageSequence() {
      out.endPageSequence();
    }

    @Override
    public StructureTreeElement startNode(
        String name, Attributes attributes, StructureTreeElement parent) {
      return out.startNode(name, known(attributes), parent);
    }

    @Override
    public void endNode(String name) {
      out.endNode(name);
    }

    @Override
    public StructureTreeElement startImageNode(
        String name, Attributes attributes, StructureTreeElement parent) {
      return out.startImageNode(name, known(attributes), parent);
    }

    @Override
    public StructureTreeElement startReferencedNode(
        String name, Attributes attributes, StructureTreeElement parent) {
      return out.startReferencedNode(name, known(attributes), parent);
    }

    private static Attributes known(Attributes attributes) {
      for (int i = 0; i < attributes.getLength(); i++) {
        if (attributes.getValue(i).equals(ANY) && attributes.getQName(i).endsWith("lang")) {
          AttributesImpl others = new AttributesImpl(attributes);
          others.removeAttribute(i);
          return others;
        }
      }
      return attributes;
    }
  }
}
