<xsl:stylesheet version="1.0" xmlns:xsl="http://www.w3.org/1999/XSL/Transform">
<xsl:template match="/"><xsl:for-each select="*"><xsl:value-of select="."/>
<xsl:sort/></xsl:for-each></xsl:template>
</xsl:stylesheet>
