<xsl:stylesheet version="1.0" xmlns:xsl="http://www.w3.org/1999/XSL/Transform">
<xsl:output method="text"/>
<xsl:template match="/">
<xsl:number value="3" format="1."/>|<xsl:number value="3" format="(1)"/>|<xsl:number value="28" format="a"/>|<xsl:number value="4" format="i"/>|<xsl:number value="4000" format="I"/>|<xsl:number value="0" format="A"/>|<xsl:number value="3" format="01"/>|<xsl:number value="1234" format="001"/>|<xsl:number value="5" format="x"/>|<xsl:number value="5" format="&#x4E00;"/>|<xsl:number value="1234567" grouping-separator="," grouping-size="3"/>|<xsl:number value="1.5"/>|<xsl:number value="2.5"/>|<xsl:number value="-7"/>|<xsl:number value="'12'" format="{concat('[', 'I', ']')}"/>|<xsl:number value="1" letter-value="traditional" lang="en" format="A"/>
</xsl:template>
</xsl:stylesheet>
