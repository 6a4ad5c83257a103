<xsl:stylesheet version="1.0" xmlns:xsl="http://www.w3.org/1999/XSL/Transform">
<xsl:output method="xml" omit-xml-declaration="yes"/>
<xsl:template match="/">
<e xmlns="urn:u"><xsl:element name="z" namespace=""/></e>
</xsl:template>
</xsl:stylesheet>
