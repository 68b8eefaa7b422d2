<!--
  Ostin Light: document types of MusicXML 4.0, the attributes element of a measure.

  What usually changes only at the start of a measure: divisions, key, time, staves, clefs,
  staff set-up, transposition, and the measure styles (multi-measure rests, repeat bars,
  slash notation).
-->

<!ELEMENT attributes
  (%editorial;, divisions?, key*, time*, staves?, part-symbol?, instruments?, clef*,
   staff-details*, (transpose* | for-part*), directive*, measure-style*)>

<!-- Divisions of a quarter note: the unit of every duration that follows. -->
<!ELEMENT divisions (#PCDATA)>

<!-- ===================================================================================== -->
<!-- Key                                                                                    -->
<!-- ===================================================================================== -->

<!-- A key is either a place on the circle of fifths with a mode, or a list of altered steps;
     octaves may say where each accidental is drawn. -->
<!ELEMENT key
  (((cancel?, fifths, mode?) | (key-step, key-alter, key-accidental?)*), key-octave*)>
<!ATTLIST key
  number CDATA #IMPLIED
  %print-style; %print-object; %optional-unique-id;>
<!ELEMENT cancel (#PCDATA)>
<!ATTLIST cancel location (left | right | before-barline) #IMPLIED>
<!ELEMENT fifths (#PCDATA)>
<!ELEMENT mode (#PCDATA)>
<!ELEMENT key-step (#PCDATA)>
<!ELEMENT key-alter (#PCDATA)>
<!ELEMENT key-accidental (#PCDATA)>
<!ATTLIST key-accidental %smufl;>
<!ELEMENT key-octave (#PCDATA)>
<!ATTLIST key-octave
  number CDATA #REQUIRED
  cancel %yes-no; #IMPLIED>

<!-- ===================================================================================== -->
<!-- Time                                                                                   -->
<!-- ===================================================================================== -->

<!-- One or more beat / beat-type pairs (a composite time), maybe with a second time shown
     beside it, or no metre at all. -->
<!ELEMENT time (((beats, beat-type)+, interchangeable?) | senza-misura)>
<!ATTLIST time
  number CDATA #IMPLIED
  symbol (common | cut | single-number | note | dotted-note | normal) #IMPLIED
  separator (none | horizontal | diagonal | vertical | adjacent) #IMPLIED
  %print-style-align; %print-object; %optional-unique-id;>
<!ELEMENT beats (#PCDATA)>
<!ELEMENT beat-type (#PCDATA)>
<!ELEMENT interchangeable (time-relation?, (beats, beat-type)+)>
<!ATTLIST interchangeable
  symbol (common | cut | single-number | note | dotted-note | normal) #IMPLIED
  separator (none | horizontal | diagonal | vertical | adjacent) #IMPLIED>
<!ELEMENT time-relation (#PCDATA)>
<!ELEMENT senza-misura (#PCDATA)>

<!-- ===================================================================================== -->
<!-- Staves and clefs                                                                       -->
<!-- ===================================================================================== -->

<!ELEMENT staves (#PCDATA)>
<!-- The brace or bracket that joins the staves of one part. -->
<!ELEMENT part-symbol (#PCDATA)>
<!ATTLIST part-symbol
  top-staff CDATA #IMPLIED
  bottom-staff CDATA #IMPLIED
  %position; %color;>
<!-- How many instruments the part holds. -->
<!ELEMENT instruments (#PCDATA)>

<!ENTITY % clef-shape "(sign, line?, clef-octave-change?)">
<!ELEMENT clef %clef-shape;>
<!ATTLIST clef
  number CDATA #IMPLIED
  additional %yes-no; #IMPLIED
  size (full | cue | grace-cue | large) #IMPLIED
  after-barline %yes-no; #IMPLIED
  %print-style; %print-object; %optional-unique-id;>
<!ELEMENT sign (#PCDATA)>
<!ELEMENT line (#PCDATA)>
<!ELEMENT clef-octave-change (#PCDATA)>

<!-- A staff's kind, lines, tablature tuning, capo and size. -->
<!ELEMENT staff-details
  (staff-type?, (staff-lines, line-detail*)?, staff-tuning*, capo?, staff-size?)>
<!ATTLIST staff-details
  number CDATA #IMPLIED
  show-frets (numbers | letters) #IMPLIED
  %print-object; %print-spacing;>
<!ELEMENT staff-type (#PCDATA)>
<!ELEMENT staff-lines (#PCDATA)>
<!ELEMENT line-detail EMPTY>
<!ATTLIST line-detail
  line CDATA #REQUIRED
  width %tenths; #IMPLIED
  %color; %line-type; %print-object;>
<!ELEMENT staff-tuning %tuning;>
<!ATTLIST staff-tuning line CDATA #REQUIRED>
<!ELEMENT capo (#PCDATA)>
<!ELEMENT staff-size (#PCDATA)>
<!ATTLIST staff-size scaling CDATA #IMPLIED>

<!-- ===================================================================================== -->
<!-- Transposition                                                                          -->
<!-- ===================================================================================== -->

<!-- From written to sounding pitch: steps, semitones, octaves, and a doubling an octave
     away. -->
<!ENTITY % transposition "(diatonic?, chromatic, octave-change?, double?)">
<!ELEMENT transpose %transposition;>
<!ATTLIST transpose
  number CDATA #IMPLIED
  %optional-unique-id;>
<!ELEMENT diatonic (#PCDATA)>
<!ELEMENT chromatic (#PCDATA)>
<!ELEMENT octave-change (#PCDATA)>
<!ELEMENT double EMPTY>
<!ATTLIST double above %yes-no; #IMPLIED>

<!-- In a concert score: the clef and transposition of a part as its own part shows it. -->
<!ELEMENT for-part (part-clef?, part-transpose)>
<!ATTLIST for-part
  number CDATA #IMPLIED
  %optional-unique-id;>
<!ELEMENT part-clef %clef-shape;>
<!ELEMENT part-transpose %transposition;>

<!-- A tempo or style word set at the start of the measure, as a heading. -->
<!ELEMENT directive (#PCDATA)>
<!ATTLIST directive
  %print-style;
  xml:lang CDATA #IMPLIED>

<!-- ===================================================================================== -->
<!-- Measure styles                                                                         -->
<!-- ===================================================================================== -->

<!ELEMENT measure-style (multiple-rest | measure-repeat | beat-repeat | slash)>
<!ATTLIST measure-style
  number CDATA #IMPLIED
  %font; %color; %optional-unique-id;>

<!-- The count of measures one multi-measure rest stands for. -->
<!ELEMENT multiple-rest (#PCDATA)>
<!ATTLIST multiple-rest use-symbols %yes-no; #IMPLIED>

<!-- The count of measures repeated; its text is empty at the stop. -->
<!ELEMENT measure-repeat (#PCDATA)>
<!ATTLIST measure-repeat
  type %start-stop; #REQUIRED
  slashes CDATA #IMPLIED>

<!ENTITY % slash-content "((slash-type, slash-dot*)?, except-voice*)">
<!ELEMENT beat-repeat %slash-content;>
<!ATTLIST beat-repeat
  type %start-stop; #REQUIRED
  slashes CDATA #IMPLIED
  use-dots %yes-no; #IMPLIED>
<!ELEMENT slash %slash-content;>
<!ATTLIST slash
  type %start-stop; #REQUIRED
  use-dots %yes-no; #IMPLIED
  use-stems %yes-no; #IMPLIED>
<!ELEMENT slash-type (#PCDATA)>
<!ATTLIST slash-type
  symbol-size (full | cue | grace-cue | large) #IMPLIED>
<!ELEMENT slash-dot EMPTY>
<!ELEMENT except-voice (#PCDATA)>
