<?xml version="1.0" encoding="UTF-8"?>
<!-- SPDX-License-Identifier: Apache-2.0 -->
<!-- The same chart in the dark style, twice as wide as high, for slides. -->
<xsl:stylesheet version="1.0" xmlns:xsl="http://www.w3.org/1999/XSL/Transform"
    xmlns:c="urn:chartbridge:chart:2">
  <xsl:output indent="yes"/>

  <xsl:template match="@*|node()">
    <xsl:copy><xsl:apply-templates select="@*|node()"/></xsl:copy>
  </xsl:template>

  <xsl:template match="c:chart">
    <xsl:copy>
      <xsl:copy-of select="@*"/>
      <xsl:attribute name="style">dark</xsl:attribute>
      <xsl:attribute name="width">1000</xsl:attribute>
      <xsl:attribute name="height">500</xsl:attribute>
      <xsl:apply-templates/>
    </xsl:copy>
  </xsl:template>

  <!-- Colours that were chosen for white ground. -->
  <xsl:template match="c:palette|@fill"/>
</xsl:stylesheet>
