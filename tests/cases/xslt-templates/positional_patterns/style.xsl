<xsl:stylesheet version="1.0" xmlns:xsl="http://www.w3.org/1999/XSL/Transform">
<xsl:output method="text"/>
<xsl:template match="/"><xsl:for-each select="//a"><xsl:apply-templates select="."/>,</xsl:for-each>|<xsl:apply-templates select="//@*"/></xsl:template>
<xsl:template match="a[2]">SECOND</xsl:template>
<xsl:template match="a[@x][2]">X2</xsl:template>
<xsl:template match="a[last()]">LAST</xsl:template>
<xsl:template match="r//a[position()=1][@x]">C</xsl:template>
<xsl:template match="*">o</xsl:template>
<xsl:template match="@*[.=2]">A2</xsl:template>
<xsl:template match="r/a/@x">RAX</xsl:template>
<xsl:template match="node()" priority="-0.6"><xsl:value-of select="name()"/></xsl:template>
</xsl:stylesheet>
