<xsl:stylesheet version="1.0" xmlns:xsl="http://www.w3.org/1999/XSL/Transform">
<xsl:output method="xml" omit-xml-declaration="yes"/>
<xsl:template match="/"><o xsl:version="2.0"><xsl:frob/><p xsl:version="1.0">
<xsl:if test="1" version="3.0"><xsl:frob2/></xsl:if></p></o></xsl:template>
</xsl:stylesheet>
