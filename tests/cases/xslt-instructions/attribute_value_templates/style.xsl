<xsl:stylesheet version="1.0" xmlns:xsl="http://www.w3.org/1999/XSL/Transform">
<xsl:output method="xml" omit-xml-declaration="yes"/>
<xsl:template match="/r"><e a="a{b" b="x}y" c="{'}'}" d="[{@v}]" f="{concat('{', '}')}"/></xsl:template>
</xsl:stylesheet>
