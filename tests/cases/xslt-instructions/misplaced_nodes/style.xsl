<xsl:stylesheet version="1.0" xmlns:xsl="http://www.w3.org/1999/XSL/Transform">
<xsl:output method="xml" omit-xml-declaration="yes"/>
<xsl:template match="/">
<e><xsl:attribute name="a">x<xsl:attribute name="b">y</xsl:attribute></xsl:attribute>
<xsl:comment>c<xsl:element name="n">lost</xsl:element></xsl:comment></e></xsl:template>
</xsl:stylesheet>
