<xsl:stylesheet version="1.0" xmlns:xsl="http://www.w3.org/1999/XSL/Transform">
<xsl:template match="/"><xsl:choose>
<xsl:otherwise/></xsl:choose></xsl:template>
</xsl:stylesheet>
