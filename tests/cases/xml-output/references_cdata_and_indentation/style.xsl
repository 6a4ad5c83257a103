<xsl:stylesheet version="1.0" xmlns:xsl="http://www.w3.org/1999/XSL/Transform">
<xsl:output method="xml" encoding="iso-8859-1" standalone="no" doctype-system="s.dtd" doctype-public="-//P" cdata-section-elements="c" indent="yes"/>
<xsl:template match="/"><o a="&quot;&amp;&lt;&gt;'&#8364;&#233;&#x1F600;"><xsl:attribute name="b">x
y	z&#13;</xsl:attribute>&#8364;&lt;&gt;&amp;"'<c>x]]&gt;y&#8364;z&#8364;</c><c/><xsl:comment>a--b</xsl:comment><xsl:processing-instruction name="pi"/><xsl:processing-instruction name="pj">d ?</xsl:processing-instruction><e><f/></e><e xml:space="preserve"><f/></e></o></xsl:template>
</xsl:stylesheet>
