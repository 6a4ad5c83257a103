<xsl:stylesheet version="1.0" xmlns:xsl="http://www.w3.org/1999/XSL/Transform">
<xsl:output method="text"/>
<xsl:template match="/"><xsl:call-template name="outer"><xsl:with-param name="b" select="'passed'"/></xsl:call-template></xsl:template>
<xsl:template name="outer"><xsl:param name="a"><xsl:call-template name="inner"><xsl:with-param name="x" select="'X'"/></xsl:call-template></xsl:param><xsl:param name="b" select="'default'"/><xsl:value-of select="concat($a, ',', $b)"/></xsl:template>
<xsl:template name="inner"><xsl:param name="x"/>inner<xsl:value-of select="$x"/></xsl:template>
</xsl:stylesheet>
