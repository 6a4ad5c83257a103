<xsl:stylesheet version="1.0" xmlns:xsl="http://www.w3.org/1999/XSL/Transform">
<xsl:output method="text"/>
<xsl:variable name="g">
<xsl:apply-imports/></xsl:variable>
<xsl:template match="/"/>
</xsl:stylesheet>
