<xsl:stylesheet version="1.0" xmlns:xsl="http://www.w3.org/1999/XSL/Transform">
<xsl:output method="xml" omit-xml-declaration="yes"/>
<xsl:template match="/"><e><xsl:attribute name="t">c
<xsl:processing-instruction name="p">d</xsl:processing-instruction></xsl:attribute><xsl:comment>a
<xsl:comment>b</xsl:comment></xsl:comment></e></xsl:template>
</xsl:stylesheet>
