<xsl:stylesheet version="1.0" xmlns:xsl="http://www.w3.org/1999/XSL/Transform">
<xsl:output method="text"/>
<xsl:key name="person" match="person" use="@id"/>
<xsl:variable name="people" select="document('people.xml')"/>
<xsl:template match="/">
<xsl:for-each select="orders/o"><xsl:variable name="who" select="@who"/><xsl:for-each select="$people"><xsl:value-of select="key('person', $who)"/></xsl:for-each>:<xsl:value-of select="count(key('person', $who))"/><xsl:text> </xsl:text></xsl:for-each>
</xsl:template>
</xsl:stylesheet>
