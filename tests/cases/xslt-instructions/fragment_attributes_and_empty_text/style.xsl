<xsl:stylesheet version="1.0" xmlns:xsl="http://www.w3.org/1999/XSL/Transform">
<xsl:output method="xml" omit-xml-declaration="yes"/>
<xsl:variable name="v"><xsl:attribute name="a">1</xsl:attribute>t<b c="2">u<xsl:comment>cc</xsl:comment><xsl:processing-instruction name="p">pp</xsl:processing-instruction></b></xsl:variable>
<xsl:template match="/">
<o><xsl:copy-of select="$v"/><s><xsl:value-of select="$v"/></s><e1><xsl:value-of select="''"/></e1><e2><xsl:text/></e2><e3><xsl:copy-of select="/.."/></e3><e4><xsl:copy-of select="''"/></e4></o>
</xsl:template>
</xsl:stylesheet>
