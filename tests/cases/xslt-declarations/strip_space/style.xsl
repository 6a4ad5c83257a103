<xsl:stylesheet version="1.0" xmlns:xsl="http://www.w3.org/1999/XSL/Transform">
<xsl:output method="text"/>
<xsl:strip-space elements="*"/>
<xsl:preserve-space elements="b"/>
<xsl:template match="/">[<xsl:for-each select="//text()"><xsl:value-of select="name(..)"/></xsl:for-each>]</xsl:template>
</xsl:stylesheet>
