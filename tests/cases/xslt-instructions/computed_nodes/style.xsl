<xsl:stylesheet version="1.0" xmlns:xsl="http://www.w3.org/1999/XSL/Transform">
<xsl:output method="xml" omit-xml-declaration="yes"/>
<xsl:template match="/"><xsl:element name="{concat('e', 1)}" namespace="urn:n"><xsl:attribute name="p:a" namespace="urn:a">v</xsl:attribute><xsl:comment> c </xsl:comment><xsl:processing-instruction name="t">d</xsl:processing-instruction></xsl:element></xsl:template>
</xsl:stylesheet>
