<xsl:stylesheet version="1.0" xmlns:xsl="http://www.w3.org/1999/XSL/Transform">
<xsl:output method="text"/>
<xsl:variable name="x" select="1"/>
<xsl:param name="x" select="2"/>
</xsl:stylesheet>
