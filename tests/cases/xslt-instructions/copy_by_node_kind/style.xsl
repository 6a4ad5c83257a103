<xsl:stylesheet version="1.0" xmlns:xsl="http://www.w3.org/1999/XSL/Transform">
<xsl:output method="xml" omit-xml-declaration="yes"/>
<xsl:template match="/"><xsl:copy><o><xsl:for-each select="r/@a | r/node()"><xsl:copy>ignored</xsl:copy></xsl:for-each></o></xsl:copy></xsl:template>
</xsl:stylesheet>
