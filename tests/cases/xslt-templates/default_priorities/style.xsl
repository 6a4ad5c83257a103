<xsl:stylesheet version="1.0" xmlns:xsl="http://www.w3.org/1999/XSL/Transform" xmlns:p="urn:p">
<xsl:output method="text"/>
<xsl:template match="/"><xsl:apply-templates select="r/a/@*"/>|<xsl:apply-templates select="r/a/@x"/>|<xsl:apply-templates select="r/p:b"/>|<xsl:apply-templates select="r/c/text()"/>|<xsl:apply-templates select="r/processing-instruction()"/>|<xsl:apply-templates select="r/d"/>|<xsl:apply-templates select="r/e"/></xsl:template>
<xsl:template match="@x">AX</xsl:template>
<xsl:template match="@*" priority="-0.6">S</xsl:template>
<xsl:template match="p:*">PSTAR</xsl:template>
<xsl:template match="p:b" priority="-0.25">PB</xsl:template>
<xsl:template match="text()">T1</xsl:template>
<xsl:template match="node()" priority="-0.51">T2</xsl:template>
<xsl:template match="processing-instruction('x')" priority="0">PIX</xsl:template>
<xsl:template match="processing-instruction('x')">PIX2</xsl:template>
<xsl:template match="d | r/d">D1</xsl:template>
<xsl:template match="d" priority="0.5">D2</xsl:template>
<xsl:template match="e | r/e" priority="0.1">E1</xsl:template>
<xsl:template match="e" priority="0.1">E2</xsl:template>
</xsl:stylesheet>
