<xsl:stylesheet version="1.0" xmlns:xsl="http://www.w3.org/1999/XSL/Transform">
<xsl:output method="xml" omit-xml-declaration="yes"/>
<xsl:variable name="f"><i n="1">one</i>two</xsl:variable>
<xsl:template match="/"><o t="{$f}"><xsl:copy-of select="$f"/><xsl:copy-of select="$f"/></o></xsl:template>
</xsl:stylesheet>
