<xsl:stylesheet version="1.0" xmlns:xsl="http://www.w3.org/1999/XSL/Transform">
<xsl:output method="text"/>
<xsl:template match="/"><xsl:for-each select="r/n"><xsl:if test="position() != 1">,</xsl:if><xsl:choose><xsl:when test=". = 2">two</xsl:when><xsl:when test=". = 2">never</xsl:when><xsl:otherwise><xsl:value-of select="."/></xsl:otherwise></xsl:choose></xsl:for-each></xsl:template>
</xsl:stylesheet>
