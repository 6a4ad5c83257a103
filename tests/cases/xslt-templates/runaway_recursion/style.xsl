<xsl:stylesheet version="1.0" xmlns:xsl="http://www.w3.org/1999/XSL/Transform">
<xsl:output method="text"/>
<xsl:template match="/">
<xsl:call-template name="loop"/></xsl:template>
<xsl:template name="loop">
<xsl:call-template name="loop"/></xsl:template>
</xsl:stylesheet>
