<xsl:stylesheet version="1.0" xmlns:xsl="http://www.w3.org/1999/XSL/Transform">
<xsl:output method="html" doctype-public="-//W3C//DTD HTML 4.01//EN" version="4.01" indent="no"/>
<xsl:template match="/"><html><head/><body>x</body></html></xsl:template>
</xsl:stylesheet>
