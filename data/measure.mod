<!--
  Ostin Light: document types of MusicXML 4.0, the other contents of a measure.

  Chord symbols (harmony), figured bass, layout changes (print), barlines and groupings.
  Together with notes, directions, sound, listening, links and bookmarks they make up the
  music of a measure, listed in music-data at the end of this file.
-->

<!-- ===================================================================================== -->
<!-- Harmony: chord symbols, Roman numerals and functions                                   -->
<!-- ===================================================================================== -->

<!-- One or more chords (a polychord), maybe with a fret diagram. -->
<!ELEMENT harmony
  (((root | numeral | function), kind, inversion?, bass?, degree*)+, frame?, offset?,
   %editorial;, staff?)>
<!ATTLIST harmony
  type (explicit | implied | alternate) #IMPLIED
  print-frame %yes-no; #IMPLIED
  arrangement (vertical | horizontal | diagonal) #IMPLIED
  %print-object; %print-style; %placement; %system-relation; %optional-unique-id;>

<!ELEMENT root (root-step, root-alter?)>
<!ELEMENT root-step (#PCDATA)>
<!ATTLIST root-step
  text CDATA #IMPLIED
  %print-style;>
<!-- Alterations of root and bass: semitones, drawn left or right of the step. -->
<!ENTITY % harmony-alter-attributes
  "%print-object; %print-style;
   location %left-right; #IMPLIED">
<!ELEMENT root-alter (#PCDATA)>
<!ATTLIST root-alter %harmony-alter-attributes;>

<!-- A Roman numeral: its degree 1 to 7, an alteration, and the key it is read in. -->
<!ELEMENT numeral (numeral-root, numeral-alter?, numeral-key?)>
<!ELEMENT numeral-root (#PCDATA)>
<!ATTLIST numeral-root
  text CDATA #IMPLIED
  %print-style;>
<!ELEMENT numeral-alter (#PCDATA)>
<!ATTLIST numeral-alter %harmony-alter-attributes;>
<!ELEMENT numeral-key (numeral-fifths, numeral-mode)>
<!ATTLIST numeral-key %print-object;>
<!ELEMENT numeral-fifths (#PCDATA)>
<!ELEMENT numeral-mode (#PCDATA)>

<!ELEMENT function (#PCDATA)>
<!ATTLIST function %print-style;>

<!-- The kind of chord (major, minor-seventh, dominant and so on) and how it is shown. -->
<!ELEMENT kind (#PCDATA)>
<!ATTLIST kind
  use-symbols %yes-no; #IMPLIED
  text CDATA #IMPLIED
  stack-degrees %yes-no; #IMPLIED
  parentheses-degrees %yes-no; #IMPLIED
  bracket-degrees %yes-no; #IMPLIED
  %print-style; %halign; %valign;>

<!ELEMENT inversion (#PCDATA)>
<!ATTLIST inversion
  text CDATA #IMPLIED
  %print-style;>

<!ELEMENT bass (bass-separator?, bass-step, bass-alter?)>
<!ATTLIST bass arrangement (vertical | horizontal | diagonal) #IMPLIED>
<!ELEMENT bass-separator (#PCDATA)>
<!ATTLIST bass-separator %print-style;>
<!ELEMENT bass-step (#PCDATA)>
<!ATTLIST bass-step
  text CDATA #IMPLIED
  %print-style;>
<!ELEMENT bass-alter (#PCDATA)>
<!ATTLIST bass-alter %harmony-alter-attributes;>

<!-- A degree added to, altered in or taken from the chord. -->
<!ELEMENT degree (degree-value, degree-alter, degree-type)>
<!ATTLIST degree %print-object;>
<!ELEMENT degree-value (#PCDATA)>
<!ATTLIST degree-value
  symbol (major | minor | augmented | diminished | half-diminished) #IMPLIED
  text CDATA #IMPLIED
  %print-style;>
<!ELEMENT degree-alter (#PCDATA)>
<!ATTLIST degree-alter
  %print-style;
  plus-minus %yes-no; #IMPLIED>
<!ELEMENT degree-type (#PCDATA)>
<!ATTLIST degree-type
  text CDATA #IMPLIED
  %print-style;>

<!-- A fret diagram: strings, frets, the first fret shown, and one entry per fingered
     string. -->
<!ELEMENT frame (frame-strings, frame-frets, first-fret?, frame-note+)>
<!ATTLIST frame
  %position; %color; %halign; %valign-image;
  height %tenths; #IMPLIED
  width %tenths; #IMPLIED
  unplayed CDATA #IMPLIED
  %optional-unique-id;>
<!ELEMENT frame-strings (#PCDATA)>
<!ELEMENT frame-frets (#PCDATA)>
<!ELEMENT first-fret (#PCDATA)>
<!ATTLIST first-fret
  text CDATA #IMPLIED
  location %left-right; #IMPLIED>
<!ELEMENT frame-note (string, fret, fingering?, barre?)>
<!ELEMENT barre EMPTY>
<!ATTLIST barre
  type %start-stop; #REQUIRED
  %color;>

<!-- ===================================================================================== -->
<!-- Figured bass                                                                           -->
<!-- ===================================================================================== -->

<!ELEMENT figured-bass (figure+, duration?, %editorial;)>
<!ATTLIST figured-bass
  %print-style-align; %printout;
  parentheses %yes-no; #IMPLIED
  %placement; %optional-unique-id;>
<!-- One figure: a number with an accidental or a slash before or after it. -->
<!ELEMENT figure (prefix?, figure-number?, suffix?, extend?, %editorial;)>
<!ELEMENT prefix (#PCDATA)>
<!ATTLIST prefix %print-style;>
<!ELEMENT figure-number (#PCDATA)>
<!ATTLIST figure-number %print-style;>
<!ELEMENT suffix (#PCDATA)>
<!ATTLIST suffix %print-style;>

<!-- ===================================================================================== -->
<!-- Print: layout from this measure on                                                     -->
<!-- ===================================================================================== -->

<!ELEMENT print
  (%layout;, measure-layout?, measure-numbering?, part-name-display?,
   part-abbreviation-display?)>
<!ATTLIST print
  staff-spacing %tenths; #IMPLIED
  new-system %yes-no; #IMPLIED
  new-page %yes-no; #IMPLIED
  blank-page CDATA #IMPLIED
  page-number CDATA #IMPLIED
  %optional-unique-id;>
<!ELEMENT measure-layout (measure-distance?)>
<!ELEMENT measure-distance (#PCDATA)>
<!-- Which measure numbers are shown: none, at each system, or every measure. -->
<!ELEMENT measure-numbering (#PCDATA)>
<!ATTLIST measure-numbering
  %print-style-align; %system-relation;
  staff CDATA #IMPLIED
  multiple-rest-always %yes-no; #IMPLIED
  multiple-rest-range %yes-no; #IMPLIED>

<!-- ===================================================================================== -->
<!-- Barlines, endings and repeats                                                          -->
<!-- ===================================================================================== -->

<!ELEMENT barline
  (bar-style?, %editorial;, wavy-line?, segno?, coda?, (fermata, fermata?)?, ending?,
   repeat?)>
<!ATTLIST barline
  location (right | left | middle) "right"
  segno CDATA #IMPLIED
  coda CDATA #IMPLIED
  divisions CDATA #IMPLIED
  %optional-unique-id;>
<!ELEMENT bar-style (#PCDATA)>
<!ATTLIST bar-style %color;>

<!-- A volta bracket; number lists the passes, the text is what is printed. -->
<!ELEMENT ending (#PCDATA)>
<!ATTLIST ending
  number CDATA #REQUIRED
  type %start-stop-discontinue; #REQUIRED
  %print-object; %print-style; %system-relation;
  end-length %tenths; #IMPLIED
  text-x %tenths; #IMPLIED
  text-y %tenths; #IMPLIED>

<!ELEMENT repeat EMPTY>
<!ATTLIST repeat
  direction (backward | forward) #REQUIRED
  times CDATA #IMPLIED
  after-jump %yes-no; #IMPLIED
  winged (none | straight | curved | double-straight | double-curved) #IMPLIED>

<!-- ===================================================================================== -->
<!-- Grouping: analytic spans over the music                                                -->
<!-- ===================================================================================== -->

<!ELEMENT grouping (feature*)>
<!ATTLIST grouping
  type %start-stop-single; #REQUIRED
  number CDATA "1"
  member-of CDATA #IMPLIED
  %optional-unique-id;>
<!ELEMENT feature (#PCDATA)>
<!ATTLIST feature type CDATA #IMPLIED>

<!-- ===================================================================================== -->
<!-- The music of a measure, in any order                                                   -->
<!-- ===================================================================================== -->

<!ENTITY % music-data
  "(note | backup | forward | direction | attributes | harmony | figured-bass | print |
    sound | listening | barline | grouping | link | bookmark)*">
