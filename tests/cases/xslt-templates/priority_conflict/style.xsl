<xsl:stylesheet version="1.0" xmlns:xsl="http://www.w3.org/1999/XSL/Transform">
<xsl:output method="text"/>
<xsl:template match="/">
<xsl:apply-templates select="r/a"/></xsl:template>
<xsl:template match="a">first</xsl:template>
<xsl:template match="a">second</xsl:template>
</xsl:stylesheet>
