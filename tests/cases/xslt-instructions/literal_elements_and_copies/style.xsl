<xsl:stylesheet version="1.0" xmlns:xsl="http://www.w3.org/1999/XSL/Transform">
<xsl:output method="xml" omit-xml-declaration="yes"/>
<xsl:template match="/r"><out xmlns:p="urn:p" xmlns:xsl2="urn:skip" xsl:exclude-result-prefixes="xsl2"><xsl:copy-of select="a"/><xsl:apply-templates select="a"/></out></xsl:template>
<xsl:template match="a"><xsl:copy><xsl:attribute name="y">2</xsl:attribute><xsl:value-of select="@x"/></xsl:copy></xsl:template>
</xsl:stylesheet>
