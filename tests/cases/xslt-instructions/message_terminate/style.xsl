<xsl:stylesheet version="1.0" xmlns:xsl="http://www.w3.org/1999/XSL/Transform">
<xsl:output method="text"/>
<xsl:template match="/">before<xsl:message>note <b>bold</b></xsl:message>
<xsl:message terminate="yes">stop</xsl:message>after</xsl:template>
</xsl:stylesheet>
