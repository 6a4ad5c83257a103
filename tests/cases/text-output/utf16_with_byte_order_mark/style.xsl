<xsl:stylesheet version="1.0" xmlns:xsl="http://www.w3.org/1999/XSL/Transform">
<xsl:output method="text" encoding="UTF-16"/>
<xsl:template match="/r"><e><xsl:value-of select="a"/>|<xsl:value-of select="b"/></e></xsl:template>
</xsl:stylesheet>
