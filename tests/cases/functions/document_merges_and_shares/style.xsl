<xsl:stylesheet version="1.0" xmlns:xsl="http://www.w3.org/1999/XSL/Transform">
<xsl:output method="text"/>
<xsl:template match="/">
<xsl:value-of select="count(document(refs/r))"/>|<xsl:value-of select="count(document(refs/r) | document('a.xml'))"/>|<xsl:value-of select="generate-id(document('a.xml')) = generate-id(document(refs/r[2]))"/>|<xsl:value-of select="name(document('')/*)"/>|<xsl:value-of select="document('#top')/*/xsl:output/@method"/>|<xsl:value-of select="document('b.xml', /)"/>|<xsl:value-of select="count(document(refs/r, /nothing))"/>
</xsl:template>
</xsl:stylesheet>
