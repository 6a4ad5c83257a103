<xsl:stylesheet version="1.0" xmlns:xsl="http://www.w3.org/1999/XSL/Transform">
<xsl:import href="imported.xsl"/>
<xsl:output method="text"/>
<xsl:template match="a">[<xsl:call-template name="helper"/>]</xsl:template>
<xsl:template name="helper"><xsl:apply-imports/></xsl:template>
</xsl:stylesheet>
