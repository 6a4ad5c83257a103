<xsl:stylesheet version="1.0" xmlns:xsl="http://www.w3.org/1999/XSL/Transform">
<xsl:output method="text"/>
<!-- The selection is counted before sorting; its predicate still sees the current node. -->
<xsl:template match="/">
<xsl:for-each select="items/item[generate-id() != generate-id(.)]"><xsl:sort select="@k"/><xsl:value-of select="@k"/></xsl:for-each>
<xsl:text>|</xsl:text>
<xsl:for-each select="items/item[generate-id() = generate-id(.)]"><xsl:sort select="@k"/><xsl:value-of select="@k"/></xsl:for-each>
</xsl:template>
</xsl:stylesheet>
