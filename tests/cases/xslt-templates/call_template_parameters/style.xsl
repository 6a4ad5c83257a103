<xsl:stylesheet version="1.0" xmlns:xsl="http://www.w3.org/1999/XSL/Transform">
<xsl:output method="text"/>
<xsl:template match="/"><xsl:call-template name="t"><xsl:with-param name="a" select="1"/><xsl:with-param name="unknown" select="2"/></xsl:call-template></xsl:template>
<xsl:template name="t"><xsl:param name="a"/><xsl:param name="b">default</xsl:param><xsl:value-of select="$a"/>,<xsl:value-of select="$b"/></xsl:template>
</xsl:stylesheet>
