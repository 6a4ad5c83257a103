<xsl:stylesheet version="1.0" xmlns:xsl="http://www.w3.org/1999/XSL/Transform" xmlns:f="urn:f">
<xsl:output method="text"/>
<xsl:decimal-format name="f:known" grouping-separator=" "/>
<xsl:template match="/">
<xsl:value-of select="format-number(1, '0', 'f:nope')"/></xsl:template>
</xsl:stylesheet>
