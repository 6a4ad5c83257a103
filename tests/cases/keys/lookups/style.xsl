<xsl:stylesheet version="1.0" xmlns:xsl="http://www.w3.org/1999/XSL/Transform" xmlns:k="urn:k">
<xsl:output method="text"/>
<xsl:key name="by-colour" match="p" use="t"/>
<xsl:key name="k:id" match="p" use="@id"/>
<xsl:key name="k:id" match="q" use="@code"/>
<xsl:template match="/">
<xsl:for-each select="key('by-colour', 'red')"><xsl:value-of select="@id"/></xsl:for-each>|<xsl:for-each select="key('by-colour', 'blue')"><xsl:value-of select="@id"/></xsl:for-each>|<xsl:value-of select="count(key('by-colour', 'Red'))"/>|<xsl:for-each select="key('k:id', 'a')"><xsl:value-of select="name()"/></xsl:for-each>|<xsl:for-each select="key('k:id', //p/t[. = 'red']/../@id)"><xsl:value-of select="@id"/></xsl:for-each>|<xsl:value-of select="count(key('undeclared', 'a'))"/>|<xsl:value-of select="count(key('by-colour', ''))"/>
</xsl:template>
</xsl:stylesheet>
