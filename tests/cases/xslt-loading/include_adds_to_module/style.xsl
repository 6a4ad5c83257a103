<xsl:stylesheet version="1.0" xmlns:xsl="http://www.w3.org/1999/XSL/Transform">
<xsl:output method="text"/>
<xsl:include href="inc.xsl"/>
<xsl:template match="/"><xsl:call-template name="from-include"/></xsl:template>
</xsl:stylesheet>
