<?xml version="1.0" encoding="UTF-8"?>
<!-- A departure board as text: imports the shared rules, adds a heading through a named
     template, sorts by time and marks the trains to one destination, given as a parameter. -->
<xsl:stylesheet version="1.0" xmlns:xsl="http://www.w3.org/1999/XSL/Transform">
  <xsl:import href="common.xsl"/>
  <xsl:output method="text" encoding="UTF-8"/>
  <xsl:param name="highlight" select="'Cambridge'"/>

  <xsl:template match="/timetable">
    <xsl:call-template name="heading">
      <xsl:with-param name="text" select="concat(@line, ', ', @day)"/>
    </xsl:call-template>
    <xsl:apply-templates select="train">
      <xsl:sort select="@departs"/>
    </xsl:apply-templates>
    <xsl:value-of select="concat(count(train[not(@cancelled)]), ' of ', count(train), ' trains running')"/>
    <xsl:text>&#10;</xsl:text>
  </xsl:template>

  <xsl:template match="train">
    <xsl:choose>
      <xsl:when test="@to = $highlight">* </xsl:when>
      <xsl:otherwise><xsl:text>  </xsl:text></xsl:otherwise>
    </xsl:choose>
    <xsl:apply-imports/>
  </xsl:template>

  <xsl:template name="heading">
    <xsl:param name="text"/>
    <xsl:value-of select="$text"/>
    <xsl:text>&#10;</xsl:text>
    <xsl:value-of select="translate($text, 'ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz ,', '========================================================')"/>
    <xsl:text>&#10;</xsl:text>
  </xsl:template>
</xsl:stylesheet>
