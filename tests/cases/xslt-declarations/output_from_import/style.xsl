<xsl:stylesheet version="1.0" xmlns:xsl="http://www.w3.org/1999/XSL/Transform">
<xsl:import href="imported.xsl"/>
<xsl:output method="xml"/>
<xsl:template match="/"><e><f/></e></xsl:template>
</xsl:stylesheet>
