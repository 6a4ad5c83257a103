<xsl:stylesheet version="1.0" xmlns:xsl="http://www.w3.org/1999/XSL/Transform">
<xsl:output method="text" encoding="iso-8859-1"/>
<xsl:template match="/r"><xsl:value-of select="a"/>|<xsl:value-of select="b"/>|<xsl:text>&#8364;</xsl:text></xsl:template>
</xsl:stylesheet>
