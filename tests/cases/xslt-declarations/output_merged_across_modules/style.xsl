<xsl:stylesheet version="1.0" xmlns:xsl="http://www.w3.org/1999/XSL/Transform">
<xsl:import href="imported.xsl"/>
<xsl:output method="text" indent="no"/>
<xsl:output method="html" cdata-section-elements="a"/>
<xsl:output method="xml" indent="yes"/>
<xsl:template match="/"><e><a>x</a><b>y</b><c/></e></xsl:template>
</xsl:stylesheet>
