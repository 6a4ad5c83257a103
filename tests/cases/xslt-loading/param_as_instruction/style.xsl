<xsl:stylesheet version="1.0" xmlns:xsl="http://www.w3.org/1999/XSL/Transform">
<xsl:template match="/">x
<xsl:with-param name="p"/></xsl:template>
</xsl:stylesheet>
