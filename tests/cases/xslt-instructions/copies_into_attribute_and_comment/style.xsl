<xsl:stylesheet version="1.0" xmlns:xsl="http://www.w3.org/1999/XSL/Transform">
<xsl:output method="xml" omit-xml-declaration="yes"/>
<xsl:template match="/">
<o><xsl:attribute name="v">[<xsl:copy-of select="r/@a | r/node()"/>|<xsl:copy-of select="2 div 4"/>|<xsl:copy-of select="1 = 1"/>]</xsl:attribute>
<xsl:for-each select="r/namespace::p"><xsl:copy/></xsl:for-each>
<xsl:comment><xsl:for-each select="r/namespace::p"><xsl:copy/></xsl:for-each></xsl:comment></o>
</xsl:template>
</xsl:stylesheet>
