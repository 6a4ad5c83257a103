<xsl:stylesheet version="1.0" xmlns:xsl="http://www.w3.org/1999/XSL/Transform">
<xsl:template match="a" priority="10">imported:<xsl:value-of select="."/></xsl:template>
</xsl:stylesheet>
