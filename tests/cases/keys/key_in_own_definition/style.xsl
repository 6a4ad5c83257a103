<xsl:stylesheet version="1.0" xmlns:xsl="http://www.w3.org/1999/XSL/Transform">
<xsl:output method="text"/>
<xsl:key name="loop" match="a" use="concat(., count(key('loop', 'x1')))"/>
<xsl:template match="/"><xsl:value-of select="count(key('loop', 'x0'))"/>,<xsl:value-of select="count(key('loop', 'y0'))"/></xsl:template>
</xsl:stylesheet>
