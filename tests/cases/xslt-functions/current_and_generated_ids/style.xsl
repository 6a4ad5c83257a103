<xsl:stylesheet version="1.0" xmlns:xsl="http://www.w3.org/1999/XSL/Transform">
<xsl:output method="text"/>
<xsl:template match="/"><xsl:for-each select="r/a"><xsl:value-of select="../b[@n = current()/@k]/@n"/></xsl:for-each>|<xsl:value-of select="generate-id(r/a[1]) = generate-id(r/*[1])"/><xsl:value-of select="generate-id(r/a[1]) = generate-id(r/a[2])"/>|<xsl:value-of select="generate-id(r/nothing)"/>|<xsl:value-of select="string-length(generate-id())"/></xsl:template>
</xsl:stylesheet>
