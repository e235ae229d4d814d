// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.xml;

import static java.nio.charset.StandardCharsets.UTF_8;
import static org.junit.jupiter.api.Assertions.assertArrayEquals;
import static org.junit.jupiter.api.Assertions.assertEquals;

import org.junit.jupiter.api.Test;

class XmlWriterTest {
  @Test
  void writesOneCanonicalForm() {
    XmlElement root = new XmlElement("urn:n", "a").with("x", "1").with("none", null);
    root.with(new XmlElement("urn:n", "b").with("y", "<&>\"'\n\t\r"));
    root.with(new XmlComment(" why "))
        .with(new XmlElement("urn:n", "c").with(new XmlElement("urn:n", "d")));
    String expected =
        """
        <?xml version="1.0" encoding="UTF-8"?>
        <a xmlns="urn:n" x="1">
          <b y="&lt;&amp;&gt;&quot;'&#10;&#9;&#13;"/>
          <!-- why -->
          <c>
            <d/>
          </c>
        </a>
        """;
    assertEquals(expected, new String(XmlWriter.write(root), UTF_8));
  }

  @Test
  void whatItWritesIsReadBackTheSame() {
    String value = "<&>\"'\n\t\r \uD83D\uDE00 é ]]>";
    byte[] once =
        XmlWriter.write(new XmlElement("", "a").with("x", value).with(new XmlElement("", "b")));
    XmlElement read = SafeXml.parse(once);
    assertEquals(value, read.attribute("x"));
    assertArrayEquals(once, XmlWriter.write(read));
  }

  @Test
  void keepsTextOfAnElementThatHoldsNothingElse() {
    XmlElement root =
        new XmlElement("", "a").with(new XmlText("  ")).with(new XmlText("\n\tt<u&\"]]>\r\n "));
    byte[] xml = XmlWriter.write(root);
    assertEquals("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
            + "<a>  \n\tt&lt;u&amp;\"]]&gt;&#13;\n </a>\n",
        new String(xml, UTF_8));
    assertEquals("  \n\tt<u&\"]]>\r\n ", SafeXml.parse(xml).text());
  }

  @Test
  void putsTextBesideElementsIntoALineOfItsOwn() {
    XmlElement root = new XmlElement("", "a").with(new XmlText("  ")).with(new XmlText(" t<u "));
    assertEquals("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<a>\n  t&lt;u\n  <b/>\n</a>\n",
        new String(XmlWriter.write(root.with(new XmlElement("", "b"))), UTF_8));
  }
}
