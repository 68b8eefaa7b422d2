<!--
  Ostin Light: document types of MusicXML 4.0, the head of a score.

  Everything that comes before the music: the work and the movement, who made the file and
  with what, the page defaults, the texts on the pages (credits) and the list of parts with
  their groups, instruments and MIDI set-up.
-->

<!-- The score's head, in this order; only the part list must be there. -->
<!ENTITY % score-header
  "(work?, movement-number?, movement-title?, identification?, defaults?, credit*, part-list)">

<!-- ===================================================================================== -->
<!-- Work and movement                                                                      -->
<!-- ===================================================================================== -->

<!ELEMENT work (work-number?, work-title?, opus?)>
<!ELEMENT work-number (#PCDATA)>
<!ELEMENT work-title (#PCDATA)>
<!-- A link to the file that lists the movements of a larger work. -->
<!ELEMENT opus EMPTY>
<!ATTLIST opus %link-attributes;>
<!ELEMENT movement-number (#PCDATA)>
<!ELEMENT movement-title (#PCDATA)>

<!-- ===================================================================================== -->
<!-- Identification: who wrote what, and how the file was made                             -->
<!-- ===================================================================================== -->

<!ELEMENT identification
  (creator*, rights*, encoding?, source?, relation*, miscellaneous?)>
<!-- A composer, lyricist, arranger or the like; type names the role. -->
<!ELEMENT creator (#PCDATA)>
<!ATTLIST creator type CDATA #IMPLIED>
<!ELEMENT rights (#PCDATA)>
<!ATTLIST rights type CDATA #IMPLIED>
<!ELEMENT source (#PCDATA)>
<!ELEMENT relation (#PCDATA)>
<!ATTLIST relation type CDATA #IMPLIED>

<!-- The making of the file: dates, people, programs, and what the program can express. -->
<!ELEMENT encoding
  ((encoding-date | encoder | software | encoding-description | supports)*)>
<!ELEMENT encoding-date (#PCDATA)>
<!ELEMENT encoder (#PCDATA)>
<!ATTLIST encoder type CDATA #IMPLIED>
<!ELEMENT software (#PCDATA)>
<!ELEMENT encoding-description (#PCDATA)>
<!-- Whether the file uses an element (or one value of one of its attributes) at all, so
     that its absence means something. -->
<!ELEMENT supports EMPTY>
<!ATTLIST supports
  type %yes-no; #REQUIRED
  element CDATA #REQUIRED
  attribute CDATA #IMPLIED
  value CDATA #IMPLIED>

<!ELEMENT miscellaneous (miscellaneous-field*)>
<!ELEMENT miscellaneous-field (#PCDATA)>
<!ATTLIST miscellaneous-field name CDATA #REQUIRED>

<!-- ===================================================================================== -->
<!-- Defaults: scale, page, fonts                                                           -->
<!-- ===================================================================================== -->

<!ELEMENT defaults
  (scaling?, concert-score?, %layout;, appearance?, music-font?, word-font?, lyric-font*,
   lyric-language*)>

<!-- How many millimetres so many tenths are: the size of the staff. -->
<!ELEMENT scaling (millimeters, tenths)>
<!ELEMENT millimeters (#PCDATA)>
<!ELEMENT tenths (#PCDATA)>

<!-- The score may be shown at concert pitch. -->
<!ELEMENT concert-score EMPTY>

<!-- Line widths, note sizes, distances and glyph choices of the engraving. -->
<!ELEMENT appearance (line-width*, note-size*, distance*, glyph*, other-appearance*)>
<!ELEMENT line-width (#PCDATA)>
<!ATTLIST line-width type CDATA #REQUIRED>
<!ELEMENT note-size (#PCDATA)>
<!ATTLIST note-size type (cue | grace | grace-cue | large) #REQUIRED>
<!ELEMENT distance (#PCDATA)>
<!ATTLIST distance type CDATA #REQUIRED>
<!ELEMENT glyph (#PCDATA)>
<!ATTLIST glyph type CDATA #REQUIRED>
<!ELEMENT other-appearance (#PCDATA)>
<!ATTLIST other-appearance type CDATA #REQUIRED>

<!ELEMENT music-font EMPTY>
<!ATTLIST music-font %font;>
<!ELEMENT word-font EMPTY>
<!ATTLIST word-font %font;>
<!ELEMENT lyric-font EMPTY>
<!ATTLIST lyric-font
  number NMTOKEN #IMPLIED
  name CDATA #IMPLIED
  %font;>
<!ELEMENT lyric-language EMPTY>
<!ATTLIST lyric-language
  number NMTOKEN #IMPLIED
  name CDATA #IMPLIED
  xml:lang CDATA #REQUIRED>

<!-- ===================================================================================== -->
<!-- Credits: the texts and pictures of the pages                                           -->
<!-- ===================================================================================== -->

<!-- One credit is a picture, or texts and symbols, each after its own links and bookmarks. -->
<!ELEMENT credit
  (credit-type*, link*, bookmark*,
   (credit-image |
    ((credit-words | credit-symbol), (link*, bookmark*, (credit-words | credit-symbol))*)))>
<!ATTLIST credit
  page CDATA #IMPLIED
  %optional-unique-id;>
<!ELEMENT credit-type (#PCDATA)>
<!ELEMENT credit-words (#PCDATA)>
<!ATTLIST credit-words %text-formatting; %optional-unique-id;>
<!ELEMENT credit-symbol (#PCDATA)>
<!ATTLIST credit-symbol %symbol-formatting; %optional-unique-id;>
<!ELEMENT credit-image EMPTY>
<!ATTLIST credit-image %image-attributes; %optional-unique-id;>

<!-- ===================================================================================== -->
<!-- The part list                                                                          -->
<!-- ===================================================================================== -->

<!-- Parts in score order, with the starts and stops of groups among them. -->
<!ELEMENT part-list (part-group*, score-part, (part-group | score-part)*)>

<!-- A group of parts: its name, its bracket or brace, and whether its barlines join. -->
<!ELEMENT part-group
  (group-name?, group-name-display?, group-abbreviation?, group-abbreviation-display?,
   group-symbol?, group-barline?, group-time?, %editorial;)>
<!ATTLIST part-group
  type %start-stop; #REQUIRED
  number CDATA "1">
<!ELEMENT group-name (#PCDATA)>
<!ATTLIST group-name %print-style; %justify;>
<!ELEMENT group-name-display (%name-display;)>
<!ATTLIST group-name-display %print-object;>
<!ELEMENT group-abbreviation (#PCDATA)>
<!ATTLIST group-abbreviation %print-style; %justify;>
<!ELEMENT group-abbreviation-display (%name-display;)>
<!ATTLIST group-abbreviation-display %print-object;>
<!ELEMENT group-symbol (#PCDATA)>
<!ATTLIST group-symbol %position; %color;>
<!ELEMENT group-barline (#PCDATA)>
<!ATTLIST group-barline %color;>
<!ELEMENT group-time EMPTY>

<!-- One part: its names, the instruments it plays, its players and its MIDI set-up. -->
<!ELEMENT score-part
  (identification?, part-link*, part-name, part-name-display?, part-abbreviation?,
   part-abbreviation-display?, group*, score-instrument*, player*,
   (midi-device?, midi-instrument?)*)>
<!ATTLIST score-part id ID #REQUIRED>

<!-- A link to a part (or score) file made from this one, and what of it corresponds. -->
<!ELEMENT part-link (instrument-link*, group-link*)>
<!ATTLIST part-link %link-attributes;>
<!ELEMENT instrument-link EMPTY>
<!ATTLIST instrument-link id IDREF #REQUIRED>
<!ELEMENT group-link (#PCDATA)>

<!ELEMENT part-name (#PCDATA)>
<!ATTLIST part-name %print-style; %print-object; %justify;>
<!ELEMENT part-abbreviation (#PCDATA)>
<!ATTLIST part-abbreviation %print-style; %print-object; %justify;>
<!ELEMENT part-name-display (%name-display;)>
<!ATTLIST part-name-display %print-object;>
<!ELEMENT part-abbreviation-display (%name-display;)>
<!ATTLIST part-abbreviation-display %print-object;>

<!-- A name for a group of the parts (score, parts, a named set) the part belongs to. -->
<!ELEMENT group (#PCDATA)>

<!ELEMENT score-instrument
  (instrument-name, instrument-abbreviation?, %virtual-instrument-data;)>
<!ATTLIST score-instrument id ID #REQUIRED>
<!ELEMENT instrument-name (#PCDATA)>
<!ELEMENT instrument-abbreviation (#PCDATA)>

<!ELEMENT player (player-name)>
<!ATTLIST player id ID #REQUIRED>
<!ELEMENT player-name (#PCDATA)>
