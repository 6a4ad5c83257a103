<xsl:stylesheet version="1.0" xmlns:xsl="http://www.w3.org/1999/XSL/Transform">
<xsl:output method="text"/>
<xsl:template match="/">
<xsl:for-each select="r/i"><xsl:sort/><xsl:value-of select="."/>,</xsl:for-each>
|<xsl:for-each select="r/i"><xsl:sort case-order="upper-first" lang="de"/><xsl:value-of select="."/>,</xsl:for-each>
|<xsl:for-each select="r/i"><xsl:sort case-order="lower-first"/><xsl:value-of select="."/>,</xsl:for-each>
|<xsl:for-each select="r/i"><xsl:sort order="descending"/><xsl:value-of select="."/>,</xsl:for-each>
|<xsl:for-each select="r/n"><xsl:sort data-type="number"/><xsl:value-of select="."/>,</xsl:for-each>
|<xsl:for-each select="r/n"><xsl:sort data-type="number" order="descending"/><xsl:value-of select="."/>,</xsl:for-each>
</xsl:template>
</xsl:stylesheet>
