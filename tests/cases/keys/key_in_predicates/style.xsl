<xsl:stylesheet version="1.0" xmlns:xsl="http://www.w3.org/1999/XSL/Transform">
<xsl:output method="text"/>
<xsl:key name="kind" match="i" use="@kind"/>
<xsl:template match="/"><xsl:apply-templates select="list/i"/>|<xsl:for-each select="list/i"><xsl:number count="i[key('kind', 'a')]"/></xsl:for-each></xsl:template>
<xsl:template match="i[count(key('kind', @kind)) = 2]">A<xsl:value-of select="."/></xsl:template>
<xsl:template match="i">-<xsl:value-of select="."/></xsl:template>
</xsl:stylesheet>
