<xsl:stylesheet version="1.0" xmlns:xsl="http://www.w3.org/1999/XSL/Transform">
<xsl:output method="text"/>
<xsl:strip-space elements="*"/>
<xsl:template match="/"><xsl:apply-templates select="//p"/>
<xsl:text>&#10;</xsl:text><xsl:for-each select="//sec"><xsl:number level="multiple" format="1.1 "/></xsl:for-each>
<xsl:text>&#10;</xsl:text><xsl:for-each select="//sec"><xsl:number level="multiple" count="ch|sec" format="1.a "/></xsl:for-each>
<xsl:text>&#10;</xsl:text><xsl:for-each select="//sec"><xsl:number count="ch" format="[1]"/></xsl:for-each>
<xsl:text>&#10;</xsl:text><xsl:for-each select="//h"><xsl:number count="sec" format="&lt;1&gt;"/></xsl:for-each>
</xsl:template>
<xsl:template match="p"><xsl:number/>:<xsl:number level="any"/>:<xsl:number level="any" count="p|note"/>:<xsl:number level="single" count="sec" from="ch"/><xsl:text> </xsl:text></xsl:template>
</xsl:stylesheet>
