<xsl:stylesheet version="1.0" xmlns:xsl="http://www.w3.org/1999/XSL/Transform">
<xsl:output method="text"/>
<xsl:template match="/"><xsl:for-each select="r/n"><xsl:sort select="@v" data-type="number"/><xsl:sort select="." order="descending"/><xsl:value-of select="concat(@v, .)"/>,</xsl:for-each>|<xsl:apply-templates select="r/n"><xsl:sort select="." case-order="{'upper-first'}"/></xsl:apply-templates></xsl:template>
<xsl:template match="n"><xsl:value-of select="position()"/><xsl:value-of select="."/></xsl:template>
</xsl:stylesheet>
