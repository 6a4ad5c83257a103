<xsl:stylesheet version="1.0" xmlns:xsl="http://www.w3.org/1999/XSL/Transform" xmlns:p="urn:p" exclude-result-prefixes="p">
<xsl:output method="xml" omit-xml-declaration="yes"/>
<xsl:template match="/">
<o><xsl:attribute name="a" namespace="urn:a">1</xsl:attribute><xsl:attribute name="n">first</xsl:attribute><xsl:attribute name="m">m</xsl:attribute><xsl:attribute name="n">last</xsl:attribute>
<c><xsl:attribute name="b" namespace="urn:b">2</xsl:attribute><d><xsl:attribute name="c" namespace="urn:a">3</xsl:attribute><xsl:attribute name="e" namespace="urn:e">4</xsl:attribute></d></c>
<p:x><xsl:copy-of select="r/e/@*"/></p:x>
<xsl:element name="q:y" xmlns:q="urn:q"><xsl:attribute name="q:z">5</xsl:attribute></xsl:element>
</o>
</xsl:template>
</xsl:stylesheet>
