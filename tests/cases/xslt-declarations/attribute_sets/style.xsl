<xsl:stylesheet version="1.0" xmlns:xsl="http://www.w3.org/1999/XSL/Transform">
<xsl:output method="xml" omit-xml-declaration="yes"/>
<xsl:attribute-set name="base"><xsl:attribute name="a">base</xsl:attribute><xsl:attribute name="b">base</xsl:attribute></xsl:attribute-set>
<xsl:attribute-set name="more" use-attribute-sets="base"><xsl:attribute name="b">more</xsl:attribute></xsl:attribute-set>
<xsl:template match="/"><e xsl:use-attribute-sets="more" a="own"/><xsl:element name="f" use-attribute-sets="base"/></xsl:template>
</xsl:stylesheet>
