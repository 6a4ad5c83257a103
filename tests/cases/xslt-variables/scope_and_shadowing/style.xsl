<xsl:stylesheet version="1.0" xmlns:xsl="http://www.w3.org/1999/XSL/Transform">
<xsl:output method="text"/>
<xsl:variable name="g" select="'global'"/>
<xsl:template match="/"><xsl:value-of select="$g"/>:<xsl:variable name="g" select="'local'"/><xsl:value-of select="$g"/>:<xsl:for-each select="r"><xsl:variable name="in" select="1"/></xsl:for-each><xsl:value-of select="count(r)"/></xsl:template>
</xsl:stylesheet>
