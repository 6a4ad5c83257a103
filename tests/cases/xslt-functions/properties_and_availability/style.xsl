<xsl:stylesheet version="1.0" xmlns:xsl="http://www.w3.org/1999/XSL/Transform">
<xsl:output method="text"/>
<xsl:template match="/"><xsl:value-of select="system-property('xsl:version')"/>|<xsl:value-of select="system-property('xsl:vendor')"/>|<xsl:value-of select="system-property('version')"/>|<xsl:value-of select="element-available('xsl:copy-of')"/><xsl:value-of select="element-available('xsl:sort')"/>|<xsl:value-of select="function-available('concat')"/><xsl:value-of select="function-available('generate-id')"/><xsl:value-of select="function-available('nothing')"/></xsl:template>
</xsl:stylesheet>
