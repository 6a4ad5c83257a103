<xsl:stylesheet version="1.0" xmlns:xsl="http://www.w3.org/1999/XSL/Transform">
<xsl:output method="text"/>
<xsl:variable name="a" select="concat($b, '!')"/>
<xsl:variable name="b">frag<x>ment</x></xsl:variable>
<xsl:template match="/"><xsl:value-of select="$a"/></xsl:template>
</xsl:stylesheet>
