<xsl:stylesheet version="1.0" xmlns:xsl="http://www.w3.org/1999/XSL/Transform" xmlns:axsl="urn:alias">
<xsl:output method="xml" omit-xml-declaration="yes"/>
<xsl:namespace-alias stylesheet-prefix="axsl" result-prefix="xsl"/>
<xsl:template match="/"><axsl:stylesheet axsl:version="1.0"/></xsl:template>
</xsl:stylesheet>
