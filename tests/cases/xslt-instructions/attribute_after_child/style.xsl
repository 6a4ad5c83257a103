<xsl:stylesheet version="1.0" xmlns:xsl="http://www.w3.org/1999/XSL/Transform">
<xsl:output method="xml" omit-xml-declaration="yes"/>
<xsl:template match="/"><e><c/>
<xsl:attribute name="a">x</xsl:attribute></e></xsl:template>
</xsl:stylesheet>
