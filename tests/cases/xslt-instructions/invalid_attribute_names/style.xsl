<xsl:stylesheet version="1.0" xmlns:xsl="http://www.w3.org/1999/XSL/Transform">
<xsl:output method="xml" omit-xml-declaration="yes"/>
<xsl:template match="/"><e>
<xsl:attribute name="1bad">x</xsl:attribute>
<xsl:attribute name="xmlns">y</xsl:attribute><xsl:attribute name="good">z</xsl:attribute></e></xsl:template>
</xsl:stylesheet>
