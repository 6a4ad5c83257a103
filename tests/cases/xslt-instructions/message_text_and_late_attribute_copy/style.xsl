<xsl:stylesheet version="1.0" xmlns:xsl="http://www.w3.org/1999/XSL/Transform">
<xsl:output method="xml" omit-xml-declaration="yes"/>
<xsl:template match="/">
<xsl:message terminate="no">a<m x="y"><xsl:attribute name="z">e</xsl:attribute>b<xsl:comment>c</xsl:comment><xsl:processing-instruction name="p">d</xsl:processing-instruction></m>f
</xsl:message>
<o>text<xsl:for-each select="r/@a"><xsl:copy/></xsl:for-each></o>
</xsl:template>
</xsl:stylesheet>
