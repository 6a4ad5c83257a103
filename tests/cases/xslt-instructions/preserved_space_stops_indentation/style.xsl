<xsl:stylesheet version="1.0" xmlns:xsl="http://www.w3.org/1999/XSL/Transform">
<xsl:output method="xml" omit-xml-declaration="yes" indent="yes"/>
<xsl:template match="/">
<o><a><b/></a><p xml:space="preserve"><b><c/></b></p><q><xsl:attribute name="xml:space">preserve</xsl:attribute><b><c/></b></q><q xml:space="default"><b/></q></o>
</xsl:template>
</xsl:stylesheet>
