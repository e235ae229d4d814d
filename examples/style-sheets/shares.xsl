<?xml version="1.0" encoding="UTF-8"?>
<!-- SPDX-License-Identifier: Apache-2.0 -->
<!-- Compares parts rather than amounts: bars and areas show shares of 100 percent, lying down. -->
<xsl:stylesheet version="1.0" xmlns:xsl="http://www.w3.org/1999/XSL/Transform"
    xmlns:c="urn:chartbridge:chart:2">
  <xsl:output indent="yes"/>

  <xsl:template match="/">
    <xsl:if test="not(//c:bar/c:color)">
      <xsl:message terminate="yes">the chart has no bars with colours to compare</xsl:message>
    </xsl:if>
    <xsl:apply-templates/>
  </xsl:template>

  <xsl:template match="@*|node()">
    <xsl:copy><xsl:apply-templates select="@*|node()"/></xsl:copy>
  </xsl:template>

  <xsl:template match="c:titles/@subtitle">
    <xsl:attribute name="subtitle"><xsl:value-of select="."/>, as shares</xsl:attribute>
  </xsl:template>

  <xsl:template match="c:bar">
    <xsl:copy>
      <xsl:copy-of select="@*"/>
      <xsl:attribute name="arrangement">filled</xsl:attribute>
      <xsl:apply-templates/>
    </xsl:copy>
  </xsl:template>

  <!-- What was measured upwards is measured to the right. -->
  <xsl:template match="c:bar/c:x|c:axes/c:x">
    <c:y><xsl:copy-of select="@*"/></c:y>
  </xsl:template>
  <xsl:template match="c:bar/c:y|c:axes/c:y">
    <c:x><xsl:copy-of select="@*[not(name() = 'min' or name() = 'max')]"/></c:x>
  </xsl:template>
</xsl:stylesheet>
