<xsl:stylesheet version="1.0" xmlns:xsl="http://www.w3.org/1999/XSL/Transform">
<xsl:output method="text"/>
<xsl:template match="/"><xsl:for-each select="//fig"><xsl:number level="any" from="ch"/>,<xsl:number level="any" from="nothing"/>,<xsl:number level="any" from="s" count="fig|s"/><xsl:text> </xsl:text></xsl:for-each></xsl:template>
</xsl:stylesheet>
