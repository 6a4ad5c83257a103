<xsl:stylesheet version="1.0" xmlns:xsl="http://www.w3.org/1999/XSL/Transform" xmlns:q="urn:p">
<xsl:import href="imported.xsl"/>
<xsl:output method="text"/>
<xsl:preserve-space elements="a"/>
<xsl:strip-space elements="q:*	e"/>
<xsl:preserve-space elements="e"/>
<xsl:template match="/">[<xsl:for-each select="//text()"><xsl:value-of select="name(..)"/>,</xsl:for-each>][<xsl:for-each select="document('document.xml')//text()"><xsl:value-of select="name(..)"/>,</xsl:for-each>]</xsl:template>
</xsl:stylesheet>
