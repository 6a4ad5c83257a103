<xsl:stylesheet version="1.0" xmlns:xsl="http://www.w3.org/1999/XSL/Transform">
<xsl:variable name="v" select="'imported'"/>
<xsl:template name="t">imported</xsl:template>
<xsl:template match="a">imported-a</xsl:template>
</xsl:stylesheet>
