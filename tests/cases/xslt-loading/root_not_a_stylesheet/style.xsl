<xsl:template xmlns:xsl="http://www.w3.org/1999/XSL/Transform"/>
