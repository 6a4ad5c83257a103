<xsl:stylesheet version="1.0" xmlns:xsl="http://www.w3.org/1999/XSL/Transform">
<xsl:output method="text"/>
<xsl:template match="/">
<xsl:for-each select="//p"><xsl:call-template name="n"/></xsl:for-each>|<xsl:for-each select="//p"><xsl:sort select="position()" data-type="number" order="descending"/><xsl:call-template name="n"/></xsl:for-each>|<xsl:for-each select="//p[position() mod 2 = 0] | //x"><xsl:call-template name="n"/></xsl:for-each>
</xsl:template>
<xsl:template name="n"><xsl:number/>.<xsl:number level="any"/>.<xsl:number level="multiple" count="s|p"/><xsl:text> </xsl:text></xsl:template>
</xsl:stylesheet>
