<?xml version="1.0" encoding="UTF-8"?>
<!-- Shared rules: one line per train, and the line of a cancelled service. -->
<xsl:stylesheet version="1.0" xmlns:xsl="http://www.w3.org/1999/XSL/Transform">
  <xsl:template match="train">
    <xsl:value-of select="concat(@departs, '  ', @number, '  to ', @to, '  platform ', @platform)"/>
    <xsl:text>&#10;</xsl:text>
  </xsl:template>

  <xsl:template match="train[@cancelled = 'yes']">
    <xsl:value-of select="concat(@departs, '  ', @number, '  to ', @to, '  CANCELLED')"/>
    <xsl:text>&#10;</xsl:text>
  </xsl:template>
</xsl:stylesheet>
