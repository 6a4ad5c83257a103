<xsl:stylesheet version="1.0" xmlns:xsl="http://www.w3.org/1999/XSL/Transform">
<xsl:output method="text"/>
<xsl:template match="/"><xsl:call-template name="down"><xsl:with-param name="n" select="10000"/></xsl:call-template></xsl:template>
<xsl:template name="down"><xsl:param name="n"/><xsl:choose><xsl:when test="$n = 0">bottom</xsl:when><xsl:otherwise><xsl:call-template name="down"><xsl:with-param name="n" select="$n - 1"/></xsl:call-template></xsl:otherwise></xsl:choose></xsl:template>
</xsl:stylesheet>
