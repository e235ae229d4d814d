// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.bench;

import java.io.ByteArrayInputStream;
import java.io.IOException;
import java.nio.file.Files;
import java.nio.file.Path;
import javax.xml.parsers.ParserConfigurationException;
import javax.xml.parsers.SAXParser;
import javax.xml.parsers.SAXParserFactory;
import org.xml.sax.SAXException;
import org.xml.sax.helpers.DefaultHandler;

/**
 * The least that an export of a document can do: have the JDK's parser go through it, and write a
 * file of the same bytes.
 */
public final class DocumentFloor {
  private static final SAXParserFactory PARSERS = SAXParserFactory.newDefaultInstance();

  private static byte[] document;
  private static byte[] exported;

  private DocumentFloor() {}

  public static void prepare(byte[] xml, String exportedFile) throws IOException {
    document = xml.clone();
    exported = Files.readAllBytes(Path.of(exportedFile));
  }

  public static void write(String file)
      throws IOException, ParserConfigurationException, SAXException {
    SAXParser parser = PARSERS.newSAXParser();
    parser.parse(new ByteArrayInputStream(document), new DefaultHandler());
    Files.write(Path.of(file), exported);
  }
}
