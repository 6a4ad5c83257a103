<xsl:stylesheet version="1.0" xmlns:xsl="http://www.w3.org/1999/XSL/Transform">
<foreign xmlns="urn:f"/>
<xsl:import href="other.xsl"/>
</xsl:stylesheet>
