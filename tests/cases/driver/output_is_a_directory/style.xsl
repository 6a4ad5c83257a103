<?xml version="1.0"?>
<!-- The output file cannot be created: the run ends before the document is read. -->
<xsl:stylesheet version="1.0" xmlns:xsl="http://www.w3.org/1999/XSL/Transform">
  <xsl:output method="text"/>
  <xsl:template match="/">text</xsl:template>
</xsl:stylesheet>
