<xsl:stylesheet version="1.0" xmlns:xsl="http://www.w3.org/1999/XSL/Transform" xmlns:x="urn:x" exclude-result-prefixes="x">
<xsl:output method="html"/>
<xsl:template match="/page">
<html><head><title><xsl:value-of select="@title"/></title><script><xsl:value-of select="code"/></script></head>
<body><p/><br/><BR/><x:p/><option selected="{item/@sel}">o</option><a href="{item}">&lt;</a><a><xsl:attribute name="href">&amp;{x}&amp;y</xsl:attribute></a><img alt="a&lt;b"/></body></html>
</xsl:template>
</xsl:stylesheet>
