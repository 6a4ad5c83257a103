<?xml version="1.0"?>
<!-- Command-line parameters arrive as strings, taken as they stand. -->
<xsl:stylesheet version="1.0" xmlns:xsl="http://www.w3.org/1999/XSL/Transform">
  <xsl:output method="text"/>
  <xsl:param name="a"/>
  <xsl:param name="expr"/>
  <xsl:param name="empty" select="'default'"/>
  <xsl:param name="unset" select="'default'"/>
  <xsl:param name="quoted"/>
  <xsl:template match="/">
    <xsl:value-of select="concat('[', $a, '][', $expr, '][', $expr + 0, '][', $empty, '][', $unset, '][', $quoted, ']')"/>
  </xsl:template>
</xsl:stylesheet>
