<xsl:stylesheet version="1.1" xmlns:xsl="http://www.w3.org/1999/XSL/Transform">
<xsl:output method="text"/>
<xsl:template match="/"><xsl:future><xsl:fallback>fell back</xsl:fallback></xsl:future><xsl:other/></xsl:template>
<xsl:unknown-top/>
</xsl:stylesheet>
