<!--
  Ostin Light: document types of MusicXML 4.0, shared declarations.

  This file holds what every other part of the document types leans on: names for kinds of
  values, the groups of attributes that many elements carry, and the small elements that turn
  up in more than one place (editorial marks, dynamics, fermatas, MIDI set-up, play hints).
  It declares no score structure of its own; score.mod reads it first.

  Values are checked as the format's document types check them: a few closed lists are
  enumerated, everything else is character data whose form the reader checks.
-->

<!-- ===================================================================================== -->
<!-- Kinds of values                                                                        -->
<!-- ===================================================================================== -->

<!-- Yes or no. -->
<!ENTITY % yes-no "(yes | no)">
<!-- Yes, no or a number (a lyric's or a beat's number written out). -->
<!ENTITY % yes-no-number "CDATA">
<!-- Any number of tenths of a staff space; the unit of every position and size on the page. -->
<!ENTITY % tenths "CDATA">
<!-- A decimal number, an integer, a positive integer, a percentage. -->
<!ENTITY % number "CDATA">
<!ENTITY % integer "CDATA">
<!-- Numbers of slurs, beams, tuplets and lines: 1 to 16 in practice. -->
<!ENTITY % number-level "CDATA">
<!ENTITY % beam-level "CDATA">
<!-- Start and stop of a thing that spans notes. -->
<!ENTITY % start-stop "(start | stop)">
<!ENTITY % start-stop-continue "(start | stop | continue)">
<!ENTITY % start-stop-single "(start | stop | single)">
<!ENTITY % start-stop-discontinue "(start | stop | discontinue)">
<!-- Above or below the staff; over or under the note; up or down. -->
<!ENTITY % above-below "(above | below)">
<!ENTITY % over-under "(over | under)">
<!ENTITY % up-down "(up | down)">
<!ENTITY % top-bottom "(top | bottom)">
<!ENTITY % left-right "(left | right)">
<!ENTITY % left-center-right "(left | center | right)">
<!-- Which systems show a mark when parts are shown together. -->
<!ENTITY % system-relation-number "(only-top | only-bottom | also-top | also-bottom | none)">
<!-- Names of solid, dashed, dotted and wavy lines. -->
<!ENTITY % line-type-value "(solid | dashed | dotted | wavy)">
<!-- A colour as #RRGGBB or #AARRGGBB. -->
<!ENTITY % color-value "CDATA">
<!-- A glyph name of the Standard Music Font Layout. -->
<!ENTITY % smufl-glyph-name "CDATA">
<!-- Step letters, octaves and semitones. -->
<!ENTITY % step "CDATA">
<!ENTITY % octave "CDATA">
<!ENTITY % semitones "CDATA">
<!-- Division counts and the dates of the header. -->
<!ENTITY % divisions "CDATA">
<!ENTITY % yyyy-mm-dd "CDATA">

<!-- ===================================================================================== -->
<!-- Groups of attributes                                                                   -->
<!-- ===================================================================================== -->

<!-- Where a mark sits: the default place from the left of the measure or the top line of the
     staff, and a shift from the place the reader would choose. -->
<!ENTITY % position
  "default-x %tenths; #IMPLIED
   default-y %tenths; #IMPLIED
   relative-x %tenths; #IMPLIED
   relative-y %tenths; #IMPLIED">

<!ENTITY % placement "placement %above-below; #IMPLIED">
<!ENTITY % orientation "orientation %over-under; #IMPLIED">

<!-- The font of a text: a comma list of families, normal or italic, a size in points or a CSS
     size name, normal or bold. -->
<!ENTITY % font
  "font-family CDATA #IMPLIED
   font-style (normal | italic) #IMPLIED
   font-size CDATA #IMPLIED
   font-weight (normal | bold) #IMPLIED">

<!ENTITY % color "color %color-value; #IMPLIED">

<!-- Lines drawn through, over or under a text: the number of lines, 0 to 3. -->
<!ENTITY % text-decoration
  "underline CDATA #IMPLIED
   overline CDATA #IMPLIED
   line-through CDATA #IMPLIED">

<!ENTITY % text-rotation "rotation CDATA #IMPLIED">
<!ENTITY % letter-spacing "letter-spacing CDATA #IMPLIED">
<!ENTITY % line-height "line-height CDATA #IMPLIED">
<!ENTITY % text-direction "dir (ltr | rtl | lro | rlo) #IMPLIED">

<!-- The frame drawn around a text. -->
<!ENTITY % enclosure
  "enclosure (rectangle | square | oval | circle | bracket | inverted-bracket | triangle |
              diamond | pentagon | hexagon | heptagon | octagon | nonagon | decagon | none)
             #IMPLIED">

<!ENTITY % halign "halign %left-center-right; #IMPLIED">
<!ENTITY % valign "valign (top | middle | bottom | baseline) #IMPLIED">
<!ENTITY % valign-image "valign (top | middle | bottom) #IMPLIED">
<!ENTITY % justify "justify %left-center-right; #IMPLIED">

<!ENTITY % print-style "%position; %font; %color;">
<!ENTITY % print-style-align "%print-style; %halign; %valign;">

<!ENTITY % print-object "print-object %yes-no; #IMPLIED">
<!ENTITY % print-spacing "print-spacing %yes-no; #IMPLIED">

<!-- Whether a note, its dots and its lyrics are printed, and whether it takes room. -->
<!ENTITY % printout
  "%print-object;
   print-dot %yes-no; #IMPLIED
   %print-spacing;
   print-lyric %yes-no; #IMPLIED">

<!-- Everything that forms a text on the page. -->
<!ENTITY % text-formatting
  "%justify; %print-style-align; %text-decoration; %text-rotation; %letter-spacing;
   %line-height;
   xml:lang CDATA #IMPLIED
   xml:space (default | preserve) #IMPLIED
   %text-direction; %enclosure;">

<!-- The same for a string of music-font glyphs. -->
<!ENTITY % symbol-formatting
  "%justify; %print-style-align; %text-decoration; %text-rotation; %letter-spacing;
   %line-height; %text-direction; %enclosure;">

<!-- Editorial display: in parentheses or brackets, and at cue or other size. -->
<!ENTITY % level-display
  "parentheses %yes-no; #IMPLIED
   bracket %yes-no; #IMPLIED
   size (full | cue | grace-cue | large) #IMPLIED">

<!-- How a trill or a turn is played. -->
<!ENTITY % trill-sound
  "start-note (upper | main | below) #IMPLIED
   trill-step (whole | half | unison) #IMPLIED
   two-note-turn (whole | half | none) #IMPLIED
   accelerate %yes-no; #IMPLIED
   beats CDATA #IMPLIED
   second-beat CDATA #IMPLIED
   last-beat CDATA #IMPLIED">

<!-- How a bend or a slide is played. -->
<!ENTITY % bend-sound
  "accelerate %yes-no; #IMPLIED
   beats CDATA #IMPLIED
   first-beat CDATA #IMPLIED
   last-beat CDATA #IMPLIED">

<!ENTITY % line-type "line-type %line-type-value; #IMPLIED">
<!ENTITY % line-shape "line-shape (straight | curved) #IMPLIED">
<!ENTITY % line-length "line-length (short | medium | long) #IMPLIED">
<!ENTITY % dashed-formatting
  "dash-length %tenths; #IMPLIED
   space-length %tenths; #IMPLIED">

<!-- The control points of a curve, for slurs and ties. -->
<!ENTITY % bezier
  "bezier-x %tenths; #IMPLIED
   bezier-y %tenths; #IMPLIED
   bezier-x2 %tenths; #IMPLIED
   bezier-y2 %tenths; #IMPLIED
   bezier-offset CDATA #IMPLIED
   bezier-offset2 CDATA #IMPLIED">

<!ENTITY % smufl "smufl %smufl-glyph-name; #IMPLIED">
<!ENTITY % optional-unique-id "id ID #IMPLIED">
<!ENTITY % system-relation "system %system-relation-number; #IMPLIED">
<!-- The passes of a repeated section a sound or mark belongs to, as "1, 3". -->
<!ENTITY % time-only "time-only CDATA #IMPLIED">

<!-- A picture: its file, its media type, its size and where it sits. -->
<!ENTITY % image-attributes
  "source CDATA #REQUIRED
   type CDATA #REQUIRED
   height %tenths; #IMPLIED
   width %tenths; #IMPLIED
   %position; %halign; %valign-image;">

<!-- A link in the manner of XLink, simple links only. -->
<!ENTITY % link-attributes
  "xmlns:xlink CDATA #FIXED 'http://www.w3.org/1999/xlink'
   xlink:href CDATA #REQUIRED
   xlink:type (simple) 'simple'
   xlink:role CDATA #IMPLIED
   xlink:title CDATA #IMPLIED
   xlink:show (new | replace | embed | other | none) 'replace'
   xlink:actuate (onRequest | onLoad | other | none) 'onRequest'">

<!-- The element a link or bookmark stands at: its name and its place among its likes. -->
<!ENTITY % element-position
  "element NMTOKEN #IMPLIED
   position CDATA #IMPLIED">

<!-- The version of the format a score is written in. -->
<!ENTITY % document-attributes "version CDATA '1.0'">

<!-- ===================================================================================== -->
<!-- Editorial marks                                                                        -->
<!-- ===================================================================================== -->

<!-- A footnote to a mark, and the editorial level (source or editor) it belongs to. -->
<!ELEMENT footnote (#PCDATA)>
<!ATTLIST footnote %text-formatting;>
<!ELEMENT level (#PCDATA)>
<!ATTLIST level
  reference %yes-no; #IMPLIED
  type %start-stop-single; #IMPLIED
  %level-display;>

<!ENTITY % editorial "(footnote?, level?)">
<!ENTITY % editorial-voice "(footnote?, level?, voice?)">
<!ENTITY % editorial-voice-direction "(footnote?, level?, voice?)">

<!-- The voice and the staff a note or a mark belongs to. -->
<!ELEMENT voice (#PCDATA)>
<!ELEMENT staff (#PCDATA)>

<!-- ===================================================================================== -->
<!-- Texts that mix words and accidentals                                                   -->
<!-- ===================================================================================== -->

<!ELEMENT display-text (#PCDATA)>
<!ATTLIST display-text %text-formatting;>
<!ELEMENT accidental-text (#PCDATA)>
<!ATTLIST accidental-text %text-formatting; %smufl;>

<!-- A part or group name as it is shown, where the plain name can't say it. -->
<!ENTITY % name-display "(display-text | accidental-text)*">

<!-- ===================================================================================== -->
<!-- Marks shared by notes, directions and barlines                                         -->
<!-- ===================================================================================== -->

<!-- Dynamics: each mark its own empty element, in the order they are shown. -->
<!ENTITY % dynamic-marks
  "p | pp | ppp | pppp | ppppp | pppppp | f | ff | fff | ffff | fffff | ffffff | mp | mf |
   sf | sfp | sfpp | fp | rf | rfz | sfz | sffz | fz | n | pf | sfzp | other-dynamics">
<!ELEMENT dynamics ((%dynamic-marks;)*)>
<!ATTLIST dynamics
  %print-style-align; %placement; %text-decoration; %enclosure; %optional-unique-id;>
<!ELEMENT p EMPTY>
<!ELEMENT pp EMPTY>
<!ELEMENT ppp EMPTY>
<!ELEMENT pppp EMPTY>
<!ELEMENT ppppp EMPTY>
<!ELEMENT pppppp EMPTY>
<!ELEMENT f EMPTY>
<!ELEMENT ff EMPTY>
<!ELEMENT fff EMPTY>
<!ELEMENT ffff EMPTY>
<!ELEMENT fffff EMPTY>
<!ELEMENT ffffff EMPTY>
<!ELEMENT mp EMPTY>
<!ELEMENT mf EMPTY>
<!ELEMENT sf EMPTY>
<!ELEMENT sfp EMPTY>
<!ELEMENT sfpp EMPTY>
<!ELEMENT fp EMPTY>
<!ELEMENT rf EMPTY>
<!ELEMENT rfz EMPTY>
<!ELEMENT sfz EMPTY>
<!ELEMENT sffz EMPTY>
<!ELEMENT fz EMPTY>
<!ELEMENT n EMPTY>
<!ELEMENT pf EMPTY>
<!ELEMENT sfzp EMPTY>
<!ELEMENT other-dynamics (#PCDATA)>
<!ATTLIST other-dynamics %smufl;>

<!-- A fermata; its text names the shape (normal, angled, square and so on). -->
<!ELEMENT fermata (#PCDATA)>
<!ATTLIST fermata
  type (upright | inverted) #IMPLIED
  %print-style; %optional-unique-id;>

<!-- A wavy line, as after a trill or above a barline. -->
<!ELEMENT wavy-line EMPTY>
<!ATTLIST wavy-line
  type %start-stop-continue; #REQUIRED
  number %number-level; #IMPLIED
  %position; %placement; %color; %trill-sound; %smufl;>

<!-- Segno and coda signs, in directions and on barlines. -->
<!ELEMENT segno EMPTY>
<!ATTLIST segno %print-style-align; %optional-unique-id; %smufl;>
<!ELEMENT coda EMPTY>
<!ATTLIST coda %print-style-align; %optional-unique-id; %smufl;>

<!-- Fingering, frets and strings, in technical marks and in chord frames. -->
<!ELEMENT fingering (#PCDATA)>
<!ATTLIST fingering
  substitution %yes-no; #IMPLIED
  alternate %yes-no; #IMPLIED
  %print-style; %placement;>
<!ELEMENT fret (#PCDATA)>
<!ATTLIST fret %font; %color;>
<!ELEMENT string (#PCDATA)>
<!ATTLIST string %print-style; %placement;>

<!-- Tuning of one string, shared by staff tunings and scordature. -->
<!ENTITY % tuning "(tuning-step, tuning-alter?, tuning-octave)">
<!ELEMENT tuning-step (#PCDATA)>
<!ELEMENT tuning-alter (#PCDATA)>
<!ELEMENT tuning-octave (#PCDATA)>

<!-- Tuplet ratios, shared by time modifications and metronome tuplets. -->
<!ELEMENT actual-notes (#PCDATA)>
<!ELEMENT normal-notes (#PCDATA)>
<!ELEMENT normal-type (#PCDATA)>
<!ELEMENT normal-dot EMPTY>

<!-- ===================================================================================== -->
<!-- Instruments and MIDI                                                                   -->
<!-- ===================================================================================== -->

<!-- The sound an instrument makes: a name from the format's sound list, solo or ensemble,
     and a sample library. -->
<!ENTITY % virtual-instrument-data
  "(instrument-sound?, (solo | ensemble)?, virtual-instrument?)">
<!ELEMENT instrument-sound (#PCDATA)>
<!ELEMENT solo EMPTY>
<!-- The size of an ensemble, or empty when unknown. -->
<!ELEMENT ensemble (#PCDATA)>
<!ELEMENT virtual-instrument (virtual-library?, virtual-name?)>
<!ELEMENT virtual-library (#PCDATA)>
<!ELEMENT virtual-name (#PCDATA)>

<!-- The MIDI device (and port) an instrument plays on. -->
<!ELEMENT midi-device (#PCDATA)>
<!ATTLIST midi-device
  port CDATA #IMPLIED
  id IDREF #IMPLIED>

<!-- The MIDI set-up of one score instrument. -->
<!ELEMENT midi-instrument
  (midi-channel?, midi-name?, midi-bank?, midi-program?, midi-unpitched?, volume?, pan?,
   elevation?)>
<!ATTLIST midi-instrument id IDREF #REQUIRED>
<!ELEMENT midi-channel (#PCDATA)>
<!ELEMENT midi-name (#PCDATA)>
<!ELEMENT midi-bank (#PCDATA)>
<!ELEMENT midi-program (#PCDATA)>
<!ELEMENT midi-unpitched (#PCDATA)>
<!ELEMENT volume (#PCDATA)>
<!ELEMENT pan (#PCDATA)>
<!ELEMENT elevation (#PCDATA)>

<!-- Playback hints: a sung vowel, a mute, where an unpitched note sits, anything else. -->
<!ELEMENT play ((ipa | mute | semi-pitched | other-play)*)>
<!ATTLIST play id IDREF #IMPLIED>
<!ELEMENT ipa (#PCDATA)>
<!ELEMENT mute (#PCDATA)>
<!ELEMENT semi-pitched (#PCDATA)>
<!ELEMENT other-play (#PCDATA)>
<!ATTLIST other-play type CDATA #REQUIRED>

<!-- ===================================================================================== -->
<!-- Page layout, shared by the defaults and by print                                      -->
<!-- ===================================================================================== -->

<!ENTITY % layout "(page-layout?, system-layout?, staff-layout*)">

<!ELEMENT page-layout ((page-height, page-width)?, (page-margins, page-margins?)?)>
<!ELEMENT page-height (#PCDATA)>
<!ELEMENT page-width (#PCDATA)>
<!ELEMENT page-margins (left-margin, right-margin, top-margin, bottom-margin)>
<!ATTLIST page-margins type (odd | even | both) #IMPLIED>
<!ELEMENT left-margin (#PCDATA)>
<!ELEMENT right-margin (#PCDATA)>
<!ELEMENT top-margin (#PCDATA)>
<!ELEMENT bottom-margin (#PCDATA)>

<!ELEMENT system-layout
  (system-margins?, system-distance?, top-system-distance?, system-dividers?)>
<!ELEMENT system-margins (left-margin, right-margin)>
<!ELEMENT system-distance (#PCDATA)>
<!ELEMENT top-system-distance (#PCDATA)>
<!ELEMENT system-dividers (left-divider, right-divider)>
<!ELEMENT left-divider EMPTY>
<!ATTLIST left-divider %print-object; %print-style-align;>
<!ELEMENT right-divider EMPTY>
<!ATTLIST right-divider %print-object; %print-style-align;>

<!ELEMENT staff-layout (staff-distance?)>
<!ATTLIST staff-layout number CDATA #IMPLIED>
<!ELEMENT staff-distance (#PCDATA)>

<!-- ===================================================================================== -->
<!-- Links and bookmarks, in credits and in measures                                        -->
<!-- ===================================================================================== -->

<!ELEMENT link EMPTY>
<!ATTLIST link
  %link-attributes;
  %optional-unique-id;
  name CDATA #IMPLIED
  %element-position;
  %position;>

<!ELEMENT bookmark EMPTY>
<!ATTLIST bookmark
  id ID #REQUIRED
  name CDATA #IMPLIED
  %element-position;>
