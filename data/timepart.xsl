<?xml version="1.0" encoding="UTF-8"?>
<!--
  Ostin Light: turns a MusicXML score written measure by measure (score-timewise) into one
  written part by part (score-partwise).

  The head of the score (everything before the first measure) is copied as it is. Then, for
  each score-part of the part list, in its order, a part with the same id holds one measure
  for each measure of the score, in order, with the measure's attributes (number, implicit,
  width and the rest) and the music that part has in it. A score already written part by
  part is copied unchanged.
-->
<xsl:stylesheet version="1.0" xmlns:xsl="http://www.w3.org/1999/XSL/Transform">

  <xsl:output method="xml" indent="no" encoding="UTF-8" standalone="no"
              doctype-public="-//Calvimora//DTD MusicXML 4.0 Partwise//EN"
              doctype-system="partwise.dtd"/>

  <!-- The music of each part in each measure, found by the part's id. -->
  <xsl:key name="music-of-part" match="/score-timewise/measure/part" use="@id"/>

  <xsl:template match="/">
    <xsl:apply-templates select="score-timewise | score-partwise"/>
  </xsl:template>

  <xsl:template match="score-partwise">
    <xsl:copy-of select="."/>
  </xsl:template>

  <xsl:template match="score-timewise">
    <score-partwise>
      <xsl:copy-of select="@*"/>
      <xsl:copy-of select="*[not(self::measure)]"/>
      <xsl:for-each select="part-list/score-part">
        <xsl:call-template name="part">
          <xsl:with-param name="id" select="@id"/>
        </xsl:call-template>
      </xsl:for-each>
    </score-partwise>
  </xsl:template>

  <!-- One part: every measure of the score, each with this part's music in it. -->
  <xsl:template name="part">
    <xsl:param name="id"/>
    <xsl:variable name="music" select="key('music-of-part', $id)"/>
    <part id="{$id}">
      <xsl:for-each select="/score-timewise/measure">
        <measure>
          <xsl:copy-of select="@*"/>
          <xsl:copy-of select="part[count(. | $music) = count($music)]/node()"/>
        </measure>
      </xsl:for-each>
    </part>
  </xsl:template>

</xsl:stylesheet>
