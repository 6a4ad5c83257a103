<xsl:stylesheet version="1.0" xmlns:xsl="http://www.w3.org/1999/XSL/Transform">
<xsl:output method="text" cdata-section-elements="b" standalone="yes"/>
<xsl:output standalone="no" indent="no"/>
</xsl:stylesheet>
