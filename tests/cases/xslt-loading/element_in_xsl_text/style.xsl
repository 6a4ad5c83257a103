<xsl:stylesheet version="1.0" xmlns:xsl="http://www.w3.org/1999/XSL/Transform">
<xsl:template match="/">
<xsl:text>a<b/></xsl:text></xsl:template>
</xsl:stylesheet>
