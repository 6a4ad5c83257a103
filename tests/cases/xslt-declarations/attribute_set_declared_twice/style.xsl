<xsl:stylesheet version="1.0" xmlns:xsl="http://www.w3.org/1999/XSL/Transform">
<xsl:output method="xml" omit-xml-declaration="yes"/>
<xsl:attribute-set name="s"><xsl:attribute name="a">first</xsl:attribute></xsl:attribute-set>
<xsl:attribute-set name="s">
<xsl:attribute name="a">second</xsl:attribute><xsl:attribute name="b">b</xsl:attribute></xsl:attribute-set>
<xsl:template match="/"><e xsl:use-attribute-sets="s"/></xsl:template>
</xsl:stylesheet>
