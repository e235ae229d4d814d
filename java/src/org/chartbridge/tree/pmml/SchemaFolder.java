// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.tree.pmml;

import java.io.ByteArrayInputStream;
import java.io.IOException;
import java.nio.file.Files;
import java.nio.file.InvalidPathException;
import java.nio.file.Path;
import java.nio.file.attribute.FileTime;
import java.util.HashMap;
import java.util.Locale;
import java.util.Map;
import javax.xml.XMLConstants;
import javax.xml.transform.stream.StreamSource;
import javax.xml.validation.Schema;
import javax.xml.validation.SchemaFactory;
import javax.xml.validation.Validator;
import org.chartbridge.tree.TreeException;
import org.chartbridge.xml.SafeXml;
import org.xml.sax.SAXException;
import org.xml.sax.SAXParseException;

/**
 * A folder of XML schemas. A document whose schema is in it must be valid; other documents are not
 * checked. Compiled schemas are kept until their file changes. Thread-safe.
 */
public final class SchemaFolder {
  /** The validator's messages become part of ours, which are English. */
  private static final String LOCALE = "http://apache.org/xml/properties/locale";

  private record Compiled(FileTime changed, long size, Schema schema) {}

  private final Path folder;
  private final Map<String, Compiled> compiled = new HashMap<>();

  /**
   * @param path the folder; null or empty for none, so that nothing is checked
   * @throws TreeException when there is no such folder
   */
  public SchemaFolder(String path) {
    if (path == null || path.isEmpty()) {
      folder = null;
      return;
    }
    try {
      folder = Path.of(path);
    } catch (InvalidPathException e) {
      throw new TreeException("The schema path is invalid: " + e.getReason() + ".", e);
    }
    if (!Files.isDirectory(folder)) {
      throw new TreeException("The schema path \"" + path + "\" is no folder.");
    }
  }

  /** The file name of the schema for a PMML version, for example {@code pmml-4-4.xsd}. */
  public static String pmmlSchema(String version) {
    String[] parts = version.split("\\.");
    String minor = parts.length > 1 ? parts[1] : "0";
    return "pmml-" + parts[0] + "-" + minor + ".xsd";
  }

  /**
   * Checks a document.
   *
   * @param file the name of the schema's file
   * @param what the document, as a message begins
   * @throws TreeException when the document is not valid, or the schema itself cannot be used
   */
  public void check(String file, byte[] document, String what) {
    Schema schema = schema(file);
    if (schema == null) {
      return;
    }
    try {
      Validator validator = schema.newValidator();
      SafeXml.setLimits(validator::setProperty);
      validator.setProperty(LOCALE, Locale.ROOT);
      validator.setProperty(XMLConstants.ACCESS_EXTERNAL_DTD, "");
      validator.setProperty(XMLConstants.ACCESS_EXTERNAL_SCHEMA, "");
      validator.validate(new StreamSource(new ByteArrayInputStream(document)));
    } catch (SAXParseException e) {
      throw new TreeException(what + ", line " + e.getLineNumber() + ", column "
          + e.getColumnNumber() + ": not valid by " + file + ": " + e.getMessage(), e);
    } catch (SAXException | IOException e) {
      throw new TreeException(what + ": not checked by " + file + ": " + e.getMessage(), e);
    }
  }

  private synchronized Schema schema(String file) {
    if (folder == null) {
      return null;
    }
    Path path = folder.resolve(file);
    if (!Files.isRegularFile(path)) {
      return null;
    }
    try {
      FileTime changed = Files.getLastModifiedTime(path);
      long size = Files.size(path);
      Compiled known = compiled.get(file);
      if (known == null || !known.changed().equals(changed) || known.size() != size) {
        known = new Compiled(changed, size, compile(path));
        compiled.put(file, known);
      }
      return known.schema();
    } catch (SAXException | IOException e) {
      throw new TreeException("The schema \"" + path + "\" cannot be used: " + e.getMessage(), e);
    }
  }

  private static Schema compile(Path path) throws SAXException, IOException {
    SchemaDepth.check(path);
    SchemaFactory factory = SchemaFactory.newDefaultInstance();
    factory.setFeature(XMLConstants.FEATURE_SECURE_PROCESSING, true);
    SafeXml.setLimits(factory::setProperty);
    factory.setProperty(XMLConstants.ACCESS_EXTERNAL_DTD, "");
    factory.setProperty(XMLConstants.ACCESS_EXTERNAL_SCHEMA, "file");
    return factory.newSchema(path.toFile());
  }
}
