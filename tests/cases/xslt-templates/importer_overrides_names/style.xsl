<xsl:stylesheet version="1.0" xmlns:xsl="http://www.w3.org/1999/XSL/Transform">
<xsl:import href="imported.xsl"/>
<xsl:output method="text"/>
<xsl:variable name="v" select="'main'"/>
<xsl:template name="t">main</xsl:template>
<xsl:template match="/"><xsl:call-template name="t"/>,<xsl:value-of select="$v"/>,<xsl:apply-templates select="r/a"/></xsl:template>
</xsl:stylesheet>
