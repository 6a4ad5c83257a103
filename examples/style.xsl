<?xml version="1.0" encoding="UTF-8"?>
<!-- Lists the sightings of a region as an HTML table, in order of species. -->
<xsl:stylesheet version="1.0" xmlns:xsl="http://www.w3.org/1999/XSL/Transform">
  <xsl:output method="html" encoding="UTF-8" indent="yes"/>
  <xsl:param name="title" select="'Sightings'"/>

  <xsl:template match="/sightings">
    <html>
      <head><title><xsl:value-of select="concat($title, ': ', @region)"/></title></head>
      <body>
        <table>
          <tr><th>Species</th><th>Count</th><th>Date</th></tr>
          <xsl:apply-templates select="bird">
            <xsl:sort select="@species"/>
          </xsl:apply-templates>
        </table>
        <p>Birds seen: <xsl:value-of select="sum(bird/@count)"/></p>
      </body>
    </html>
  </xsl:template>

  <xsl:template match="bird">
    <tr>
      <td><xsl:value-of select="@species"/></td>
      <td><xsl:value-of select="@count"/></td>
      <td><xsl:value-of select="@date"/></td>
    </tr>
  </xsl:template>
</xsl:stylesheet>
