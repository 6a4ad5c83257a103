<xsl:stylesheet version="1.0" xmlns:xsl="http://www.w3.org/1999/XSL/Transform">
<xsl:output method="xml" encoding="8859"/>
<xsl:template match="/"><o/></xsl:template>
</xsl:stylesheet>
