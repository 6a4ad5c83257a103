<xsl:stylesheet version="1.0" xmlns:xsl="http://www.w3.org/1999/XSL/Transform">
<xsl:output method="text"/>
<xsl:param name="p" select="'default'"/>
<xsl:param name="q" select="'default'"/>
<xsl:template match="/"><xsl:value-of select="concat($p, ',', $q)"/></xsl:template>
</xsl:stylesheet>
